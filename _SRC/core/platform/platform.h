// What the library asks of the operating system. posix.cpp and win32.cpp implement it; this folder alone knows
// which system it is built for.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vek::platform {

#ifdef _WIN32
extern unsigned long slotIndex;
#else
// Initial-exec: one load relative to the thread pointer. A library that is opened at run time finds room for it in
// the C library's reserve for such variables.
extern __thread void* slotPointer __attribute__((tls_model("initial-exec")));
#endif

// The calling thread's slot, null until setSlot gave it a value.
inline void* slot() {
#ifdef _WIN32
    // Where TlsGetValue would look, in the thread's environment block (TlsSlots and TlsExpansionSlots in winternl.h):
    // the call would cost as much as eight elements.
    if (slotIndex < 64) [[likely]] {
        void* value;
        asm volatile("movl %%fs:0xE10(,%1,4), %0" : "=r"(value) : "r"(slotIndex));
        return value;
    }
    void** expansion;
    asm volatile("movl %%fs:0xF94, %0" : "=r"(expansion));
    return expansion == nullptr || slotIndex >= 64 + 1024 ? nullptr : expansion[slotIndex - 64];
#else
    return slotPointer;
#endif
}

bool reserveSlot();   // once per process; safe to repeat; false when the system has no slot left
bool setSlot(void* value);
bool watchThreadEnd();   // has the calling thread's end reported to core::threadDetach(), once

std::uint32_t threadId();          // never 0
bool hasEnded(std::uint32_t id);   // of threads of this process; a new thread that got the same id counts as the old

// One lock, for the list of contexts.
void lock();
void unlock();

void* zeroedAlloc(std::size_t bytes);   // zero-filled memory, or null
void zeroedFree(void* block);

void formatText(char* buffer, const char* format, ...);   // at most textCapacity bytes, terminator included
inline constexpr int textCapacity = 1025;

// Message box flags and answers; the numbers are those of MessageBoxA.
inline constexpr unsigned okCancelSystemModal = 4097;
inline constexpr unsigned yesNoSystemModal = 4100;
inline constexpr int answerOk = 1;
inline constexpr int answerCancel = 2;
inline constexpr int answerYes = 6;
inline constexpr int answerNo = 7;
int messageBox(const char* body, const char* caption, unsigned flags);

[[noreturn]] void fatalExit(const char* text);

}   // namespace vek::platform
