// The Goertzel filter: one frequency bin, sample by sample or block by block. Reports name the module vekgrtzl for the
// floating-point members and vekgrtzw for the int16 ones.
//
// The caller owns the state, one record for each frequency; Init makes it valid, and nothing releases it. Members of
// real samples keep real values of the recurrence, those of complex samples complex ones; the int16 members keep the
// float records.
#ifndef VEKM6_GOERTZ_H
#define VEKM6_GOERTZ_H

#include "vekm6/types.h"

VEK_DECLARATIONS_BEGIN

typedef struct VekGoertzState {   // s, w
    float freq;                   // as a fraction f of the sampling rate
    float cosV, sinV, cos2V;      // cos(2 pi f), sin(2 pi f), 2 cos(2 pi f)
    float prev2, prev1;           // s[n-2], s[n-1]
} VekGoertzState;

typedef struct VekDGoertzState {   // d
    double freq;
    double cosV, sinV, cos2V;
    double prev2, prev1;
} VekDGoertzState;

typedef struct VekCGoertzState {   // c, v
    float freq;
    float cosV, sinV, cos2V;
    VekCplx prev2, prev1;
} VekCGoertzState;

typedef struct VekZGoertzState {   // z
    double freq;
    double cosV, sinV, cos2V;
    VekDCplx prev2, prev1;
} VekZGoertzState;

// Init, Reset, and one sample.
//   Formula:   Init: the coefficients, in double precision; the recurrence begins with zeros. Reset: zeros; the
//              frequency stays. Goertz: s[n] = x + 2 cos(2 pi f) s[n-1] - s[n-2], the result
//              exp(2 pi i f) s[n] - s[n-1]: of n samples so far the sum over m < n of x[m] exp(2 pi i f (n - m)). All
//              is computed in double precision, from stored values that are rounded to the state's type.
//   Arguments: 0 <= freq < 1; state; the sample; int16: scaleMode 0 ... 4 and scaleFactor -14 ... 14, which may not be
//              null in any mode.
//   Scaling:   int16: the result, rounded to float and then to the nearest integer, ties to even, by mode and factor
//              as in vekvDft.
//   Errors:    VEK_StsBadArg: "Null state pointer"; Init: "Invalid frequency value"; int16: "Zero scale factor
//              pointer", "Too large scale factor", "Erroneus scale mode". A failed call leaves state and factor as they
//              were.
//   Returns:   Init: VEK_StsOk, or what the report handler returned. Goertz: the bin, of the samples' precision; zero
//              after an error and under a negative status.
//   Source:    G. Goertzel, "An algorithm for the evaluation of finite trigonometric series", 1958.
VekStatus VEKAPI veksGoertzInit(float freq, VekGoertzState* state);
void VEKAPI veksGoertzReset(VekGoertzState* state);
VekCplx VEKAPI veksGoertz(VekGoertzState* state, float sample);
VekStatus VEKAPI vekdGoertzInit(double freq, VekDGoertzState* state);
void VEKAPI vekdGoertzReset(VekDGoertzState* state);
VekDCplx VEKAPI vekdGoertz(VekDGoertzState* state, double sample);
VekStatus VEKAPI vekcGoertzInit(float freq, VekCGoertzState* state);
void VEKAPI vekcGoertzReset(VekCGoertzState* state);
VekCplx VEKAPI vekcGoertz(VekCGoertzState* state, VekCplx sample);
VekStatus VEKAPI vekzGoertzInit(double freq, VekZGoertzState* state);
void VEKAPI vekzGoertzReset(VekZGoertzState* state);
VekDCplx VEKAPI vekzGoertz(VekZGoertzState* state, VekDCplx sample);
VekStatus VEKAPI vekwGoertzInit(float freq, VekGoertzState* state);
void VEKAPI vekwGoertzReset(VekGoertzState* state);
VekWCplx VEKAPI vekwGoertz(VekGoertzState* state, int16_t sample, int scaleMode, int* scaleFactor);
VekStatus VEKAPI vekvGoertzInit(float freq, VekCGoertzState* state);
void VEKAPI vekvGoertzReset(VekCGoertzState* state);
VekWCplx VEKAPI vekvGoertz(VekCGoertzState* state, VekWCplx sample, int scaleMode, int* scaleFactor);

// A block: what the last of len calls with one sample would have returned, to the bit, and the state that they would
// have left.
//   Arguments: len >= 1 samples; the rest as above.
//   Errors:    VEK_StsBadArg: "Null state pointer", "Null buffer pointer", "Invalid array length"; then as above.
VekCplx VEKAPI veksbGoertz(VekGoertzState* state, const float* samples, int len);
VekDCplx VEKAPI vekdbGoertz(VekDGoertzState* state, const double* samples, int len);
VekCplx VEKAPI vekcbGoertz(VekCGoertzState* state, const VekCplx* samples, int len);
VekDCplx VEKAPI vekzbGoertz(VekZGoertzState* state, const VekDCplx* samples, int len);
VekWCplx VEKAPI vekwbGoertz(VekGoertzState* state, const int16_t* samples, int len, int scaleMode, int* scaleFactor);
VekWCplx VEKAPI vekvbGoertz(VekCGoertzState* state, const VekWCplx* samples, int len, int scaleMode, int* scaleFactor);

VEK_DECLARATIONS_END

#endif
