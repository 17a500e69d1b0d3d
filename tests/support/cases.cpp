#include "cases.h"

#include <climits>
#include <cstdlib>
#include <sstream>

#include "reports.h"

namespace test {

bool Check::holds(const Argument& of, const Cell& cell) const {
    switch (condition) {
        case Condition::null: return cell.get<void*>() == nullptr;
        case Condition::notPositive: return cell.get<int>() <= 0;
        case Condition::negative: return cell.get<int>() < 0;
        case Condition::above31: return cell.get<int>() > 31;
        case Condition::bothBits: return (cell.get<int>() & first) != 0 && (cell.get<int>() & second) != 0;
        case Condition::neitherBit: return (cell.get<int>() & (first | second)) == 0;
        case Condition::negativeReal: return of.type.real == 'f' ? cell.get<float>() < 0 : cell.get<double>() < 0;
        case Condition::zeroComplex:
            return of.type.real == 'f' ? cell.get<VekCplx>().re == 0 && cell.get<VekCplx>().im == 0
                                       : cell.get<VekDCplx>().re == 0 && cell.get<VekDCplx>().im == 0;
    }
    return false;
}

int Check::variants() const {
    switch (condition) {
        case Condition::notPositive:
        case Condition::above31: return 3;
        case Condition::negative:
        case Condition::negativeReal:
        case Condition::zeroComplex: return 2;
        default: return 1;
    }
}

void Check::provoke(const Argument& of, Cell& cell, int variant) const {
    constexpr int belowOne[] = {0, -1, INT_MIN};
    constexpr int tooHigh[] = {32, 1 << 30, INT_MAX};
    switch (condition) {
        case Condition::null: cell.set<void*>(nullptr); break;
        case Condition::notPositive: cell.set(belowOne[variant]); break;
        case Condition::negative: cell.set(belowOne[variant + 1]); break;
        case Condition::above31: cell.set(tooHigh[variant]); break;
        case Condition::bothBits: cell.set(cell.get<int>() | first | second); break;
        case Condition::neitherBit: cell.set(cell.get<int>() & ~(first | second)); break;
        case Condition::negativeReal:
            if (of.type.real == 'f')
                cell.set(variant == 0 ? -1.0f : -1e-45f);
            else
                cell.set(variant == 0 ? -1.0 : -5e-324);
            break;
        case Condition::zeroComplex:
            if (of.type.real == 'f')
                cell.set(VekCplx{0.0f, variant == 0 ? 0.0f : -0.0f});
            else
                cell.set(VekDCplx{0.0, variant == 0 ? 0.0 : -0.0});
            break;
    }
}

int Row::sizeArgument() const {
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (arguments[i].role == Role::length || arguments[i].role == Role::order) return static_cast<int>(i);
    return -1;
}

bool Row::takesOrder() const {
    const int index = sizeArgument();
    return index >= 0 && arguments[static_cast<std::size_t>(index)].role == Role::order;
}

bool Row::hasBuffers() const {
    for (const Argument& argument : arguments)
        if (argument.isBuffer()) return true;
    return false;
}

std::size_t Row::elements(const Argument& buffer, int size) const {
    const std::size_t n = takesOrder() ? std::size_t{1} << size : static_cast<std::size_t>(size);
    switch (buffer.count) {
        case Count::sizePlusTwo: return n + 2;
        case Count::extended: return n > 2 ? 2 * n - 2 : n;
        default: return n;
    }
}

Cells Row::plainCells(int size) const {
    Cells cells(arguments.size());
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const Argument& argument = arguments[i];
        switch (argument.role) {
            case Role::length:
            case Role::order: cells[i].set(size); break;
            case Role::flags: cells[i].set(flags); break;
            case Role::scalar:
                if (argument.type.real == 'f')
                    cells[i].set(VekCplx{0.5f, argument.type.bytes > 4 ? 0.25f : 0.0f});
                else
                    cells[i].set(VekDCplx{0.5, argument.type.bytes > 8 ? 0.25 : 0.0});
                break;
            default: break;
        }
    }
    return cells;
}

