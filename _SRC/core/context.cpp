#include "context.h"

#include <new>

namespace vek::core {

bool threadAttach() {
    void* memory = platform::zeroedAlloc(sizeof(ThreadContext));
    if (memory == nullptr) return false;
    ThreadContext* made = new (memory) ThreadContext{};
    made->mode = VEK_ErrModeLeaf;
    made->handler = vekGuiBoxReport;
    if (platform::setSlot(made)) return true;
    platform::zeroedFree(memory);
    return false;
}

bool processAttach() { return platform::reserveSlot() && threadAttach(); }

void threadDetach() {
    auto* ending = static_cast<ThreadContext*>(platform::slot());
    if (ending == nullptr) return;
    ending->tables.releaseAll();
    platform::setSlot(nullptr);
    platform::zeroedFree(ending);
}

void processDetach() {
    threadDetach();
    platform::releaseSlot();
}

ThreadContext* createContext() {
    if (!platform::reserveSlot() || !threadAttach())
        platform::fatalExit("VEKlib. Problem to allocate memory for TLS VEK context.");
    return static_cast<ThreadContext*>(platform::slot());
}

}   // namespace vek::core
