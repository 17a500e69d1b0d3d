#include "context.h"

#include <new>

namespace vek::core {

namespace {

// All contexts. The lock is held for a few instructions, when a context comes or goes; operations do not take it.
constinit ThreadContext* first = nullptr;

void enlist(ThreadContext* made) {
    made->next = first;
    if (first != nullptr) first->previous = made;
    first = made;
}

void unlist(ThreadContext* gone) {
    (gone->previous != nullptr ? gone->previous->next : first) = gone->next;
    if (gone->next != nullptr) gone->next->previous = gone->previous;
}

void release(ThreadContext* context) {
    context->tables.releaseAll();
    platform::zeroedFree(context);
}

// Nobody reports the end of a thread twice. What such threads left goes when the next of them comes, so that there are
// never more than die at once.
void releaseLate() {
    for (ThreadContext* each = first; each != nullptr;) {
        ThreadContext* const context = each;
        each = each->next;
        if (context->lateOwner == 0 || !platform::hasEnded(context->lateOwner)) continue;
        unlist(context);
        release(context);
    }
}

bool hasContext() { return reinterpret_cast<std::uintptr_t>(platform::slot()) > endReported; }

bool makeContext() {
    const bool late = platform::slot() != nullptr;
    void* memory = platform::zeroedAlloc(sizeof(ThreadContext));
    if (memory == nullptr) return false;
    ThreadContext* made = new (memory) ThreadContext{};
    made->mode = VEK_ErrModeLeaf;
    made->handler = vekGuiBoxReport;
    made->lateOwner = late ? platform::threadId() : 0;
    if (!(late || platform::watchThreadEnd()) || !platform::setSlot(made)) {
        platform::zeroedFree(memory);
        return false;
    }
    platform::lock();
    if (late) releaseLate();
    enlist(made);
    platform::unlock();
    return true;
}

}   // namespace

bool threadAttach() { return hasContext() || makeContext(); }

bool processAttach() { return platform::reserveSlot() && threadAttach(); }

void threadDetach() {
    void* ending = platform::slot();
    const bool had = hasContext();
    platform::setSlot(reinterpret_cast<void*>(endReported));
    if (!had) return;
    auto* context = static_cast<ThreadContext*>(ending);
    platform::lock();
    unlist(context);
    platform::unlock();
    release(context);
}

void releaseContexts() {
    while (first != nullptr) {
        ThreadContext* const gone = first;
        unlist(gone);
        release(gone);
    }
}

ThreadContext* createContext() {
    if (!processAttach()) platform::fatalExit("VEKlib. Problem to allocate memory for TLS VEK context.");
    return static_cast<ThreadContext*>(platform::slot());
}

}   // namespace vek::core
