/* Looks the library up while it runs, as programs in other languages do: plain names, stdcall. */
#include <stdint.h>
#include <string.h>
#include <vekm6/types.h>
#include <windows.h>

int main(void) {
    HMODULE library = LoadLibraryA("vekm6.dll");
    VekStatus(VEKAPI * getStatus)(void);
    void(VEKAPI * add3)(const float*, const float*, float*, int);
    FARPROC found;
    const float a[3] = {1, 2, 3};
    float sum[3] = {0, 0, 0};
    if (library == NULL) return 1;
    found = GetProcAddress(library, "veksbAdd3");
    memcpy(&add3, &found, sizeof add3);
    found = GetProcAddress(library, "vekGetErrStatus");
    memcpy(&getStatus, &found, sizeof getStatus);
    if (add3 == NULL || getStatus == NULL) return 2;
    add3(a, a, sum, 3);
    if (sum[2] != 6 || getStatus() != VEK_StsOk) return 3;
    return FreeLibrary(library) ? 0 : 4;
}
