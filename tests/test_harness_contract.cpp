// The calling contract of the 32-bit DLL: entered with the stack at any multiple of 4, every export returns with the
// registers that belong to its caller, the x87 and SSE control words and the direction flag as they were.
#include <gtest/gtest.h>

#if defined(__i386__) && defined(VEK_TEST_DLL)

#include "support/prepared.h"
#include "support/reports.h"

extern "C" {

struct TestMachine {
    std::uint32_t ebx, esi, edi, ebp, esp, wantedEsp, flags, mxcsr, eaxEdx[2];
    std::uint16_t x87[14];   // as fnstenv stores it: control word, -, status, -, tags, ...
    unsigned char st0[12];   // the result of functions that return float or double
};
TestMachine testMachine;
std::uint32_t testSavedEbp, testSavedEsp;
std::uint16_t testSavedControl;
std::uint32_t testSavedMxcsr, testReturnsInSt0;

// Calls with the argument words on the stack, which at the callee's first instruction stands at `phase` modulo 16.
void testEnter(void* function, const std::uint32_t* words, std::uint32_t count, std::uint32_t phase);
}

asm(R"(
    .text
    .globl _testEnter
_testEnter:
    pushl %ebp
    movl %esp, %ebp
    pushl %ebx
    pushl %esi
    pushl %edi
    movl %esp, _testSavedEsp
    movl %ebp, _testSavedEbp
    fnstcw _testSavedControl
    stmxcsr _testSavedMxcsr

    leal -512(%esp), %eax
    andl $-16, %eax
    addl 20(%ebp), %eax
    leal 4(%eax), %edi
    movl 12(%ebp), %esi
    movl 16(%ebp), %ecx
    leal (%edi,%ecx,4), %edx
    movl %edx, _testMachine+20
    movl 8(%ebp), %edx
    cld
    rep movsl
    leal 4(%eax), %esp

    pushl $0x027f
    fldcw (%esp)
    movl $0x9fc0, (%esp)
    ldmxcsr (%esp)
    addl $4, %esp
    movl $0x11111111, %ebx
    movl $0x22222222, %esi
    movl $0x33333333, %edi
    movl $0x44444444, %ebp
    call *%edx

    movl %ebx, _testMachine
    movl %esi, _testMachine+4
    movl %edi, _testMachine+8
    movl %ebp, _testMachine+12
    movl %esp, _testMachine+16
    movl %eax, _testMachine+32
    movl %edx, _testMachine+36
    movl _testSavedEsp, %esp
    pushfl
    popl _testMachine+24
    cld
    stmxcsr _testMachine+28
    cmpl $0, _testReturnsInSt0
    je 1f
    fstpt _testMachine+68
1:  fnstenv _testMachine+40
    fninit
    fldcw _testSavedControl
    ldmxcsr _testSavedMxcsr
    movl _testSavedEbp, %ebp
    popl %edi
    popl %esi
    popl %ebx
    popl %ebp
    ret
)");

namespace {

using namespace test;

void pushWords(std::vector<std::uint32_t>& words, const void* bytes, std::size_t size) {
    const std::size_t first = words.size();
    words.resize(first + (size + 3) / 4);
    std::memcpy(words.data() + first, bytes, size);
}

// As Function::call, through testEnter.
Cell enter(const Row& tested, const Cells& cells, std::uint32_t phase) {
    Cell result;
    const ArgumentType& type = tested.function.result;
    std::vector<std::uint32_t> words;
    const void* hidden = result.bytes;   // where a result goes that two registers cannot hold
    const bool inMemory = type.bytes > 8;
    if (inMemory) pushWords(words, &hidden, sizeof hidden);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const ArgumentType& argument = tested.arguments[i].type;
        pushWords(words, cells[i].bytes, argument.pointer ? 4 : argument.bytes);
    }
    testReturnsInSt0 = !type.pointer && (type.letter == 's' || type.letter == 'd');
    testEnter(reinterpret_cast<void*>(tested.function.address), words.data(), static_cast<std::uint32_t>(words.size()),
              phase);
    long double value = 0;
    std::memcpy(&value, testMachine.st0, 10);
    if (testReturnsInSt0 != 0)
        type.letter == 's' ? result.set(static_cast<float>(value)) : result.set(static_cast<double>(value));
    else if (!inMemory)
        std::memcpy(result.bytes, testMachine.eaxEdx, type.bytes);
    return result;
}

class Contract : public testing::TestWithParam<std::string> {
protected:
    const Row& tested = row(GetParam());

    // The call, and the path of a report, which calls the handler, at each phase of the stack.
    template <class Call>
    void atEachPhase(const std::string& what, Call call) {
        for (const std::uint32_t phase : {0u, 4u, 8u, 12u}) {
            SCOPED_TRACE(what + " phase " + std::to_string(phase));
            Reports reports;
            call(phase, reports);
            const TestMachine& now = testMachine;
            EXPECT_TRUE(now.ebx == 0x11111111 && now.esi == 0x22222222 && now.edi == 0x33333333) << "registers";
            EXPECT_TRUE(now.ebp == 0x44444444 && now.esp == now.wantedEsp) << "stack";
            EXPECT_TRUE((now.flags & 0x400) == 0 && (now.mxcsr & 0xffc0) == 0x9fc0) << "direction flag, MXCSR";
            EXPECT_TRUE(now.x87[0] == 0x027f && now.x87[4] == 0xffff) << "x87 control word, tags";
        }
    }
};

TEST_P(Contract, Computing) {
    for (const int size : {1, 3, 6, 9}) {
        atEachPhase("size " + std::to_string(size), [&](std::uint32_t phase, const Reports&) {
            vekSetErrMode(VEK_ErrModeSilent);
            const Prepared direct(tested, size);
            const Cell wanted = direct.call();
            vekSetErrMode(VEK_ErrModeSilent);
            const Prepared prepared(tested, size);
            const Cell got = enter(tested, prepared.cells, phase);
            vekSetErrMode(VEK_ErrModeLeaf);
            EXPECT_EQ(prepared.damage(), "");
            EXPECT_TRUE(prepared.outputs() == direct.outputs());
            if (GetParam().find("Malloc") != std::string::npos) {
                vekFree(wanted.get<void*>());
                vekFree(got.get<void*>());
            } else if (GetParam() != "vekRedirectError") {   // whose result is the handler before
                EXPECT_TRUE(got == wanted);
            }
        });
    }
}

TEST_P(Contract, Reporting) {
    if (tested.checks.empty()) return;
    atEachPhase("", [&](std::uint32_t phase, const Reports& reports) {
        Prepared prepared(tested, 3);
        test::apply(wrongs(tested, prepared.cells)[0].ways[0], prepared.cells);
        VekStatus status = VEK_StsOk;
        const std::string wanted = tested.expectedReports(prepared.cells, status);
        enter(tested, prepared.cells, phase);
        EXPECT_EQ(reports.text(), wanted);
    });
}

INSTANTIATE_TEST_SUITE_P(Export, Contract, testing::ValuesIn(rowNames([](const Row&) { return true; })),
                         [](const auto& info) { return info.param; });

}   // namespace

#endif