std::string Row::expectedReports(const Cells& cells, VekStatus& status) const {
    if (inner.empty()) {
        for (const Check& check : checks) {
            const auto index = static_cast<std::size_t>(check.argument);
            if (!check.holds(arguments[index], cells[index])) continue;
            status = VEK_StsBadArg;
            return reportLine(VEK_StsBadArg, name(), check.message, module);
        }
        return {};
    }
    std::string text;
    for (const std::vector<int>& indices : innerArguments) {
        Cells passed;
        for (const int index : indices) passed.push_back(cells[static_cast<std::size_t>(index)]);
        text += row(inner).expectedReports(passed, status);
    }
    if (status < 0) text += reportLine(VEK_StsBacktrace, name(), "out " + inner, module);
    return text;
}

bool Row::computesBeforeFailing(const Cells& cells) const {
    if (inner.empty()) return false;
    Cells passed;
    for (const int index : innerArguments[0]) passed.push_back(cells[static_cast<std::size_t>(index)]);
    VekStatus status = VEK_StsOk;
    return row(inner).expectedReports(passed, status).empty();
}

Cell Row::expectedFailure(VekStatus status) const {
    Cell cell;
    if (returnsStatus && status < 0) cell.set(Reports::answer(inner.empty() ? status : VEK_StsBacktrace));
    return cell;
}

namespace {

std::vector<Row> table;

#define F(name) Call<&name>::describe(#name)

// The checks of a group, made from its arguments.
using Checks = std::vector<Check> (*)(const std::vector<Argument>& arguments);

void addNulls(std::vector<Check>& checks, const std::vector<Argument>& arguments) {
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (arguments[i].isBuffer())
            checks.push_back({arguments[i].name + "==0", Condition::null, static_cast<int>(i)});
}

void addSize(std::vector<Check>& checks, const std::vector<Argument>& arguments) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const int index = static_cast<int>(i);
        if (arguments[i].role == Role::length)
            checks.push_back({arguments[i].name + "<=0", Condition::notPositive, index});
        if (arguments[i].role == Role::order) {
            checks.push_back({"order<0", Condition::negative, index});
            checks.push_back({"order>31", Condition::above31, index});
        }
    }
}

std::vector<Check> none(const std::vector<Argument>&) { return {}; }

std::vector<Check> sizeThenNulls(const std::vector<Argument>& arguments) {
    std::vector<Check> checks;
    addSize(checks, arguments);
    addNulls(checks, arguments);
    return checks;
}

std::vector<Check> nullsThenSize(const std::vector<Argument>& arguments) {
    std::vector<Check> checks;
    addNulls(checks, arguments);
    addSize(checks, arguments);
    return checks;
}

std::vector<Check> withThreshold(const std::vector<Argument>& arguments, const char* message) {
    std::vector<Check> checks = sizeThenNulls(arguments);
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (arguments[i].name == "thresh") checks.push_back({message, Condition::negativeReal, static_cast<int>(i)});
    return checks;
}
std::vector<Check> floatThreshold(const std::vector<Argument>& arguments) {
    return withThreshold(arguments, "thresh<0.0f");
}
std::vector<Check> doubleThreshold(const std::vector<Argument>& arguments) {
    return withThreshold(arguments, "thresh<0.0");
}

std::vector<Check> divisor(const std::vector<Argument>&) {
    return {{"(b.re==0.0)&&(b.im==0.0)", Condition::zeroComplex, 1}};
}

void addFlags(std::vector<Check>& checks, const std::vector<Argument>& arguments, const char* message,
              Condition condition, int first, int second) {
    checks.push_back({message, condition, static_cast<int>(arguments.size()) - 1, first, second});
}

