// Windows: thread-local storage, message boxes and the library's entry for attach and detach.
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <cstdarg>

#include "../context.h"

namespace vek::platform {

unsigned long slotIndex = TLS_OUT_OF_INDEXES;

bool reserveSlot() {
    if (slotIndex != TLS_OUT_OF_INDEXES) return true;
    const DWORD index = TlsAlloc();
    if (index == TLS_OUT_OF_INDEXES) return false;
    // The loader serialises attachment; a program that links the objects statically may race here at first use.
    if (InterlockedCompareExchange(reinterpret_cast<volatile LONG*>(&slotIndex), static_cast<LONG>(index),
                                   static_cast<LONG>(TLS_OUT_OF_INDEXES)) != static_cast<LONG>(TLS_OUT_OF_INDEXES))
        TlsFree(index);
    return true;
}

void releaseSlot() {
    if (slotIndex != TLS_OUT_OF_INDEXES) TlsFree(slotIndex);
    slotIndex = TLS_OUT_OF_INDEXES;
}

bool setSlot(void* value) { return slotIndex != TLS_OUT_OF_INDEXES && TlsSetValue(slotIndex, value) != 0; }

void* zeroedAlloc(std::size_t bytes) { return LocalAlloc(LPTR, bytes); }

void zeroedFree(void* block) { LocalFree(block); }

// wvsprintfA never writes more than 1024 characters and the terminator.
void formatText(char* buffer, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    wvsprintfA(buffer, format, arguments);
    va_end(arguments);
}

int messageBox(const char* body, const char* caption, unsigned flags) {
    return MessageBoxA(nullptr, body, caption, flags);
}

void fatalExit(const char* text) {
    FatalAppExitA(0, text);
    ExitProcess(1);   // where a debugger let the call above return
}

}   // namespace vek::platform

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID) {
    using namespace vek::core;
    switch (reason) {
        case DLL_PROCESS_ATTACH: return processAttach();
        case DLL_THREAD_ATTACH: return threadAttach();
        case DLL_THREAD_DETACH: threadDetach(); return TRUE;
        case DLL_PROCESS_DETACH: processDetach(); return TRUE;
        default: return TRUE;
    }
}
