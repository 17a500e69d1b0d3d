#include "tests/support/oracle.h"

namespace test {

VEK_ORACLES(misc) {
    const auto reversed = [](const Element& e) {
        return exactly(e.call.array(e.call.operands[0].c_str())[reversedBits(e.index, e.call.number("order"))]);
    };
    each("bBitRev1 bBitRev2", "s d c z w v", reversed);
    whole("CalcBitRevTbl", "", [](Sight& call) {
        for (std::size_t i = 0; i < call.array("tbl").size(); ++i)
            call.wanted["tbl"].elements.push_back(static_cast<Exact>(reversedBits(i, call.number("order"))));
    });
    whole("BitRev", "", [](Sight& call) {
        const auto value = static_cast<std::size_t>(static_cast<std::uint32_t>(call.number("value")));
        call.wanted[""].elements = {static_cast<Exact>(reversedBits(value, call.number("order")))};
    });
}

}   // namespace test