std::vector<Check> direction(const std::vector<Argument>& arguments) {
    std::vector<Check> checks = sizeThenNulls(arguments);
    addFlags(checks, arguments, "(flags & 1) && (flags & 2)", Condition::bothBits, 1, 2);
    addFlags(checks, arguments, "(flags & 1)==0 && (flags & 2)==0", Condition::neitherBit, 1, 2);
    return checks;
}
std::vector<Check> complexFlags(const std::vector<Argument>& arguments) {
    std::vector<Check> checks = direction(arguments);
    addFlags(checks, arguments, "(flags & 64) && (flags & 128)", Condition::bothBits, 64, 128);
    addFlags(checks, arguments, "(flags & 64) && (flags & 32)", Condition::bothBits, 64, 32);
    addFlags(checks, arguments, "(flags & 32) && (flags & 128)", Condition::bothBits, 32, 128);
    return checks;
}
std::vector<Check> outPacking(const std::vector<Argument>& arguments) {
    std::vector<Check> checks = direction(arguments);
    addFlags(checks, arguments, "(flags & 256) && (flags & 512)", Condition::bothBits, 256, 512);
    addFlags(checks, arguments, "(flags & 256)==0 && (flags & 512)==0", Condition::neitherBit, 256, 512);
    return checks;
}
std::vector<Check> inPacking(const std::vector<Argument>& arguments) {
    std::vector<Check> checks = direction(arguments);
    addFlags(checks, arguments, "(flags & 1024) && (flags & 4096)", Condition::bothBits, 1024, 4096);
    addFlags(checks, arguments, "(flags & 1024)==0 && (flags & 4096)==0", Condition::neitherBit, 1024, 4096);
    return checks;
}

// What a group of rows has in common beyond its checks.
struct Group {
    const char* module;
    Checks checks;
    Gate gate = Gate::computes;
    bool returnsStatus = false;
    int flags = 0;
    const char* noMemory = "";
    bool retriesMemory = false;
};

// `signature` names the arguments in order. Buffers that are written are outputs; after the name, = says that they are
// inputs too, +2 that they hold two elements more than the size, ~ that they hold an extended spectrum.
void add(const Group& group, const std::string& signature, const std::vector<Function>& functions) {
    for (const Function& function : functions) {
        Row made;
        made.function = function;
        made.module = group.module;
        made.gate = group.gate;
        made.returnsStatus = group.returnsStatus;
        made.flags = group.flags;
        made.noMemory = group.noMemory;
        made.retriesMemory = group.retriesMemory;
        std::istringstream words(signature);
        std::string word;
        for (const ArgumentType& type : function.arguments) {
            if (!(words >> word)) std::abort();
            const std::size_t nameEnd = word.find_first_of("=+~");
            const std::string marks = nameEnd == std::string::npos ? "" : word.substr(nameEnd);
            Argument argument = {word.substr(0, nameEnd), Role::other, type};
            const std::string& name = argument.name;
            if (type.pointer && type.bytes != 0 && type.real != 0)
                argument.role = marks.find('=') != std::string::npos ? Role::inOut
                                : type.constant                      ? Role::in
                                                                     : Role::out;
            else if (name == "n" || name == "len" || name == "length")
                argument.role = Role::length;
            else if (name == "order")
                argument.role = Role::order;
            else if (name == "flags")
                argument.role = Role::flags;
            else if (!type.pointer && (type.real == 'f' || type.real == 'd'))
                argument.role = Role::scalar;
            if (marks.find("+2") != std::string::npos) argument.count = Count::sizePlusTwo;
            if (marks.find('~') != std::string::npos) argument.count = Count::extended;
            made.arguments.push_back(argument);
        }
        if (words >> word) std::abort();
        made.checks = group.checks(made.arguments);
        table.push_back(made);
    }
}

// A two-signal member: `inner` takes the arguments of each half of `first` and `second`.
void addTwice(const Group& group, const std::string& signature, const Function& function, const char* inner,
              std::vector<int> first, std::vector<int> second) {
    add(group, signature, {function});
    table.back().inner = inner;
    table.back().innerArguments[0] = std::move(first);
    table.back().innerArguments[1] = std::move(second);
}

