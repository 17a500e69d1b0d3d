// The aligned allocator and the version record.
#include "vekm6/memory.h"

#include "core/memory.h"

namespace {

// Sizes are computed at the width of an address: on 32-bit processors a count that is too large wraps.
void* elements(std::uint32_t count, std::size_t width) { return vek::core::allocate(count * width); }

constexpr VekLibVersion version = {4, 1, 51, "vekm6.dll", "4.1 FCS", "[4.01.51, 01/15/99]", "Jan 19 1999", "DLL"};

}   // namespace

extern "C" {

void* VEKAPI vekMalloc(uint32_t count) { return elements(count, 1); }
float* VEKAPI veksMalloc(uint32_t count) { return static_cast<float*>(elements(count, 4)); }
double* VEKAPI vekdMalloc(uint32_t count) { return static_cast<double*>(elements(count, 8)); }
VekCplx* VEKAPI vekcMalloc(uint32_t count) { return static_cast<VekCplx*>(elements(count, 8)); }
VekDCplx* VEKAPI vekzMalloc(uint32_t count) { return static_cast<VekDCplx*>(elements(count, 16)); }
int16_t* VEKAPI vekwMalloc(uint32_t count) { return static_cast<int16_t*>(elements(count, 2)); }
VekWCplx* VEKAPI vekvMalloc(uint32_t count) { return static_cast<VekWCplx*>(elements(count, 4)); }
int32_t* VEKAPI vekiMalloc(uint32_t count) { return static_cast<int32_t*>(elements(count, 4)); }
void* VEKAPI vekjMalloc(uint32_t count) { return elements(count, 8); }

void VEKAPI vekFree(void* block) { vek::core::release(block); }

const VekLibVersion* VEKAPI vekGetLibVersion(void) { return &version; }

}   // extern "C"
