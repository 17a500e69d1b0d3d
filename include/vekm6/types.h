// Element types, status codes, error modes, transform flags and the calling convention that every header shares.
#ifndef VEKM6_TYPES_H
#define VEKM6_TYPES_H

#include <stddef.h>
#include <stdint.h>

// Calling convention of every exported operation and of VekErrorHandler.
#if defined(_WIN32) && !defined(_WIN64)
#define VEKAPI __stdcall
#else
#define VEKAPI
#endif

// Complex elements, real part first. The letters are those of the operations' names.
typedef struct VekCplx {
    float re, im;
} VekCplx;   // c

typedef struct VekDCplx {
    double re, im;
} VekDCplx;   // z

typedef struct VekWCplx {
    int16_t re, im;
} VekWCplx;   // v

typedef struct VekICplx {
    int32_t re, im;
} VekICplx;   // widened results of complex int16 operations

// Zero is success, negative values are errors.
typedef int VekStatus;

enum {
    VEK_StsOk = 0,
    VEK_StsBacktrace = -1,
    VEK_StsBadState = -3,
    VEK_StsNoMemory = -4,
    VEK_StsBadArg = -5,
    VEK_StsUnsupported = -6,
    VEK_StsNoConvergence = -7,
    VEK_StsAutotrace = -8,
    VEK_StsNullPtr = -9,
    VEK_StsBadLen = -10,
    VEK_StsBadFreq = -11,
    VEK_StsBadFreqRange = -12
};

enum {
    VEK_ErrModeLeaf = 0,
    VEK_ErrModeParent = 1,
    VEK_ErrModeSilent = 2
};

// relOp of the thresholds.
enum {
    VEK_LT = 0,
    VEK_GT = 1
};

// Flags of the transforms; they combine by or.
enum {
    VEK_Forw = 1,
    VEK_Inv = 2,
    VEK_Init = 4,
    VEK_Free = 8,
    VEK_NoScale = 16,
    VEK_NoBitRev = 32,
    VEK_InBitRev = 64,
    VEK_OutBitRev = 128,
    VEK_OutRCPack = 256,
    VEK_OutRCPerm = 512,
    VEK_InRCPack = 1024,
    VEK_InRCPerm = 4096,
    VEK_DoIntCore = 0x2000,
    VEK_DoFloatCore = 0x4000,
    VEK_DoFastQuad = 0x8000
};

#endif
