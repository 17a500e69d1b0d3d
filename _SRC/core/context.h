// The per-thread context: error state and table caches. The library keeps no other mutable data but the list of the
// contexts.
#pragma once

#include <cstdint>

#include "platform/platform.h"
#include "tables.h"
#include "vekm6/frame.h"
#include "vekm6/types.h"

namespace vek::core {

struct ThreadContext {
    VekStatus status;   // sticky: the first error of a chain, until the caller clears it
    int32_t mode;       // VEK_ErrModeLeaf, Parent or Silent
    VekErrorHandler handler;
    TableCache tables;

    // In the list of all contexts.
    ThreadContext *previous, *next;
    std::uint32_t lateOwner;   // the thread, where it made this context after its end was reported; otherwise 0
};

// A thread's slot holds its context, nothing yet, or this after its end was reported. It may still call: from a
// destructor of thread-specific data, or from a library that hears of the end later.
inline constexpr std::uintptr_t endReported = 1;

ThreadContext* createContext();   // for the calling thread; ends the process when there is no memory for it

// The calling thread's context, made on first use for a thread that is older than the library.
inline ThreadContext& context() {
    void* existing = platform::slot();
    if (reinterpret_cast<std::uintptr_t>(existing) > endReported) [[likely]]
        return *static_cast<ThreadContext*>(existing);
    return *createContext();
}

// Attach and detach, called by the platform layer. The attachments return false when the system has no room. A thread
// that has a context keeps it: it may have called before its attachment.
bool processAttach();
bool threadAttach();
void threadDetach();
void releaseContexts();   // of all threads; none may be inside the library, or call again

}   // namespace vek::core
