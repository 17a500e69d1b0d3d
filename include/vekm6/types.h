// What all headers share: calling convention, element types, status codes, error modes, flags.
#ifndef VEKM6_TYPES_H
#define VEKM6_TYPES_H

#include <stddef.h>
#include <stdint.h>

// Calling convention of every operation and of report handlers. On 32-bit Windows it is the one that every
// language can call; the stack may come aligned to 4 bytes only.
#if defined(_WIN32) && !defined(_WIN64)
#define VEKAPI __stdcall
#else
#define VEKAPI
#endif

// Around the declarations: C linkage, and seen outside a library that hides its other names.
#if defined(__GNUC__) && !defined(_WIN32)
#define VEK_VISIBLE_BEGIN _Pragma("GCC visibility push(default)")
#define VEK_VISIBLE_END _Pragma("GCC visibility pop")
#else
#define VEK_VISIBLE_BEGIN
#define VEK_VISIBLE_END
#endif
#ifdef __cplusplus
#define VEK_DECLARATIONS_BEGIN VEK_VISIBLE_BEGIN extern "C" {
#define VEK_DECLARATIONS_END \
    }                        \
    VEK_VISIBLE_END
#else
#define VEK_DECLARATIONS_BEGIN VEK_VISIBLE_BEGIN
#define VEK_DECLARATIONS_END VEK_VISIBLE_END
#endif

// Complex elements, real part first. The letters are those of the operations' names; the real elements are
// s float, d double, w int16_t and i int32_t.
typedef struct VekCplx {   // c
    float re, im;
} VekCplx;

typedef struct VekDCplx {   // z
    double re, im;
} VekDCplx;

typedef struct VekWCplx {   // v
    int16_t re, im;
} VekWCplx;

typedef struct VekICplx {   // widened results of v
    int32_t re, im;
} VekICplx;

// Zero is success, negative values are errors.
typedef int VekStatus;

enum {
    VEK_StsOk = 0,
    VEK_StsBacktrace = -1,       // report only: an inner operation failed
    VEK_StsBadState = -3,        // for callers and handlers
    VEK_StsNoMemory = -4,        // an allocation failed
    VEK_StsBadArg = -5,          // an argument failed a check
    VEK_StsUnsupported = -6,     // for callers and handlers
    VEK_StsNoConvergence = -7,   // for callers and handlers
    VEK_StsAutotrace = -8,       // report only: a call is traced
    VEK_StsNullPtr = -9,         // filter design: no taps
    VEK_StsBadLen = -10,         // filter design: too few taps
    VEK_StsBadFreq = -11,        // filter design: a cut-off frequency is out of range
    VEK_StsBadFreqRange = -12    // filter design: the high cut-off is below the low one
};

// What the library's report handlers do, per thread.
enum {
    VEK_ErrModeLeaf = 0,     // show the report, then end the process
    VEK_ErrModeParent = 1,   // show the report and return to the caller
    VEK_ErrModeSilent = 2    // show nothing
};

// The relation of a threshold: elements below it (VEK_LT) or above it (any other value) are replaced.
enum {
    VEK_LT = 0,
    VEK_GT = 1
};

// Scale modes: how exact results become int16. vekm6/aritw.h says what each does.
enum {
    VEK_NO_SCALE = 0,      // the low 16 bits
    VEK_SATURATE = 1,      // the nearest int16
    VEK_FIXED_SCALE = 2,   // times 2^-factor first; with VEK_SATURATE, 3, saturated
    VEK_AUTO_SCALE = 4     // by the least factor that makes all results fit, which is returned
};

// Flags of the transforms. They combine by or; 2048 is not used.
enum {
    VEK_Forw = 1,          // forward transform
    VEK_Inv = 2,           // inverse transform
    VEK_Init = 4,          // build the tables and return
    VEK_Free = 8,          // release the tables and return
    VEK_NoScale = 16,      // inverse without the factor 1/N
    VEK_NoBitRev = 32,     // accepted, changes nothing
    VEK_InBitRev = 64,     // input in bit-reversed order
    VEK_OutBitRev = 128,   // output in bit-reversed order
    VEK_OutRCPack = 256,   // real transforms: layout of the spectrum
    VEK_OutRCPerm = 512,
    VEK_InRCPack = 1024,
    VEK_InRCPerm = 4096,
    VEK_DoIntCore = 0x2000,   // int16 transforms: choice of the arithmetic
    VEK_DoFloatCore = 0x4000,
    VEK_DoFastQuad = 0x8000
};

#endif
