// vekm6: signal processing on arrays, for C99 and C++11 up. This header includes those of all families.
//
// Names. vek + element letters + b for a whole vector (nothing for one sample) + r for separate real and
// imaginary parts + the operation: veksbAdd3 adds float vectors. Letters: s float, d double, c and z complex
// float and double, w int16, v complex int16, i int32. Nip forms write to separate output instead of
// overwriting their input; 1, 2, 3 stand for a scalar or one vector in place, a second vector in place or a
// separate output, two inputs and an output.
//
// Arrays are the caller's, with unit stride and no alignment beyond the element's own. Memory of the
// allocator (vekm6/memory.h) may make loops faster, never other memory wrong.
//
// Checks. Every operation checks its arguments first, in the order that its header states, and stops at the
// first that fails: it reports through vekError (vekm6/frame.h) with the status, its own name, the text
// stated, its module and a line; outputs are left as they were unless stated otherwise. By default a report
// asks the user and may end the process; vekSetErrMode(VEK_ErrModeParent) and vekRedirectError choose
// otherwise, per thread.
//
// Status. Each thread has one, and it is sticky: an error stays until vekSetErrStatus(VEK_StsOk). While it is
// negative, every operation that computes returns after its checks without computing: result 0 or null,
// outputs left as they were. The allocator, the frame and whatever releases always work.
//
// Threads. Status, mode, handler and tables are per thread; no operation takes a lock. Arrays and tables must
// not be used by one thread while another writes them.
//
// Bits. Loops are chosen once, for the processor. Element-wise real arithmetic gives the same numbers, bit for
// bit, on all of them; where complex products and transforms may differ in their last bits the headers say so
// or bound the error. A NaN is a NaN on all of them, but its sign and payload may differ.
//
// Exceptions. Overflow, invalid operation and division by zero are raised only where results show it: an
// infinity that comes of finite elements, a NaN that comes of none (signalling NaNs aside). So they may be
// unmasked. Inexact, underflow and denormal operand mean nothing. No operation clears flags or changes how the
// processor is set. All that is promised of results is promised for rounding to nearest with subnormals kept;
// under other settings they are as good as the settings allow.
#ifndef VEKM6_H
#define VEKM6_H

#include "vekm6/arith.h"
#include "vekm6/aritw.h"
#include "vekm6/conv.h"
#include "vekm6/corr.h"
#include "vekm6/dft.h"
#include "vekm6/dotp.h"
#include "vekm6/fft.h"
#include "vekm6/frame.h"
#include "vekm6/goertz.h"
#include "vekm6/memory.h"
#include "vekm6/misc.h"
#include "vekm6/twd.h"
#include "vekm6/types.h"
#include "vekm6/vec.h"

#endif
