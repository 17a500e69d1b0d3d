// The per-thread context: error state and table caches. The library keeps no other mutable data.
#pragma once

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
};

ThreadContext* createContext();   // for the calling thread; ends the process when there is no memory for it

// The calling thread's context, made on first use for a thread that is older than the library.
inline ThreadContext& context() {
    void* existing = platform::slot();
    if (existing != nullptr) [[likely]]
        return *static_cast<ThreadContext*>(existing);
    return *createContext();
}

// Attach and detach, called by the platform layer. The attachments return false when the system has no room.
bool processAttach();
bool threadAttach();
void threadDetach();
void processDetach();

}   // namespace vek::core
