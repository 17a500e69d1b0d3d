// Status, modes, handlers: their rules, and what the library's own handlers show, byte for byte.
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

#include <gtest/gtest.h>

#include "support/heap.h"
#include "support/os.h"
#include "support/reports.h"

#ifdef _WIN32
#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#else
#include <pthread.h>
#endif

namespace {

using namespace test;

TEST(Status, Texts) {
    const std::string unknown = "Unknown error or status code";
    std::string texts;
    for (int status = 0; status >= -8; --status) texts += std::string(vekErrorStr(status)) + "\n";
    EXPECT_EQ(texts, "No Error\nBacktrace\n" + unknown +
                         "\nInternal error (bad state)\nOut of memory\nBad argument\nUnsupported function\n"
                         "Iteration convergence failed\nAutotrace call\n");
    for (const int status : {-9, -10, -11, -12, -13, 1, INT_MAX, INT_MIN}) EXPECT_EQ(vekErrorStr(status), unknown);
}

static_assert(VEK_StsOk == 0 && VEK_StsBacktrace == -1 && VEK_StsBadState == -3 && VEK_StsNoMemory == -4 &&
              VEK_StsBadArg == -5 && VEK_StsUnsupported == -6 && VEK_StsNoConvergence == -7 && VEK_StsAutotrace == -8 &&
              VEK_StsNullPtr == -9 && VEK_StsBadLen == -10 && VEK_StsBadFreq == -11 && VEK_StsBadFreqRange == -12);

TEST(Error, StoresAndHandsOn) {
    const struct {
        VekStatus before, status, after;
    } cases[] = {{0, -5, -5}, {-5, -4, -4}, {-5, 0, 0},  {-5, -1, -5}, {-4, -8, -4},
                 {0, -1, 0},  {0, -2, -2},  {0, 77, 77}, {-5, 77, 77}, {-7, -7, -7}};
    int line = -2;
    for (const auto& of : cases) {
        Reports reports;
        vekSetErrStatus(of.before);
        ++line;
        const bool null = line % 2 != 0, reported = of.status != VEK_StsOk;
        const VekStatus result = vekError(of.status, "name", null ? nullptr : "%s", null ? nullptr : "", line);
        EXPECT_EQ(vekGetErrStatus(), of.after) << of.status;
        EXPECT_EQ(result, reported ? Reports::answer(of.status) : VEK_StsOk) << of.status;
        const std::string wanted = reportLine(of.status, "name", null ? "(null)" : "%s", null ? "(null)" : "");
        EXPECT_EQ(reports.text(), reported ? wanted : "") << of.status;
        for (const Report& report : reports.seen()) EXPECT_EQ(report.line, line);
    }
}

// ---- The library's handlers, in child processes -------------------------------------------------------------------

constexpr int returned = 40;   // the child's code when it comes to its end
const char* typedNow = nullptr;

void say(const std::string& text) {
    std::fputs(text.c_str(), stderr);
    std::fflush(stderr);
}

#ifdef _WIN32

// Instead of windows: what the prompt of other systems writes and reads.
int WINAPI askedBox(HWND owner, const char* body, const char* caption, UINT flags) {
    const bool asksYesNo = flags == (MB_YESNO | MB_SYSTEMMODAL);
    const bool asksOk = flags == (MB_OKCANCEL | MB_SYSTEMMODAL) && owner == nullptr;
    say(std::string(caption) + "\n" + body + (asksYesNo ? "\n[Yes/No] " : asksOk ? "\n[OK/Cancel] " : "\nother flags"));
    if (typedNow == nullptr) say("\n");
    const char letter = typedNow != nullptr ? typedNow[std::strspn(typedNow, " ")] : 0;
    if (asksYesNo) return letter == 'n' || letter == 'N' ? IDNO : IDYES;
    return letter == 'c' || letter == 'C' ? IDCANCEL : IDOK;
}
// Comes back, as where a debugger lets it.
void WINAPI endingBox(UINT action, const char* text) { say(action == 0 ? text + std::string("\n") : "other action"); }

void askHere() {
    _setmode(2, _O_BINARY);
    static decltype(&MessageBoxA) box;
    static decltype(&FatalAppExitA) ending;
    if (!reroute("MessageBoxA", askedBox, &box) || !reroute("FatalAppExitA", endingBox, &ending)) std::_Exit(99);
}

#else
void askHere() {}
#endif

// Reports as the two handlers show them. The box's caption is of the thread's status.
const struct {
    VekStatus status;
    const char *name, *message, *file;
    int line;
    const char* printed;
    VekStatus thread;
    const char* boxed;
} reported[] = {
    {-5, "veksbAdd3", "n<=0", "vekarith", 42,
     "\nZTL Library Error: Bad argument \n\tin function [vekarith:42]:veksbAdd3(): n<=0\n", -5,
     "ZTL Library Error: Bad argument\nin function [vekarith:42]:veksbAdd3():\n n<=0"},
    {-1, "veksConv", nullptr, "vekconvs", 9, "\tcalled from [vekconvs:9]:veksConv\n", -4,
     "ZTL Library Error: Out of memory\ncalled from [vekconvs:9]:veksConv():\n "},
    {-8, "f", "1, 2", nullptr, -3, "\tcalled from:f(1, 2)\n", 0,
     "ZTL Library Error: No Error\ncalled from [:0]:\n f(1, 2)"},
    {-4, "f", nullptr, nullptr, 7, "\nZTL Library Error: Out of memory \n\tin function [:7]:f\n", -9,
     "ZTL Library Error: Unknown error or status code\nin function [:7]:f():\n "},
    {-9, nullptr, "%s%n", "", 0,
     "\nZTL Library Error: Unknown error or status code \n\tin function [:0]:<unknown>(): %s%n\n", -3,
     "ZTL Library Error: Internal error (bad state)\nin function [:0]:<unknown>():\n %s%n"},
    {-1, "f", "out g", "m", -9, "\tcalled from [m:-9]:f(): out g\n", -6,
     "ZTL Library Error: Unsupported function\ncalled from [m:0]:f():\n out g"},
    {-8, nullptr, nullptr, nullptr, 0, "\tcalled from:<unknown>\n", -7,
     "ZTL Library Error: Iteration convergence failed\ncalled from [:0]:\n <unknown>()"},
};
constexpr int reportCount = std::size(reported);

const std::string leaf = "\n\nErrMode=VEK_ErrorModeLeaf\n\nTerminate the application?\n[Yes/No] ";
const std::string parent = "\n\nErrMode=VEK_ErrorModeParent\n\nContinue?\n[OK/Cancel] ";
const std::string byBox = "ZTL Library:\nterminating the application\n";

// How each of the reports goes: what the handler shows, and whether it ends the process.
constexpr int nothing = 0, printed = 1, boxed = 2;
const struct {
    VekErrorHandler handler;   // null: what null installs
    int mode;
    const char* typed;
    int shown;
    std::string after;
    bool ends = false;
} runs[] = {
    {vekStdErrReport, VEK_ErrModeParent, nullptr, printed, ""},
    {vekStdErrReport, VEK_ErrModeSilent, nullptr, nothing, ""},
    {vekStdErrReport, 3, nullptr, printed, ""},
    {vekStdErrReport, VEK_ErrModeLeaf, nullptr, printed,
     "ZTL Library Error\nErrMode=VEK_ErrModeLeaf\nterminating the application<exit handlers>", true},
    {vekNulDevReport, VEK_ErrModeParent, nullptr, nothing, ""},
    {vekNulDevReport, VEK_ErrModeSilent, nullptr, nothing, ""},
    {vekNulDevReport, VEK_ErrModeLeaf, nullptr, nothing, "<exit handlers>", true},
    {vekGuiBoxReport, VEK_ErrModeSilent, "y\n", nothing, ""},
    {nullptr, 3, "y\n", nothing, ""},
    {nullptr, -1, "c\n", nothing, ""},
    {vekGuiBoxReport, VEK_ErrModeLeaf, "n\n", boxed, leaf},
    {nullptr, VEK_ErrModeLeaf, " No\n", boxed, leaf},
    {vekGuiBoxReport, VEK_ErrModeLeaf, "y\n", boxed, leaf + byBox, true},
    {nullptr, VEK_ErrModeLeaf, "Yes\n", boxed, leaf + byBox, true},
    {vekGuiBoxReport, VEK_ErrModeParent, "o\n", boxed, parent},
    {nullptr, VEK_ErrModeParent, " OK\n", boxed, parent},
    {vekGuiBoxReport, VEK_ErrModeParent, "c\n", boxed, parent + byBox, true},
    {nullptr, VEK_ErrModeParent, "Cancel\n", boxed, parent + byBox, true},
    // Nobody is there: a user who cannot go on, and one who can.
    {nullptr, VEK_ErrModeLeaf, nullptr, boxed, leaf + "\n" + byBox, true},
    {nullptr, VEK_ErrModeParent, nullptr, boxed, parent + "\n"},
};

// handler RUN FIRST: the reports from that one on.
int handlerChild(const std::vector<std::string>& words) {
    const auto& run = runs[std::stoi(words[1])];
    typedNow = run.typed;
    askHere();
    std::atexit([] { say("<exit handlers>"); });
    vekSetErrMode(run.mode);
    vekRedirectError(vekNulDevReport);
    vekRedirectError(run.handler);
    const VekErrorHandler handler = vekRedirectError(nullptr);
    for (int i = std::stoi(words[2]); i < reportCount; ++i) {
        const auto& of = reported[i];
        vekSetErrStatus(of.thread);
        say("<" + std::to_string(handler(of.status, of.name, of.message, of.file, of.line)) + ">");
    }
    std::_Exit(returned);
}
const RegisterChild registerHandler("handler", handlerChild);

TEST(Handlers, TextsPromptsAndEnds) {
    for (const auto& run : runs) {
        const int number = static_cast<int>(&run - runs);
        // One that ends the process shows one report.
        for (int first = 0; first < (run.ends ? reportCount : 1); ++first) {
            std::string wanted, typed;
            for (int i = first; i < reportCount; ++i) {
                const auto& of = reported[i];
                if (run.typed != nullptr) typed += run.typed;   // more than is asked for: nothing waits
                if (run.ends && i > first) continue;
                if (run.shown != nothing) wanted += run.shown == printed ? of.printed : of.boxed;
                wanted += run.after + (run.ends ? "" : "<" + std::to_string(of.status) + ">");
            }
            const Ended ended = runSelf({"handler", std::to_string(number), std::to_string(first)},
                                        run.typed != nullptr ? typed.c_str() : nullptr);
            EXPECT_EQ(ended.errors, wanted) << "run " << number;
            EXPECT_EQ(ended.code, run.ends ? 1 : returned) << "run " << number << " report " << first;
        }
    }
}

// ---- Contexts -------------------------------------------------------------------------------------------------------

constexpr char noContext[] = "VEKlib. Problem to allocate memory for TLS VEK context.\n";

// A thread for whose context there is no memory, neither when it starts nor when it calls.
int unmadeChild(const std::vector<std::string>&) {
    askHere();
    heap::failEverywhere(true);
    std::thread([] { say("<" + std::to_string(vekGetErrStatus()) + ">"); }).join();
    std::_Exit(returned);
}
const RegisterChild registerUnmade("unmade", unmadeChild);

TEST(Context, EndsTheProcessWithoutMemory) {
    if (!heap::available()) GTEST_SKIP();
    const Ended ended = runSelf({"unmade"});
    EXPECT_EQ(ended.code, 1);
    EXPECT_EQ(ended.errors, noContext);
}

#if !defined(_WIN32) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)

// What a program does before the library's constructors, in the children of these names.
void beforeConstructors(int count, char** words, char**) {
    if (count < 3) return;
    if (std::strcmp(words[2], "early") == 0) vekSetErrMode(77);
    if (std::strcmp(words[2], "keys") != 0) return;
    pthread_key_t key;
    while (pthread_key_create(&key, nullptr) == 0) continue;
    vekGetErrMode();
}
[[gnu::section(".preinit_array"), gnu::used]] void (*const preinit)(int, char**, char**) = beforeConstructors;

const RegisterChild registerEarly("early", [](const std::vector<std::string>&) { return vekGetErrMode(); });

TEST(Context, OutlivesTheAttachmentThatItIsOlderThan) { EXPECT_EQ(runSelf({"early"}).code, 77); }

TEST(Context, EndsTheProcessWithoutAKey) {
    const Ended ended = runSelf({"keys"});
    EXPECT_EQ(ended.code, 1);
    EXPECT_EQ(ended.errors, noContext);
}

#endif

}   // namespace
