/* A DLL that is there before the library: of a thread that starts it hears first, and last of one that ends. */
#include <windows.h>

static void (*onThread)(int starts);

__declspec(dllexport) void tellOfThreads(void (*tell)(int starts)) { onThread = tell; }

BOOL WINAPI DllMain(HINSTANCE self, DWORD reason, LPVOID reserved) {
    (void)self, (void)reserved;
    if (onThread != NULL && (reason == DLL_THREAD_ATTACH || reason == DLL_THREAD_DETACH))
        onThread(reason == DLL_THREAD_ATTACH);
    return TRUE;
}
