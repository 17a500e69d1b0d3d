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

bool setSlot(void* value) { return slotIndex != TLS_OUT_OF_INDEXES && TlsSetValue(slotIndex, value) != 0; }

bool watchThreadEnd() { return true; }   // the loader reports all threads

std::uint32_t threadId() { return GetCurrentThreadId(); }

bool hasEnded(std::uint32_t id) {
    if (id == threadId()) return true;
    const HANDLE thread = OpenThread(SYNCHRONIZE, FALSE, id);
    if (thread == nullptr) return GetLastError() == ERROR_INVALID_PARAMETER;
    const bool ended = WaitForSingleObject(thread, 0) == WAIT_OBJECT_0;
    CloseHandle(thread);
    return ended;
}

// The loader reports one thread at a time, but a thread that is older than the library comes without its knowledge.
namespace {
LONG volatile listBusy = 0;
}

void lock() {
    for (int tries = 0; InterlockedExchange(&listBusy, 1) != 0; ++tries) Sleep(tries < 16 ? 0 : 1);
}

void unlock() { InterlockedExchange(&listBusy, 0); }

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

namespace {

// FreeLibrary, which no thread may be inside of the library for: the contexts of all threads go. The loader does not
// report the end of a thread meanwhile. At the end of the process the other threads have been stopped wherever they
// were, in the heap or in this library: everything stays as it is, for the system to reclaim.
void onUnload(bool processEnds) {
    using namespace vek;
    if (processEnds || platform::slotIndex == TLS_OUT_OF_INDEXES) return;
    core::releaseContexts();
    TlsFree(platform::slotIndex);   // empties the slot in every thread
    platform::slotIndex = TLS_OUT_OF_INDEXES;
}

}   // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID reserved) {
    using namespace vek::core;
    switch (reason) {
        case DLL_PROCESS_ATTACH: return processAttach();
        case DLL_THREAD_ATTACH: return threadAttach();
        case DLL_THREAD_DETACH: threadDetach(); return TRUE;
        case DLL_PROCESS_DETACH: onUnload(reserved != nullptr); return TRUE;
        default: return TRUE;
    }
}
