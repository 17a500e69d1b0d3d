// The library comes and goes under threads that live on and threads that are just ending; threads call before their
// attachment and after their end was reported. It neither crashes nor keeps memory.
#include <vekm6/types.h>

#include <atomic>
#include <cstdio>
#include <cstring>
#include <thread>
#include <vector>

// For as long as the library is open.
int(VEKAPI* getMode)(void);
void(VEKAPI* setMode)(int mode);
void(VEKAPI* fft)(VekCplx* samps, int order, int flags);
const VekWCplx*(VEKAPI* table)(int length);

std::atomic<bool> lateCalls(false);

#ifdef _WIN32
#include <windows.h>

using Handle = HMODULE;
Handle openLibrary() { return LoadLibraryA("vekm6.dll"); }
void closeLibrary(Handle library) { FreeLibrary(library); }
auto find(Handle library, const char* name) { return GetProcAddress(library, name); }

std::size_t heldBytes() {
    HANDLE heaps[64];
    std::size_t held = 0;
    for (DWORD count = GetProcessHeaps(64, heaps), i = 0; i < count; ++i) {
        PROCESS_HEAP_ENTRY entry = {};
        HeapLock(heaps[i]);
        while (HeapWalk(heaps[i], &entry))
            if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0) held += entry.cbData;
        HeapUnlock(heaps[i]);
    }
    return held;
}

void onThread(int starts) {
    if (lateCalls) starts != 0 ? setMode(77) : static_cast<void>(table(7));
}
bool startedWell() { return getMode() == 77; }

#else
#include <dlfcn.h>
#include <malloc.h>
#include <pthread.h>

using Handle = void*;
Handle openLibrary() { return dlopen("libvekm6.so.4", RTLD_NOW); }
void closeLibrary(Handle library) { dlclose(library); }
void* find(Handle library, const char* name) { return dlsym(library, name); }
std::size_t heldBytes() { return mallinfo2().uordblks; }

// A destructor that asks to be called again, until the system has had enough. The library's own comes before it.
pthread_key_t key;
void onEnd(void* asked) {
    table(7);
    pthread_setspecific(key, asked);
}
bool startedWell() {
    static const int made = pthread_key_create(&key, onEnd);
    return made == 0 && pthread_setspecific(key, &key) == 0;
}
#endif

template <class Function>
void look(Handle library, const char* name, Function& function) {
    const auto found = find(library, name);
    std::memcpy(&function, &found, sizeof found);
}
Handle load() {
    const Handle library = openLibrary();
    if (library == nullptr) return nullptr;
    look(library, "vekGetErrMode", getMode);
    look(library, "vekSetErrMode", setMode);
    look(library, "vekcFft", fft);
    look(library, "vekvGetDftTwdTbl", table);
    return library;
}

// What a system needs before threads call late; false: the library loads though there is no thread-local slot.
bool prepare() {
#ifdef _WIN32
    void (*tellOfThreads)(void (*)(int)) = nullptr;
    look(LoadLibraryA("first.dll"), "tellOfThreads", tellOfThreads);
    tellOfThreads(onThread);
    std::vector<DWORD> taken;
    for (DWORD index; (index = TlsAlloc()) != TLS_OUT_OF_INDEXES;) taken.push_back(index);
    const Handle library = openLibrary();
    for (const DWORD index : taken) TlsFree(index);
    return library == nullptr;
#else
    return true;
#endif
}

// What the rounds after the 50th leave behind; more than 20000 bytes are not the system's own.
template <class Round>
bool keeps(const char* what, int rounds, Round round) {
    std::size_t before = 0;
    for (int i = 0; i < rounds; ++i) {
        if (i == 50) before = heldBytes();
        round();
    }
    const long kept = static_cast<long>(heldBytes() - before);
    std::printf("reload: %ld bytes in %d %s\n", kept, rounds - 50, what);
    return kept > 20000;
}

// All members reach it together.
struct Meeting {
    const int members;
    std::atomic<int> arrived{0}, held{0};
    void attend() {
        const int before = held;
        if (++arrived == members) {
            arrived = 0;
            ++held;
        }
        while (held == before) std::this_thread::yield();
    }
};

int main() {
    constexpr int living = 4;
    Meeting loaded{living + 1}, called{living + 2};
    std::atomic<int> wrong(0);
    bool ends = false;
    const auto call = [&] {
        VekCplx samps[64] = {};
        fft(samps, 6, VEK_Forw);
        table(60);
        called.attend();
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < living; ++i)
        threads.emplace_back([&] {
            for (loaded.attend(); !ends; loaded.attend()) call();
        });
    if (keeps("cycles", 1050, [&] {
            const Handle library = load();
            if (library == nullptr) std::_Exit(1);
            loaded.attend();
            std::thread ending(call);
            called.attend();
            closeLibrary(library);
            ending.join();
        }))
        return 2;
    ends = true;
    loaded.attend();
    for (std::thread& thread : threads) thread.join();

    if (!prepare() || load() == nullptr) return 3;
    lateCalls = true;
    if (keeps("threads that call late", 2000, [&] { std::thread([&] { wrong += !startedWell(); }).join(); })) return 4;
    return wrong != 0 ? 5 : 0;
}
