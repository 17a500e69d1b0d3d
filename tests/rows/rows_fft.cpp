#include "tests/support/rows.h"

namespace test {

namespace {

// The exports of both precisions stand in modules of their own.
void addBoth(Group group, const std::string& arguments, const std::string& checks, const Functions& functions,
             Inner inner = {}) {
    for (const Function& function : functions) {
        const std::string& type = function.letters;
        group.module = type == "s" || type == "c" ? "vekffts" : "vekfftd";
        Inner called = inner;
        if (!inner.name.empty()) {
            called.name = "vek" + type + inner.name;
            called.message = "out " + called.name;
        }
        add(group, arguments, checks, {function}, called);
    }
}

const Group transform{.noMemory = "No working Twd memory", .retriesMemory = true};
const Group twoSignals{.returnsStatus = true, .noMemory = "No working Twd memory", .retriesMemory = true};

// Free comes before all checks, Init before those of the data.
const std::string order = "=flags & 8; order<0; order>31; =flags & 4; ";
const std::string direction = "; (flags & 1) && (flags & 2); (flags & 1)==0 && (flags & 2)==0";

}   // namespace

VEK_ROWS(fft) {
    const auto complex = [](const std::string& arrays, const std::string& nulls, const Functions& functions) {
        addBoth(transform, arrays + ", order order, flags flags=1|17|2|18|33|66|65|130|129|65281",
                order + nulls + direction +
                    "; (flags & 64) && (flags & 128); (flags & 64) && (flags & 32); (flags & 32) && (flags & 128)",
                functions);
    };
    complex("inout samps[2^order]", "samps==0", {CZ(Fft)});
    complex("in inSamps[2^order], apart outSamps[2^order]", "inSamps==0; outSamps==0", {CZ(FftNip)});
    complex("inout reSamps[2^order], inout imSamps[2^order]", "reSamps==0; imSamps==0", {CZ(rFft)});
    complex("in reInSamps[2^order], in imInSamps[2^order], apart reOutSamps[2^order], apart imOutSamps[2^order]",
            "reInSamps==0; imInSamps==0; reOutSamps==0; imOutSamps==0", {CZ(rFftNip)});

    // (65281: flags that nobody uses.) In place and to separate output, from `in` to `out` elements.
    const auto real = [](const std::string& in, const std::string& out, const std::string& flags,
                         const std::string& packing, const Functions& inPlace, const Functions& apart) {
        addBoth(transform, "inout samps[max(" + in + ", " + out + ")], order order, flags flags=" + flags,
                order + "samps==0" + direction + packing, inPlace);
        addBoth(transform, "in inSamps[" + in + "], apart outSamps[" + out + "], order order, flags flags=" + flags,
                order + "inSamps==0; outSamps==0" + direction + packing, apart);
    };
    real("2^order", "2^order+2", "1|17|2|18|65505", "", {SD(RealFft)}, {SD(RealFftNip)});
    real("2^order", "2^order", "257|273|258|274|513|529|514|530",
         "; (flags & 256) && (flags & 512); (flags & 256)==0 && (flags & 512)==0", {SD(RealFftl)}, {SD(RealFftlNip)});
    real("2^order+2", "2^order", "2|18|1|17|65505", "", {SD(CcsFft)}, {SD(CcsFftNip)});
    real("2^order", "2^order", "1026|1042|1025|1041|4098|4114|4097|4113",
         "; (flags & 1024) && (flags & 4096); (flags & 1024)==0 && (flags & 4096)==0", {SD(CcsFftl)}, {SD(CcsFftlNip)});

    const auto two = [](const std::string& in, const std::string& out, const char* flags, const Functions& inPlace,
                        const Functions& apart, const std::string& inner) {
        const std::string rest = std::string(", order order, flags flags=") + flags;
        addBoth(twoSignals, "inout samps1[2^order+2], inout samps2[2^order+2]" + rest, "", inPlace,
                {inner, "samps1 order flags", "samps2 order flags", "(flags & 12)==0"});
        addBoth(twoSignals,
                "in in1[" + in + "], in in2[" + in + "], apart out1[" + out + "], apart out2[" + out + "]" + rest, "",
                apart, {inner + "Nip", "in1 out1 order flags", "in2 out2 order flags", "(flags & 12)==0"});
    };
    two("2^order", "2^order+2", "1|17|2|18", {SD(Real2Fft)}, {SD(Real2FftNip)}, "RealFft");
    two("2^order+2", "2^order", "2|18|1|17", {SD(Ccs2Fft)}, {SD(Ccs2FftNip)}, "CcsFft");

    addBoth({}, "in src[2^order], inout dst[2^order], order order", "order<0; order>31; src==0; dst==0",
            {SD(MpyRCPack2), SD(MpyRCPerm2)});
    addBoth({}, "in srcA[2^order], in srcB[2^order], out dst[2^order], order order",
            "order<0; order>31; srcA==0; srcB==0; dst==0", {SD(MpyRCPack3), SD(MpyRCPerm3)});
}

}   // namespace test
