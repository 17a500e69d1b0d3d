// The transforms of single precision.
#include "fft/entries.h"

namespace vek::VEK_LEVEL {

extern const kernels::FftFloats fft_s;
const kernels::FftFloats fft_s = {{entries<float>}};

}   // namespace vek::VEK_LEVEL