void addFrame() {
    const Group frame = {"", none, Gate::always};
    add(frame, "status name message file line",
        {F(vekError), F(vekStdErrReport), F(vekNulDevReport), F(vekGuiBoxReport)});
    add(frame, "status", {F(vekErrorStr), F(vekSetErrStatus)});
    add(frame, "mode", {F(vekSetErrMode)});
    add(frame, "handler", {F(vekRedirectError)});
    add(frame, "", {F(vekGetErrStatus), F(vekGetErrMode), F(vekGetLibVersion)});
    add(frame, "count",
        {F(vekMalloc), F(veksMalloc), F(vekdMalloc), F(vekcMalloc), F(vekzMalloc), F(vekwMalloc), F(vekvMalloc),
         F(vekiMalloc), F(vekjMalloc)});
    add(frame, "block", {F(vekFree)});
}

void addArith() {
    const Group arith = {"vekarith", sizeThenNulls};
    add(arith, "dst n", {F(veksbZero), F(vekdbZero), F(vekcbZero), F(vekzbZero)});
    add(arith, "val dst n", {F(veksbSet), F(vekdbSet), F(vekcbSet), F(vekzbSet)});
    add(arith, "src dst n", {F(veksbCopy), F(vekdbCopy), F(vekcbCopy), F(vekzbCopy)});
    add(arith, "val dst= n", {F(veksbAdd1), F(vekdbAdd1), F(vekcbAdd1), F(vekzbAdd1)});
    add(arith, "val dst= n", {F(veksbSub1), F(vekdbSub1), F(vekcbSub1), F(vekzbSub1)});
    add(arith, "val dst= n", {F(veksbMpy1), F(vekdbMpy1), F(vekcbMpy1), F(vekzbMpy1)});
    add(arith, "src dst= n", {F(veksbAdd2), F(vekdbAdd2), F(vekcbAdd2), F(vekzbAdd2)});
    add(arith, "val dst= n", {F(veksbSub2), F(vekdbSub2), F(vekcbSub2), F(vekzbSub2)});
    add(arith, "src dst= n", {F(veksbMpy2), F(vekdbMpy2), F(vekcbMpy2), F(vekzbMpy2)});
    add(arith, "srcA srcB dst n", {F(veksbAdd3), F(vekdbAdd3), F(vekcbAdd3), F(vekzbAdd3)});
    add(arith, "src val dst n", {F(veksbSub3), F(vekdbSub3), F(vekcbSub3), F(vekzbSub3)});
    add(arith, "srcA srcB dst n", {F(veksbMpy3), F(vekdbMpy3), F(vekcbMpy3), F(vekzbMpy3)});
    add(arith, "vec= n", {F(vekcbConj1), F(vekzbConj1)});
    add(arith, "src dst n", {F(vekcbConj2), F(vekzbConj2), F(vekcbConjFlip2), F(vekzbConjFlip2)});
    add(arith, "vec=~ n", {F(vekcbConjExtend1), F(vekzbConjExtend1)});
    add(arith, "src dst~ n", {F(vekcbConjExtend2), F(vekzbConjExtend2)});

    const Group one = {"vekarith", none};
    add(one, "a b", {F(vekcAdd), F(vekzAdd), F(vekcSub), F(vekzSub), F(vekcMpy), F(vekzMpy)});
    add({"vekarith", divisor}, "a b", {F(vekcDiv), F(vekzDiv)});
    add(one, "a", {F(vekcConj), F(vekzConj)});
    add(one, "re im", {F(vekcSet), F(vekzSet)});
}

