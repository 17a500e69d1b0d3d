// Initialisation and arithmetic of int16 vectors. Reports name the module vekaritw.
#ifndef VEKM6_ARITW_H
#define VEKM6_ARITW_H

#include "vekm6/types.h"

VEK_DECLARATIONS_BEGIN

// Initialisation. For 0 <= i < n:
//   Formula:   dst[i] becomes
//              Zero  0              Set   val               Copy  src[i]
//   Arguments: n elements in each vector, n >= 1; val is one element.
//   Scaling:   none.
//   Aliasing:  dst may be src; vectors must not overlap otherwise.
//   Errors:    VEK_StsBadArg: "n<=0", then the null vectors in the order of the arguments: "src==0", "dst==0".
void VEKAPI vekwbZero(int16_t* dst, int n);
void VEKAPI vekwbSet(int16_t val, int16_t* dst, int n);
void VEKAPI vekwbCopy(const int16_t* src, int16_t* dst, int n);

VEK_DECLARATIONS_END

#endif
