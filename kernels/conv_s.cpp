// Direct convolution of float vectors.
#include "conv/direct.h"

namespace vek::VEK_LEVEL {

extern const kernels::ConvFloats conv_s;
const kernels::ConvFloats conv_s = {{directSums<float>}};

}   // namespace vek::VEK_LEVEL
