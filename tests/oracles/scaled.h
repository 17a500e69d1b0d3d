// What int16 results should be: exact ones, scaled by the definition of the modes, one at a time.
#pragma once

#include "tests/support/oracle.h"

namespace test {

// floor(value * 2^-factor) of less than 2^47; of factors below -16 that of -16, which is scaled to the same int16.
Exact shifted(Exact value, long long factor);
bool fitsShort(Exact value);
Exact wrappedToShort(Exact value);
Exact saturatedToShort(Exact value);

// The results of a call with a mode and a factor, which has been given `exact` ones; modes are told by their whole
// value.
void scaled(Sight& call, const std::vector<Number>& exact);

}   // namespace test
