// Results that are known up to an error, as int16 by scale mode and factor.
#pragma once

#include "tests/support/oracle.h"

namespace test {

// `values` should come out in the array or result of that name, which are off by up to `error` before they are rounded
// to integers; 0: they are the integers. Bits of the mode count: 4, 2, 1.
void wantShorts(Sight& call, const std::string& name, const std::vector<Wide>& values, long double error);

}   // namespace test
