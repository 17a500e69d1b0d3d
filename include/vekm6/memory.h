// Aligned memory and the version record.
#ifndef VEKM6_MEMORY_H
#define VEKM6_MEMORY_H

#include "vekm6/types.h"

VEK_DECLARATIONS_BEGIN

// Aligned memory for count elements (vekMalloc: bytes), not cleared.
//   Arguments: count, 0 <= count < 2^32. Element sizes: s, i, v 4 bytes; d, c, j 8 bytes; w 2 bytes;
//              z 16 bytes. 0 gives a valid block of no usable bytes.
//   Overflow:  sizes are computed at the width of an address. In a 32-bit process a block of 4 GiB - 36 bytes
//              or more wraps around and comes out smaller than asked for; the caller has to stay below.
//   Errors:    none are reported.
//   Returns:   a block on a multiple of 32 bytes, to be released by vekFree and nothing else; null when there
//              is no memory. Works under a negative status too.
void* VEKAPI vekMalloc(uint32_t count);
float* VEKAPI veksMalloc(uint32_t count);
double* VEKAPI vekdMalloc(uint32_t count);
VekCplx* VEKAPI vekcMalloc(uint32_t count);
VekDCplx* VEKAPI vekzMalloc(uint32_t count);
int16_t* VEKAPI vekwMalloc(uint32_t count);
VekWCplx* VEKAPI vekvMalloc(uint32_t count);
int32_t* VEKAPI vekiMalloc(uint32_t count);
void* VEKAPI vekjMalloc(uint32_t count);

// Releases a block of the allocator.
//   Arguments: block, from any of the operations above and not released yet; null does nothing.
//   Errors:    none. Works under a negative status too.
void VEKAPI vekFree(void* block);

// The version record. Its texts are fixed values of this interface: buildDate is not the date of a build, and
// name stays the same on every system.
typedef struct VekLibVersion {
    int32_t major;                 // 4
    int32_t minor;                 // 1
    int32_t build;                 // 51
    const char* name;              // "vekm6.dll"
    const char* version;           // "4.1 FCS"
    const char* internalVersion;   // "[4.01.51, 01/15/99]"
    const char* buildDate;         // "Jan 19 1999"
    const char* kind;              // "DLL"
} VekLibVersion;

// The library's version record.
//   Errors:    none.
//   Returns:   the same constant record on every call; never null, not to be changed or freed.
const VekLibVersion* VEKAPI vekGetLibVersion(void);

VEK_DECLARATIONS_END

#endif
