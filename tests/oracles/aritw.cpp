#include "tests/support/oracle.h"

namespace test {

VEK_ORACLES(aritw) {
    each("bZero", "w", [](const Element&) { return exactly({}); });
    each("bSet bCopy", "w", [](const Element& e) { return exactly(e.x); });
}

}   // namespace test
