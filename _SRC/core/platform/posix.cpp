// Linux: the context hangs on a thread-local pointer; a pthread key exists only for its destructor, which is the
// system's notice that a thread ends.
#include "platform.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>

#include "../context.h"

namespace vek::platform {

__thread void* slotPointer = nullptr;

namespace {

enum class KeyState : int {
    unmade,
    made,
    failed,
    released
};

constinit pthread_key_t threadEndKey = 0;
constinit KeyState keyState = KeyState::unmade;
constinit pthread_once_t keyOnce = PTHREAD_ONCE_INIT;

void onThreadEnd(void*) { core::threadDetach(); }

void makeKey() { keyState = pthread_key_create(&threadEndKey, onThreadEnd) == 0 ? KeyState::made : KeyState::failed; }

// Reads the first letter of the next line typed at the terminal; 0 where there is none.
char typedLetter() {
    const int terminal = open("/dev/tty", O_RDONLY | O_CLOEXEC);
    if (terminal < 0) return 0;
    char first = 0;
    char letter = 0;
    while (read(terminal, &letter, 1) == 1 && letter != '\n')
        if (first == 0 && letter != ' ' && letter != '\t') first = letter;
    close(terminal);
    return first;
}

}   // namespace

bool reserveSlot() {
    pthread_once(&keyOnce, makeKey);
    return keyState != KeyState::failed;
}

void releaseSlot() {
    if (keyState != KeyState::made) return;
    keyState = KeyState::released;
    pthread_key_delete(threadEndKey);
}

bool setSlot(void* value) {
    // After the key is gone (the process is ending) the slot still works; nobody is told of the thread's end.
    if (keyState == KeyState::made && pthread_setspecific(threadEndKey, value) != 0) return false;
    slotPointer = value;
    return true;
}

void* zeroedAlloc(std::size_t bytes) { return std::calloc(1, bytes); }

void zeroedFree(void* block) { std::free(block); }

void formatText(char* buffer, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(buffer, textCapacity, format, arguments);
    va_end(arguments);
}

// The box as a prompt: caption and body on the standard error stream, the button by its first letter from the
// terminal. Without a terminal nobody can go on in Leaf mode (Yes: terminate); Parent mode continues (OK).
int messageBox(const char* body, const char* caption, unsigned flags) {
    const bool asksYesNo = flags == yesNoSystemModal;
    std::fprintf(stderr, "%s\n%s\n%s ", caption, body, asksYesNo ? "[Yes/No]" : "[OK/Cancel]");
    std::fflush(stderr);
    const char letter = typedLetter();
    if (letter == 0) std::fputc('\n', stderr);
    if (asksYesNo) return letter == 'n' || letter == 'N' ? answerNo : answerYes;
    return letter == 'c' || letter == 'C' ? answerCancel : answerOk;
}

void fatalExit(const char* text) {
    std::fprintf(stderr, "%s\n", text);
    std::fflush(stderr);
    _exit(1);
}

namespace {

[[gnu::constructor]] void onLoad() {
    // A library cannot refuse to load here; a context that could not be made now is asked for again at first use.
    core::processAttach();
}

[[gnu::destructor]] void onUnload() { core::processDetach(); }

}   // namespace

}   // namespace vek::platform
