// The transforms of double precision.
#include "fft/entries.h"

namespace vek::VEK_LEVEL {

extern const kernels::FftDoubles fft_d;
const kernels::FftDoubles fft_d = {{entries<double>}};

}   // namespace vek::VEK_LEVEL
