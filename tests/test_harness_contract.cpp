// The calling contract of the 32-bit DLL: entered with the stack at any multiple of 4, every export returns with the
// registers that belong to its caller, the x87 and SSE control words and the direction flag as they were.
#include <gtest/gtest.h>

#if defined(__i386__) && defined(VEK_TEST_DLL)

#include "support/prepared.h"
#include "support/reports.h"

extern "C" {

// What a call left, as pushfl and pushal store it; where the stack ended, and was to end.
struct TestMachine {
    std::uint32_t edi, esi, ebp, unused, ebx, edx, ecx, eax, flags;
} testMachine;
std::uint32_t testEsp, testWantedEsp, testOldEsp;
// As fxsave stores it: the x87 control word at 0, the registers in use at 4, MXCSR at 24, st(0) at 32.
alignas(16) unsigned char testFloats[512], testOldFloats[512];
std::uint16_t testControl = 0x027f;
std::uint32_t testMxcsr = 0x9fc0;

// Calls with the argument words on the stack, which at the callee's first instruction stands at `phase` modulo 16.
void testEnter(void* function, const std::uint32_t* words, std::uint32_t count, std::uint32_t phase);
}

asm(R"(
    .text
    .globl _testEnter
_testEnter:
    pushal
    movl %esp, _testOldEsp
    fxsave _testOldFloats
    movl 36(%esp), %edx
    movl 40(%esp), %esi
    movl 44(%esp), %ecx
    movl 48(%esp), %eax
    subl $512, %esp
    andl $-16, %esp
    leal 4(%esp,%eax), %edi
    movl %edi, %esp
    leal (%edi,%ecx,4), %eax
    movl %eax, _testWantedEsp
    rep movsl
    fldcw _testControl
    ldmxcsr _testMxcsr
    movl $0x11111111, %ebx
    movl $0x22222222, %esi
    movl $0x33333333, %edi
    movl $0x44444444, %ebp
    call *%edx
    movl %esp, _testEsp
    movl $_testMachine+36, %esp
    pushfl
    pushal
    cld
    fxsave _testFloats
    movl _testOldEsp, %esp
    fxrstor _testOldFloats
    popal
    ret
)");

namespace {

using namespace test;

bool returnsInSt0(const ArgumentType& type) { return !type.pointer && (type.letter == 's' || type.letter == 'd'); }

// As Function::call, through testEnter.
Cell enter(const Row& tested, const Cells& cells, std::uint32_t phase) {
    Cell result;
    std::uint32_t words[64], count = 0;
    const auto push = [&](const void* bytes, std::size_t size) {
        std::memcpy(words + count, bytes, size);
        count += static_cast<std::uint32_t>(size + 3) / 4;
    };
    const ArgumentType& type = tested.function.result;
    const void* hidden = result.bytes;   // where a result goes that two registers cannot hold
    const bool inMemory = type.bytes > 8;
    if (inMemory) push(&hidden, sizeof hidden);
    for (std::size_t i = 0; i < cells.size(); ++i)
        push(cells[i].bytes, tested.arguments[i].type.pointer ? 4 : tested.arguments[i].type.bytes);
    testEnter(reinterpret_cast<void*>(tested.function.address), words, count, phase);
    const std::uint32_t both[] = {testMachine.eax, testMachine.edx};
    long double value = 0;
    std::memcpy(&value, testFloats + 32, 10);
    if (returnsInSt0(type))
        type.letter == 's' ? result.set(static_cast<float>(value)) : result.set(static_cast<double>(value));
    else if (!inMemory)
        std::memcpy(result.bytes, both, type.bytes);
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
            EXPECT_TRUE(now.ebp == 0x44444444 && testEsp == testWantedEsp) << "stack";
            EXPECT_EQ(now.flags & 0x400, 0u) << "direction flag";
            EXPECT_EQ(std::memcmp(testFloats, &testControl, 2), 0) << "x87 control word";
            EXPECT_EQ(testFloats[4], returnsInSt0(tested.function.result) ? 0x80 : 0) << "x87 registers";
            EXPECT_TRUE((testFloats[24] & 0xc0) == 0xc0 && testFloats[25] == 0x9f) << "MXCSR";
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