void addVec() {
    Group vec = {"vekvec", sizeThenNulls, Gate::computes, true};
    add(vec, "vec= len",
        {F(veksbSqr1), F(vekdbSqr1), F(vekcbSqr1), F(vekzbSqr1), F(veksbSqrt1), F(vekdbSqrt1), F(vekcbSqrt1),
         F(vekzbSqrt1), F(veksbAbs1), F(vekdbAbs1)});
    add(vec, "src dst len",
        {F(veksbSqr2), F(vekdbSqr2), F(vekcbSqr2), F(vekzbSqr2), F(veksbSqrt2), F(vekdbSqrt2), F(vekcbSqrt2),
         F(vekzbSqrt2), F(veksbAbs2), F(vekdbAbs2)});
    add(vec, "vec= len thresh relOp", {F(veksbThresh1), F(vekdbThresh1)});
    add(vec, "src dst len thresh relOp", {F(veksbThresh2), F(vekdbThresh2)});
    vec.checks = floatThreshold;
    add(vec, "vec= len thresh relOp", {F(vekcbThresh1)});
    add(vec, "src dst len thresh relOp", {F(vekcbThresh2)});
    add(vec, "vec= len thresh", {F(veksbInvThresh1), F(vekcbInvThresh1)});
    add(vec, "src dst len thresh", {F(veksbInvThresh2), F(vekcbInvThresh2), F(vekzbInvThresh2)});
    vec.checks = doubleThreshold;
    add(vec, "vec= len thresh relOp", {F(vekzbThresh1)});
    add(vec, "src dst len thresh relOp", {F(vekzbThresh2)});
    add(vec, "vec= len thresh", {F(vekdbInvThresh1), F(vekzbInvThresh1)});
    add(vec, "src dst len thresh", {F(vekdbInvThresh2)});
}

void addTables() {
    Group misc = {"vekmisc", nullsThenSize};
    add(misc, "value order", {F(vekBitRev)});
    add(misc, "tbl order", {F(vekCalcBitRevTbl)});
    misc.noMemory = "NULL Pointer";
    add(misc, "order", {F(vekGetBitRevTbl)});
    add(misc, "vec= order",
        {F(veksbBitRev1), F(vekdbBitRev1), F(vekcbBitRev1), F(vekzbBitRev1), F(vekwbBitRev1), F(vekvbBitRev1)});
    add(misc, "src dst order",
        {F(veksbBitRev2), F(vekdbBitRev2), F(vekcbBitRev2), F(vekzbBitRev2), F(vekwbBitRev2), F(vekvbBitRev2)});

    Group twd = {"vektwd", nullsThenSize};
    add(twd, "tbl length", {F(vekcCalcDftTwdTbl), F(vekzCalcDftTwdTbl), F(vekvCalcDftTwdTbl)});
    add(twd, "tbl order", {F(vekcCalcFftTwdTbl), F(vekzCalcFftTwdTbl), F(vekvCalcFftTwdTbl)});
    twd.noMemory = "NULL Pointer";
    add(twd, "length", {F(vekcGetDftTwdTbl), F(vekzGetDftTwdTbl), F(vekvGetDftTwdTbl)});
    add(twd, "order", {F(vekcGetFftTwdTbl), F(vekzGetFftTwdTbl), F(vekvGetFftTwdTbl)});

    add({"", none, Gate::always}, "",
        {F(vekFreeBitRevTbls), F(vekcFreeTwdTbls), F(vekzFreeTwdTbls), F(vekvFreeTwdTbls)});
}

// The exports of both precisions stand in modules of their own.
struct Transforms {
    const char* module;
    Function fft, fftNip, rFft, rFftNip;
    Function realFft, realFftNip, realFftl, realFftlNip, ccsFft, ccsFftNip, ccsFftl, ccsFftlNip;
    Function real2Fft, real2FftNip, ccs2Fft, ccs2FftNip;
    Function mpyRCPack2, mpyRCPack3, mpyRCPerm2, mpyRCPerm3;
};

