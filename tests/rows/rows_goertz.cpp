#include "tests/support/scene.h"

namespace test {

namespace {

// At a tenth of the sampling rate.
void ready(Scene& scene) {
    const Row& init = row("vek" + scene.row.function.letters + "GoertzInit");
    Cells cells = init.plain(0);
    cells[1].set(scene.pointer<void>("state"));
    init.function.call(cells);
}

}   // namespace

VEK_ROWS(goertz) {
    const std::string noState = "Null state pointer: state==0";
    const std::string noBlock = "; Null buffer pointer: samples==0; Invalid array length: len<1";
    const auto both = [&](const std::string& module, const std::string& more, const std::string& checks,
                          const Functions& inits, const Functions& resets, const Functions& ones,
                          const Functions& blocks) {
        const Group made{.module = module, .returnsStatus = true, .testedBy = "test_goertz"};
        const Group reset{.module = module, .setUp = ready, .testedBy = "test_goertz"};
        const Group running{.module = module, .setUp = ready, .perLevel = true};
        add(made, "scalar freq=0.1|0|0.25|0.75, record state",
            noState + "; Invalid frequency value: !(freq>=0 && freq<1)", inits);
        add(reset, "record state", noState, resets);
        add(running, "record state, scalar sample" + more, noState + checks, ones);
        add(running, "record state, in samples[len], length len" + more, noState + noBlock + checks, blocks);
    };
    both("vekgrtzl", "", "", {SDCZ(GoertzInit)}, {SDCZ(GoertzReset)}, {SDCZ(Goertz)}, {SDCZ(bGoertz)});
    both("vekgrtzw", ", mode scaleMode=0|1|2|3|4, factor scaleFactor=1|0|3|14|-2|-14",
         "; Zero scale factor pointer: scaleFactor==0"
         "; Too large scale factor: scaleFactor.value<-14 || scaleFactor.value>14"
         "; Erroneus scale mode: scaleMode>4",
         {VEK_NAMES(GoertzInit, w, v)}, {VEK_NAMES(GoertzReset, w, v)}, {VEK_NAMES(Goertz, w, v)},
         {VEK_NAMES(bGoertz, w, v)});
}

}   // namespace test
