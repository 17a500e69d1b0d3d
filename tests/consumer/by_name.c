/* Looks the library up while it runs, as programs in other languages do: plain names, stdcall. */
#include <stdint.h>
#include <string.h>
#include <vekm6/types.h>
#include <windows.h>

/* One life of the library: the status is kept for the thread, and a negative one stops the sum. */
static int use(void) {
    HMODULE library = LoadLibraryA("vekm6.dll");
    VekStatus(VEKAPI * getStatus)(void);
    void(VEKAPI * setStatus)(VekStatus);
    void(VEKAPI * add3)(const float*, const float*, float*, int);
    FARPROC found;
    const float a[3] = {1, 2, 3};
    float sum[3] = {0, 0, 0};
    if (library == NULL) return 1;
    found = GetProcAddress(library, "veksbAdd3");
    memcpy(&add3, &found, sizeof add3);
    found = GetProcAddress(library, "vekGetErrStatus");
    memcpy(&getStatus, &found, sizeof getStatus);
    found = GetProcAddress(library, "vekSetErrStatus");
    memcpy(&setStatus, &found, sizeof setStatus);
    if (add3 == NULL || getStatus == NULL || setStatus == NULL) return 2;
    add3(a, a, sum, 3);
    if (sum[2] != 6 || getStatus() != VEK_StsOk) return 3;
    setStatus(VEK_StsBadArg);
    sum[2] = 0;
    add3(a, a, sum, 3);
    if (sum[2] != 0 || getStatus() != VEK_StsBadArg) return 4;
    return FreeLibrary(library) ? 0 : 5;
}

int main(void) {
    int taken;
    const int first = use();
    if (first != 0) return first;
    for (taken = 0; taken < 100; ++taken) /* thread-local slots; from the 65th on they lie elsewhere */
        if (TlsAlloc() == TLS_OUT_OF_INDEXES) return 6;
    return use() * 10;
}
