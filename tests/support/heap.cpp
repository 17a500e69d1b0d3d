#include "heap.h"

#include <atomic>
#include <climits>
#include <cstdint>
#include <cstdlib>

#include <malloc.h>
#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include "os.h"
#endif

namespace test::heap {

namespace {

struct Plan {
    long failFrom = LONG_MAX, failTo = LONG_MAX;   // exclusive
    std::size_t largest = SIZE_MAX;
    long requests = 0, failures = 0;
    std::size_t lastBytes = 0;
};
thread_local Plan plan;
thread_local long blocks = 0, bytesInBlocks = 0;
std::atomic<long> balance{0};
std::atomic<bool> allFail{false};

bool refuses(std::size_t bytes) {
    const long n = plan.requests++;
    plan.lastBytes = bytes;
    const bool refused = (n >= plan.failFrom && n < plan.failTo) || bytes > plan.largest || allFail;
    plan.failures += refused;
    return refused;
}

// A block that came, or is about to go, with what the heap says of its size.
template <class Size>
void* counted(void* block, Size size, int sign = 1) {
    if (block == nullptr) return block;
    balance += sign;
    blocks += sign;
    bytesInBlocks += sign * static_cast<long>(size(block));
    return block;
}

}   // namespace

void failAt(long n, bool onwards) { plan = {n, onwards ? LONG_MAX : n + 1}; }
void failAbove(std::size_t bytes) { plan = {LONG_MAX, LONG_MAX, bytes}; }
void failNone() { plan = {}; }
long requests() { return plan.requests; }
long failures() { return plan.failures; }
std::size_t lastBytes() { return plan.lastBytes; }
void failEverywhere(bool fail) { allFail = fail; }
long outstanding() { return balance; }
long held() { return blocks; }
long heldBytes() { return bytesInBlocks; }

#ifndef _WIN32

extern "C" {
void* __real_malloc(std::size_t bytes);
void* __real_calloc(std::size_t count, std::size_t bytes);
void __real_free(void* block);

void* __wrap_malloc(std::size_t bytes) {
    return refuses(bytes) ? nullptr : counted(__real_malloc(bytes), malloc_usable_size);
}
void* __wrap_calloc(std::size_t count, std::size_t bytes) {
    return refuses(count * bytes) ? nullptr : counted(__real_calloc(count, bytes), malloc_usable_size);
}
void __wrap_free(void* block) { __real_free(counted(block, malloc_usable_size, -1)); }
}

bool available() { return true; }

#else

namespace {

void* (*realMalloc)(std::size_t);
void (*realFree)(void*);
HLOCAL(WINAPI* realLocalAlloc)(UINT, SIZE_T);
HLOCAL(WINAPI* realLocalFree)(HLOCAL);

void* watchedMalloc(std::size_t bytes) { return refuses(bytes) ? nullptr : counted(realMalloc(bytes), _msize); }
void watchedFree(void* block) { realFree(counted(block, _msize, -1)); }
HLOCAL WINAPI watchedLocalAlloc(UINT flags, SIZE_T bytes) {
    return refuses(bytes) ? nullptr : counted(realLocalAlloc(flags, bytes), LocalSize);
}
HLOCAL WINAPI watchedLocalFree(HLOCAL block) { return realLocalFree(counted(block, LocalSize, -1)); }

// From the start: a block is to be seen both when it comes and when it goes. The imports of the static twin are also
// the tests' own.
const bool rerouted = GetModuleHandleA("vekm6.dll") != nullptr && reroute("malloc", watchedMalloc, &realMalloc) &&
                      reroute("free", watchedFree, &realFree) &&
                      reroute("LocalAlloc", watchedLocalAlloc, &realLocalAlloc) &&
                      reroute("LocalFree", watchedLocalFree, &realLocalFree);

}   // namespace

bool available() { return rerouted; }

#endif

}   // namespace test::heap