void addTransforms(const Transforms& of) {
    const auto group = [&](Checks checks, int flags) {
        return Group{of.module, checks, Gate::computes, false, flags, "No working Twd memory", true};
    };
    const Group complex = group(complexFlags, VEK_Forw);
    add(complex, "samps= order flags", {of.fft});
    add(complex, "inSamps outSamps order flags", {of.fftNip});
    add(complex, "reSamps= imSamps= order flags", {of.rFft});
    add(complex, "reInSamps imInSamps reOutSamps imOutSamps order flags", {of.rFftNip});

    const Group forward = group(direction, VEK_Forw);
    const Group inverse = group(direction, VEK_Inv);
    add(forward, "samps=+2 order flags", {of.realFft});
    add(forward, "inSamps outSamps+2 order flags", {of.realFftNip});
    add(inverse, "samps=+2 order flags", {of.ccsFft});
    add(inverse, "inSamps+2 outSamps order flags", {of.ccsFftNip});
    const Group forwardPacked = group(outPacking, VEK_Forw | VEK_OutRCPack);
    const Group inversePacked = group(inPacking, VEK_Inv | VEK_InRCPack);
    add(forwardPacked, "samps= order flags", {of.realFftl});
    add(forwardPacked, "inSamps outSamps order flags", {of.realFftlNip});
    add(inversePacked, "samps= order flags", {of.ccsFftl});
    add(inversePacked, "inSamps outSamps order flags", {of.ccsFftlNip});

    const auto twice = [&](int flags) {
        Group made = group(direction, flags);
        made.returnsStatus = true;
        return made;
    };
    addTwice(twice(VEK_Forw), "samps1=+2 samps2=+2 order flags", of.real2Fft, of.realFft.name, {0, 2, 3}, {1, 2, 3});
    addTwice(twice(VEK_Forw), "in1 in2 out1+2 out2+2 order flags", of.real2FftNip, of.realFftNip.name, {0, 2, 4, 5},
             {1, 3, 4, 5});
    addTwice(twice(VEK_Inv), "samps1=+2 samps2=+2 order flags", of.ccs2Fft, of.ccsFft.name, {0, 2, 3}, {1, 2, 3});
    addTwice(twice(VEK_Inv), "in1+2 in2+2 out1 out2 order flags", of.ccs2FftNip, of.ccsFftNip.name, {0, 2, 4, 5},
             {1, 3, 4, 5});

    const Group products = {of.module, sizeThenNulls};
    add(products, "src dst= order", {of.mpyRCPack2, of.mpyRCPerm2});
    add(products, "srcA srcB dst order", {of.mpyRCPack3, of.mpyRCPerm3});
}

void addFft() {
    addTransforms({"vekffts",        F(vekcFft),        F(vekcFftNip),     F(vekcrFft),        F(vekcrFftNip),
                   F(veksRealFft),   F(veksRealFftNip), F(veksRealFftl),   F(veksRealFftlNip), F(veksCcsFft),
                   F(veksCcsFftNip), F(veksCcsFftl),    F(veksCcsFftlNip), F(veksReal2Fft),    F(veksReal2FftNip),
                   F(veksCcs2Fft),   F(veksCcs2FftNip), F(veksMpyRCPack2), F(veksMpyRCPack3),  F(veksMpyRCPerm2),
                   F(veksMpyRCPerm3)});
    addTransforms({"vekfftd",        F(vekzFft),        F(vekzFftNip),     F(vekzrFft),        F(vekzrFftNip),
                   F(vekdRealFft),   F(vekdRealFftNip), F(vekdRealFftl),   F(vekdRealFftlNip), F(vekdCcsFft),
                   F(vekdCcsFftNip), F(vekdCcsFftl),    F(vekdCcsFftlNip), F(vekdReal2Fft),    F(vekdReal2FftNip),
                   F(vekdCcs2Fft),   F(vekdCcs2FftNip), F(vekdMpyRCPack2), F(vekdMpyRCPack3),  F(vekdMpyRCPerm2),
                   F(vekdMpyRCPerm3)});
}

#undef F

}   // namespace

const std::vector<Row>& rows() {
    if (table.empty()) {
        addFrame();
        addArith();
        addVec();
        addTables();
        addFft();
    }
    return table;
}

const Row& row(const std::string& name) {
    for (const Row& candidate : rows())
        if (candidate.name() == name) return candidate;
    std::abort();
}

std::vector<std::string> rowNames(bool (*wanted)(const Row& row)) {
    std::vector<std::string> names;
    for (const Row& candidate : rows())
        if (wanted(candidate)) names.push_back(candidate.name());
    return names;
}

std::vector<std::string> rowNames() {
    return rowNames([](const Row&) { return true; });
}

}   // namespace test
