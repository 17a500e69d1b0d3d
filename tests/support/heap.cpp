#include "heap.h"

#include <atomic>
#include <cstdlib>
#include <cstring>

#include "vekm6.h"

#ifndef _WIN32
#include <malloc.h>
#elif defined(VEK_TEST_DLL)
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <malloc.h>
#endif

namespace test::heap {

namespace {

struct Plan {
    long failFrom;
    long failTo;   // exclusive
    std::size_t largest;
    long requests;
    long failures;
    std::size_t lastBytes;
};
constexpr Plan never = {-1, -1, static_cast<std::size_t>(-1), 0, 0, 0};
thread_local Plan plan = never;
std::atomic<long> balance{0};
std::atomic<long> byteBalance{0};
std::atomic<bool> allFail{false};

[[maybe_unused]] bool refuses(std::size_t bytes) {
    const long n = plan.requests++;
    plan.lastBytes = bytes;
    const bool refused = (n >= plan.failFrom && n < plan.failTo) || bytes > plan.largest || allFail;
    if (refused) ++plan.failures;
    return refused;
}

// A block that came, or is about to go, with what the heap says of its size.
template <class Size>
[[maybe_unused]] void* counted(void* block, Size size, int sign = 1) {
    if (block != nullptr) {
        balance += sign;
        byteBalance += sign * static_cast<long>(size(block));
    }
    return block;
}

}   // namespace

void failAt(long n, bool onwards) { plan = {n, onwards ? 0x7fffffffL : n + 1, static_cast<std::size_t>(-1), 0, 0, 0}; }
void failAbove(std::size_t bytes) { plan = {-1, -1, bytes, 0, 0, 0}; }
void failNone() { plan = never; }
long requests() { return plan.requests; }
long failures() { return plan.failures; }
std::size_t lastBytes() { return plan.lastBytes; }
void failEverywhere(bool fail) { allFail = fail; }
long outstanding() { return balance; }
long outstandingBytes() { return byteBalance; }

#ifndef _WIN32

extern "C" {
void* __real_malloc(std::size_t bytes);
void* __real_calloc(std::size_t count, std::size_t bytes);
void __real_free(void* block);
void* __wrap_malloc(std::size_t bytes);
void* __wrap_calloc(std::size_t count, std::size_t bytes);
void __wrap_free(void* block);

void* __wrap_malloc(std::size_t bytes) {
    return refuses(bytes) ? nullptr : counted(__real_malloc(bytes), malloc_usable_size);
}
void* __wrap_calloc(std::size_t count, std::size_t bytes) {
    return refuses(count * bytes) ? nullptr : counted(__real_calloc(count, bytes), malloc_usable_size);
}
void __wrap_free(void* block) { __real_free(counted(block, malloc_usable_size, -1)); }
}

bool available() { return true; }

#elif defined(VEK_TEST_DLL)

namespace {

void* (*realMalloc)(std::size_t);
void* (*realCalloc)(std::size_t, std::size_t);
void (*realFree)(void*);
HLOCAL(WINAPI* realLocalAlloc)(UINT, SIZE_T);
HLOCAL(WINAPI* realLocalFree)(HLOCAL);

void* watchedMalloc(std::size_t bytes) { return refuses(bytes) ? nullptr : counted(realMalloc(bytes), _msize); }
void* watchedCalloc(std::size_t count, std::size_t bytes) {
    return refuses(count * bytes) ? nullptr : counted(realCalloc(count, bytes), _msize);
}
void watchedFree(void* block) { realFree(counted(block, _msize, -1)); }
HLOCAL WINAPI watchedLocalAlloc(UINT flags, SIZE_T bytes) {
    return refuses(bytes) ? nullptr : counted(realLocalAlloc(flags, bytes), LocalSize);
}
HLOCAL WINAPI watchedLocalFree(HLOCAL block) { return realLocalFree(counted(block, LocalSize, -1)); }

// Routes one import of the DLL elsewhere; true when it imports the name.
bool reroute(const char* name, void* to, void** real) {
    auto* base = reinterpret_cast<unsigned char*>(GetModuleHandleA("vekm6.dll"));
    if (base == nullptr) return false;
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* nt = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& directory = nt->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    bool found = false;
    for (auto* module = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress); module->Name != 0;
         ++module) {
        auto* names = reinterpret_cast<IMAGE_THUNK_DATA*>(base + module->OriginalFirstThunk);
        auto* slots = reinterpret_cast<IMAGE_THUNK_DATA*>(base + module->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++slots) {
            if (IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal)) continue;
            const auto* byName = reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            if (std::strcmp(reinterpret_cast<const char*>(byName->Name), name) != 0) continue;
            DWORD old = 0;
            VirtualProtect(&slots->u1.Function, sizeof slots->u1.Function, PAGE_READWRITE, &old);
            std::memcpy(real, &slots->u1.Function, sizeof(void*));
            std::memcpy(&slots->u1.Function, &to, sizeof(void*));
            VirtualProtect(&slots->u1.Function, sizeof slots->u1.Function, old, &old);
            found = true;
        }
    }
    return found;
}

template <class Function>
bool reroute(const char* name, Function* to, Function** real) {
    return reroute(name, reinterpret_cast<void*>(to), reinterpret_cast<void**>(real));
}

bool rerouteAll() {
    reroute("calloc", watchedCalloc, &realCalloc);
    return reroute("malloc", watchedMalloc, &realMalloc) && reroute("free", watchedFree, &realFree) &&
           reroute("LocalAlloc", watchedLocalAlloc, &realLocalAlloc) &&
           reroute("LocalFree", watchedLocalFree, &realLocalFree);
}

}   // namespace

// From the start: a block is to be seen both when it comes and when it goes.
const bool rerouted = rerouteAll();

bool available() { return rerouted; }

#else

bool available() { return false; }

#endif

}   // namespace test::heap
