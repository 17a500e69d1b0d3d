// Linux: the context hangs on a thread-local pointer; a pthread key exists only for its destructor, which is the
// system's notice that a thread ends.
#include "platform.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include "../context.h"

namespace vek::platform {

__thread void* slotPointer = nullptr;

namespace {

constinit pthread_key_t threadEndKey = 0;
constinit bool keyMade = false;
constinit pthread_once_t keyOnce = PTHREAD_ONCE_INIT;
constinit pthread_mutex_t listMutex = PTHREAD_MUTEX_INITIALIZER;

void onThreadEnd(void*) { core::threadDetach(); }

void makeKey() { keyMade = pthread_key_create(&threadEndKey, onThreadEnd) == 0; }

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
    return keyMade;
}

bool setSlot(void* value) {
    slotPointer = value;
    return true;
}

bool watchThreadEnd() { return pthread_setspecific(threadEndKey, &slotPointer) == 0; }

std::uint32_t threadId() { return static_cast<std::uint32_t>(gettid()); }

bool hasEnded(std::uint32_t id) {
    return id == threadId() || (tgkill(getpid(), static_cast<pid_t>(id), 0) != 0 && errno == ESRCH);
}

void lock() { pthread_mutex_lock(&listMutex); }

void unlock() { pthread_mutex_unlock(&listMutex); }

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

// The library stays where it is once it is loaded (-z nodelete), whatever dlclose is told: the system calls onThreadEnd
// whenever a thread ends that used it, and nothing could stop a thread that is just about to. So these two run once
// per process.

[[gnu::constructor]] void onLoad() {
    // A child process gets the list as it is between two changes.
    pthread_atfork(lock, unlock, unlock);
    // A library cannot refuse to load here; a context that could not be made now is asked for again at first use.
    core::processAttach();
}

// The process ends, but its other threads may be inside the library to the last instant: they keep what they have.
[[gnu::destructor]] void onExit() { core::threadDetach(); }

}   // namespace

}   // namespace vek::platform
