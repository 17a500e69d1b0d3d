// Direct convolution of double vectors.
#include "conv/direct.h"

namespace vek::VEK_LEVEL {

extern const kernels::ConvDoubles conv_d;
const kernels::ConvDoubles conv_d = {{directSums<double>}};

}   // namespace vek::VEK_LEVEL
