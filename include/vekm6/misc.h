// Bit reversal: of one value, as index tables, as permutations of vectors. Reports name the module vekmisc.
//
// Throughout, N = 2^order, 0 <= order <= 31, and rev(i) is i with its low `order` bits in reverse.
#ifndef VEKM6_MISC_H
#define VEKM6_MISC_H

#include "vekm6/types.h"

VEK_DECLARATIONS_BEGIN

// Reverses the low bits of one value.
//   Formula:   rev(value); bits from `order` on are dropped, so order 0 gives 0.
//   Arguments: value, any; order.
//   Errors:    VEK_StsBadArg: "order<0", "order>31".
//   Returns:   the reversed value; 0 after an error and under a negative status.
int32_t VEKAPI vekBitRev(int32_t value, int order);

// Fills an index table.
//   Formula:   tbl[i] = rev(i), 0 <= i < N.
//   Arguments: tbl, N elements; order.
//   Errors:    VEK_StsBadArg: "tbl==0", "order<0", "order>31".
void VEKAPI vekCalcBitRevTbl(int32_t* tbl, int order);

// The calling thread's index table of an order, built on first request.
//   Formula:   as vekCalcBitRevTbl.
//   Arguments: order.
//   Errors:    VEK_StsBadArg: "order<0", "order>31"; VEK_StsNoMemory: "NULL Pointer".
//   Returns:   N elements that belong to the library and last until vekFreeBitRevTbls or the thread's end;
//              null after an error and under a negative status.
const int32_t* VEKAPI vekGetBitRevTbl(int order);

// Releases the calling thread's index tables and the lists by which the permutations swap, of all orders.
// They are built again when needed.
//   Errors:    none. Works under a negative status too.
void VEKAPI vekFreeBitRevTbls(void);

// Permutes a vector into bit-reversed order; a second time restores it.
//   Formula:   BitRev1  exchanges vec[i] and vec[rev(i)]
//              BitRev2  dst[i] = src[rev(i)]
//   Arguments: N elements in each vector; order.
//   Scaling:   none.
//   Aliasing:  src and dst must not overlap.
//   Errors:    VEK_StsBadArg: "vec==0", or "src==0", "dst==0"; then "order<0", "order>31". VEK_StsNoMemory:
//              "NULL Pointer", when there is no memory for the thread's list of swaps; the vectors are left
//              as they were.
//   Source:    A. H. Karp, "Bit reversal on uniprocessors", SIAM Review 38 (1996), the methods with blocks.
void VEKAPI veksbBitRev1(float* vec, int order);
void VEKAPI veksbBitRev2(const float* src, float* dst, int order);
void VEKAPI vekdbBitRev1(double* vec, int order);
void VEKAPI vekdbBitRev2(const double* src, double* dst, int order);
void VEKAPI vekcbBitRev1(VekCplx* vec, int order);
void VEKAPI vekcbBitRev2(const VekCplx* src, VekCplx* dst, int order);
void VEKAPI vekzbBitRev1(VekDCplx* vec, int order);
void VEKAPI vekzbBitRev2(const VekDCplx* src, VekDCplx* dst, int order);
void VEKAPI vekwbBitRev1(int16_t* vec, int order);
void VEKAPI vekwbBitRev2(const int16_t* src, int16_t* dst, int order);
void VEKAPI vekvbBitRev1(VekWCplx* vec, int order);
void VEKAPI vekvbBitRev2(const VekWCplx* src, VekWCplx* dst, int order);

VEK_DECLARATIONS_END

#endif
