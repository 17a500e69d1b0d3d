// Status, modes, handlers: their rules, and the library's own handlers byte for byte from outside.
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <gtest/gtest.h>

#include "support/heap.h"
#include "support/os.h"
#include "support/reports.h"

#include <thread>

#ifdef _WIN32
#include <atomic>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>

#include <fcntl.h>
#include <io.h>
#else
#include <pthread.h>
#endif

namespace {

using namespace test;

constexpr const char* unknown = "Unknown error or status code";

TEST(Status, Texts) {
    const struct {
        VekStatus status;
        const char* text;
    } cases[] = {
        {0, "No Error"},
        {-1, "Backtrace"},
        {-2, unknown},
        {-3, "Internal error (bad state)"},
        {-4, "Out of memory"},
        {-5, "Bad argument"},
        {-6, "Unsupported function"},
        {-7, "Iteration convergence failed"},
        {-8, "Autotrace call"},
        {-9, unknown},
        {-10, unknown},
        {-11, unknown},
        {-12, unknown},
        {-13, unknown},
        {1, unknown},
        {2147483647, unknown},
        {-2147483647 - 1, unknown},
    };
    for (const auto& of : cases) EXPECT_STREQ(vekErrorStr(of.status), of.text) << of.status;
}

TEST(Status, Codes) {
    const int codes[] = {VEK_StsOk,      VEK_StsBacktrace,   VEK_StsBadState,      VEK_StsNoMemory,
                         VEK_StsBadArg,  VEK_StsUnsupported, VEK_StsNoConvergence, VEK_StsAutotrace,
                         VEK_StsNullPtr, VEK_StsBadLen,      VEK_StsBadFreq,       VEK_StsBadFreqRange};
    const int values[] = {0, -1, -3, -4, -5, -6, -7, -8, -9, -10, -11, -12};
    for (std::size_t i = 0; i < std::size(codes); ++i) EXPECT_EQ(codes[i], values[i]);
}

TEST(Error, StoresAndHandsOn) {
    const struct {
        VekStatus before, status, after;
        bool handled;
    } cases[] = {
        {0, VEK_StsBadArg, VEK_StsBadArg, true},
        {VEK_StsBadArg, VEK_StsNoMemory, VEK_StsNoMemory, true},
        {VEK_StsBadArg, VEK_StsOk, VEK_StsOk, false},
        {VEK_StsBadArg, VEK_StsBacktrace, VEK_StsBadArg, true},
        {VEK_StsNoMemory, VEK_StsAutotrace, VEK_StsNoMemory, true},
        {0, VEK_StsBacktrace, 0, true},
        {0, -2, -2, true},
        {0, 77, 77, true},
    };
    Reports reports;
    for (const auto& of : cases) {
        reports.clear();
        vekSetErrStatus(of.before);
        const VekStatus result = vekError(of.status, "name", "message", "file", 12);
        EXPECT_EQ(result, of.handled ? Reports::answer(of.status) : VEK_StsOk) << of.status;
        EXPECT_EQ(vekGetErrStatus(), of.after) << of.status;
        EXPECT_EQ(reports.text(), of.handled ? reportLine(of.status, "name", "message", "file") : "") << of.status;
    }
}

// The five arguments arrive as they are, nulls among them.
const char* texts[] = {"one", "two", "three"};
int unchanged = 0;
VekStatus VEKAPI sameArguments(VekStatus status, const char* name, const char* message, const char* file, int line) {
    if (status == -3 && name == texts[0] && message == texts[1] && file == texts[2] && line == -7) ++unchanged;
    if (status == -5 && name == nullptr && message == nullptr && file == nullptr && line == 0) ++unchanged;
    return 5;
}

TEST(Error, ArgumentsUnchanged) {
    Reports reports;
    const VekErrorHandler previous = vekRedirectError(sameArguments);
    EXPECT_EQ(vekError(-3, texts[0], texts[1], texts[2], -7), 5);
    EXPECT_EQ(vekError(-5, nullptr, nullptr, nullptr, 0), 5);
    EXPECT_EQ(unchanged, 2);
    EXPECT_EQ(vekRedirectError(previous), static_cast<VekErrorHandler>(sameArguments));
}

TEST(Error, NullReinstallsTheMessageBox) {
    Reports reports;
    const VekErrorHandler mine = vekRedirectError(nullptr);
    const VekErrorHandler box = vekRedirectError(nullptr);
    EXPECT_EQ(vekRedirectError(mine), box);
    EXPECT_NE(mine, box);
#ifndef VEK_TEST_DLL   // there the program knows it by another address
    EXPECT_EQ(box, static_cast<VekErrorHandler>(vekGuiBoxReport));
#endif
}

TEST(Error, StatusIsSticky) {
    Reports reports;
    float value = 4;
    EXPECT_EQ(veksbSqrt1(nullptr, 1), Reports::answer(VEK_StsBadArg));
    EXPECT_EQ(veksbSqrt1(&value, 1), VEK_StsOk);
    EXPECT_EQ(value, 4);
    EXPECT_EQ(vekGetErrStatus(), VEK_StsBadArg);
    vekError(VEK_StsOk, nullptr, nullptr, nullptr, 0);
    EXPECT_EQ(veksbSqrt1(&value, 1), VEK_StsOk);
    EXPECT_EQ(value, 2);
}

TEST(Mode, StoredUnchecked) {
    for (const int mode : {1, 2, 77, -1, 0}) {
        vekSetErrMode(mode);
        EXPECT_EQ(vekGetErrMode(), mode);
    }
}

TEST(Handlers, SilentReturnsTheStatus) {
    vekSetErrMode(VEK_ErrModeSilent);
    for (const VekStatus status : {-5, -1, -8, 0, 3}) {
        EXPECT_EQ(vekStdErrReport(status, "name", "message", "file", 1), status);
        EXPECT_EQ(vekNulDevReport(status, "name", "message", "file", 1), status);
        EXPECT_EQ(vekGuiBoxReport(status, "name", "message", "file", 1), status);
    }
    vekSetErrMode(VEK_ErrModeLeaf);
}

// ---- From outside
// ----------------------------------------------------------------------------------------------------

constexpr int returned = 40;        // the child's code after a handler that returned its status
constexpr int returnedOther = 41;   // ... or something else

const char* orNull(const std::string& text) { return text == "(null)" ? nullptr : text.c_str(); }

void say(const std::string& text) {
    std::fputs(text.c_str(), stderr);
    std::fflush(stderr);
}

#ifdef _WIN32

// A message box of this process.
BOOL CALLBACK ownBox(HWND window, LPARAM found) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    char type[32] = "";
    GetClassNameA(window, type, sizeof type);
    if (process != GetCurrentProcessId() || std::strcmp(type, "#32770") != 0 || !IsWindowVisible(window)) return TRUE;
    *reinterpret_cast<HWND*>(found) = window;
    return FALSE;
}

struct BoxContents {
    int wanted;   // the button to press; OK where it is missing
    std::string body, buttons;
    HWND toPress;
};

BOOL CALLBACK readChild(HWND child, LPARAM to) {
    auto& contents = *reinterpret_cast<BoxContents*>(to);
    char type[32] = "";
    char text[2048] = "";
    GetClassNameA(child, type, sizeof type);
    GetWindowTextA(child, text, sizeof text);
    const int number = GetDlgCtrlID(child);
    if (std::strcmp(type, "Static") == 0) contents.body += text;
    if (std::strcmp(type, "Button") != 0 || (GetWindowLongA(child, GWL_STYLE) & WS_VISIBLE) == 0) return TRUE;
    contents.buttons += " " + std::to_string(number);
    if (number == contents.wanted || (contents.toPress == nullptr && number == IDOK)) contents.toPress = child;
    return TRUE;
}

// Prints what every message box of this process shows, and presses its button.
void pressButtons(std::atomic<bool>& stop, int wanted) {
    HWND last = nullptr;
    while (!stop) {
        Sleep(20);
        HWND box = nullptr;
        EnumWindows(ownBox, reinterpret_cast<LPARAM>(&box));
        if (box == nullptr || box == last) continue;
        BoxContents contents = {wanted, "", "", nullptr};
        EnumChildWindows(box, readChild, reinterpret_cast<LPARAM>(&contents));
        if (contents.toPress == nullptr) continue;   // not complete yet
        char caption[2048] = "";
        GetWindowTextA(box, caption, sizeof caption);
        const bool topmost = (GetWindowLongA(box, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
        say("[" + std::string(caption) + "][" + contents.body + "][" + (topmost ? "topmost" : "") + contents.buttons +
            "]\n");
        last = box;
        PostMessageA(contents.toPress, BM_CLICK, 0, 0);
    }
}

#endif

// report HANDLER MODE THREAD-STATUS STATUS NAME MESSAGE FILE LINE [BUTTON]
int reportChild(const std::vector<std::string>& words) {
#ifdef _WIN32
    _setmode(2, _O_BINARY);
    std::atomic<bool> stop{false};
    std::thread presser;
    if (words.size() > 9) presser = std::thread([&stop, &words] { pressButtons(stop, std::stoi(words[9])); });
#endif
    std::atexit([] { say("<exit handlers>"); });
    vekSetErrMode(std::stoi(words[2]));
    vekSetErrStatus(std::stoi(words[3]));
    const VekErrorHandler handler = words[1] == "std"   ? vekStdErrReport
                                    : words[1] == "nul" ? vekNulDevReport
                                                        : vekGuiBoxReport;
    const VekStatus status = std::stoi(words[4]);
    const VekStatus result = handler(status, orNull(words[5]), orNull(words[6]), orNull(words[7]), std::stoi(words[8]));
    say("<returned>");
#ifdef _WIN32
    stop = true;
    if (presser.joinable()) presser.join();
#endif
    std::_Exit(result == status ? returned : returnedOther);
}
const RegisterChild registerReport("report", reportChild);

// chain MODE: a failing call of a two-signal member with the printing handler.
int chainChild(const std::vector<std::string>& words) {
#ifdef _WIN32
    _setmode(2, _O_BINARY);
#endif
    vekSetErrMode(std::stoi(words[1]));
    vekRedirectError(vekStdErrReport);
    float data[10] = {};
    const VekStatus result = veksReal2Fft(nullptr, data, 3, VEK_Forw);
    say("<result " + std::to_string(result) + ", status " + std::to_string(vekGetErrStatus()) + ">");
    std::_Exit(returned);
}
const RegisterChild registerChain("chain", chainChild);

Ended runReport(const std::string& handler, int mode, VekStatus threadStatus, VekStatus status, const char* name,
                const char* message, const char* file, int line, Terminal terminal = Terminal::none,
                const std::string& typed = "", const std::string& button = "") {
    const auto word = [](const char* text) { return std::string(text != nullptr ? text : "(null)"); };
    std::vector<std::string> words = {
        "report",   handler,       std::to_string(mode), std::to_string(threadStatus), std::to_string(status),
        word(name), word(message), word(file),           std::to_string(line)};
    if (!button.empty()) words.push_back(button);
    return runSelf(words, terminal, typed);
}

TEST(Handlers, StandardErrorByteForByte) {
    const struct {
        VekStatus status;
        const char *name, *message, *file;
        int line;
        const char* text;
    } cases[] = {
        {-5, "veksbAdd3", "n<=0", "vekarith", 42,
         "\nZTL Library Error: Bad argument \n\tin function [vekarith:42]:veksbAdd3(): n<=0\n"},
        {-4, "f", nullptr, "m", 0, "\nZTL Library Error: Out of memory \n\tin function [m:0]:f\n"},
        {-9, nullptr, "text", nullptr, 0,
         "\nZTL Library Error: Unknown error or status code \n\tin function:<unknown>(): text\n"},
        {-3, "f", "", nullptr, 7, "\nZTL Library Error: Internal error (bad state) \n\tin function [:7]:f(): \n"},
        {-3, "f", "%s%n", nullptr, -7, "\nZTL Library Error: Internal error (bad state) \n\tin function:f(): %s%n\n"},
        {-1, "veksConv", nullptr, "vekconvs", 9, "\tcalled from [vekconvs:9]:veksConv\n"},
        {-1, "veksReal2Fft", "out veksRealFft", "vekffts", 9,
         "\tcalled from [vekffts:9]:veksReal2Fft(): out veksRealFft\n"},
        {-8, "f", "1, 2", "m", 3, "\tcalled from [m:3]:f(1, 2)\n"},
        {-8, nullptr, nullptr, nullptr, 0, "\tcalled from:<unknown>\n"},
        {0, "f", "m", "file", 1, "\nZTL Library Error: No Error \n\tin function [file:1]:f(): m\n"},
    };
    const std::string leaf = "ZTL Library Error\nErrMode=VEK_ErrModeLeaf\nterminating the application";
    for (const auto& of : cases) {
        const std::string text = of.text;
        const struct {
            int mode;
            std::string errors;
            int code;
        } modes[] = {{VEK_ErrModeParent, text + "<returned>", returned},
                     {VEK_ErrModeSilent, "<returned>", returned},
                     {VEK_ErrModeLeaf, text + leaf + "<exit handlers>", 1},
                     {3, text + "<returned>", returned}};
        for (const auto& mode : modes) {
            const Ended ended = runReport("std", mode.mode, -3, of.status, of.name, of.message, of.file, of.line);
            EXPECT_TRUE(ended.exited) << text;
            EXPECT_EQ(ended.code, mode.code) << text << mode.mode;
            EXPECT_EQ(ended.errors, mode.errors) << mode.mode;
        }
    }
}

TEST(Handlers, NullDevicePrintsNothing) {
    const struct {
        int mode;
        const char* errors;
        int code;
    } modes[] = {{VEK_ErrModeLeaf, "<exit handlers>", 1},
                 {VEK_ErrModeParent, "<returned>", returned},
                 {VEK_ErrModeSilent, "<returned>", returned}};
    for (const auto& of : modes) {
        const Ended ended = runReport("nul", of.mode, 0, VEK_StsBadArg, "f", "m", "file", 1);
        EXPECT_TRUE(ended.exited) << of.mode;
        EXPECT_EQ(ended.code, of.code) << of.mode;
        EXPECT_EQ(ended.errors, of.errors) << of.mode;
    }
}

std::string withoutLines(std::string text) {
    for (std::size_t at = 0; (at = text.find(':', at)) != std::string::npos; ++at)
        while (at + 1 < text.size() && text[at + 1] >= '0' && text[at + 1] <= '9') text.erase(at + 1, 1);
    return text;
}

TEST(Handlers, ChainOfReports) {
    const Ended ended = runSelf({"chain", std::to_string(VEK_ErrModeParent)});
    EXPECT_EQ(ended.code, returned);
    EXPECT_EQ(withoutLines(ended.errors),
              "\nZTL Library Error: Bad argument \n\tin function [vekffts:]:veksRealFft(): samps==0\n"
              "\tcalled from [vekffts:]:veksReal2Fft(): out veksRealFft\n"
              "<result -1, status -5>");
    const Ended leaf = runSelf({"chain", std::to_string(VEK_ErrModeLeaf)});
    EXPECT_EQ(leaf.code, 1);
    EXPECT_EQ(withoutLines(leaf.errors),
              "\nZTL Library Error: Bad argument \n\tin function [vekffts:]:veksRealFft(): samps==0\n"
              "ZTL Library Error\nErrMode=VEK_ErrModeLeaf\nterminating the application");
}

const char leafTail[] = "\n\nErrMode=VEK_ErrorModeLeaf\n\nTerminate the application?";
const char parentTail[] = "\n\nErrMode=VEK_ErrorModeParent\n\nContinue?";

// What the box says without its tail, and its caption, which is of the thread's status.
struct BoxText {
    VekStatus threadStatus, status;
    const char *name, *message, *file;
    int line;
    const char *caption, *body;
};
constexpr BoxText boxTexts[] = {
    {-5, -5, "veksbAdd3", "n<=0", "vekarith", 42, "ZTL Library Error: Bad argument",
     "in function [vekarith:42]:veksbAdd3():\n n<=0"},
    {-4, -1, "veksConv", nullptr, "vekconvs", 9, "ZTL Library Error: Out of memory",
     "called from [vekconvs:9]:veksConv():\n "},
    {0, -8, "f", "1, 2", nullptr, -3, "ZTL Library Error: No Error", "called from [:0]:\n f(1, 2)"},
    {-9, -3, nullptr, "%s", "m", 0, "ZTL Library Error: Unknown error or status code",
     "in function [m:0]:<unknown>():\n %s"},
};
constexpr char ending[] = "ZTL Library:\nterminating the application";

#ifndef _WIN32

TEST(BoxReport, PromptAtATerminal) {
    const struct {
        int mode;
        Terminal terminal;
        const char* typed;
        bool ends;
    } answers[] = {
        {VEK_ErrModeLeaf, Terminal::answering, "y\n", true},
        {VEK_ErrModeLeaf, Terminal::answering, "Yes\n", true},
        {VEK_ErrModeLeaf, Terminal::answering, "n\n", false},
        {VEK_ErrModeLeaf, Terminal::answering, "No\n", false},
        {VEK_ErrModeParent, Terminal::answering, "o\n", false},
        {VEK_ErrModeParent, Terminal::answering, "OK\n", false},
        {VEK_ErrModeParent, Terminal::answering, "c\n", true},
        {VEK_ErrModeParent, Terminal::answering, "Cancel\n", true},
        // Nobody is there: a user who cannot go on, and one who can.
        {VEK_ErrModeLeaf, Terminal::none, "", true},
        {VEK_ErrModeParent, Terminal::none, "", false},
    };
    for (const BoxText& box : boxTexts) {
        for (const auto& answer : answers) {
            const std::string what =
                std::string(box.body) + " mode " + std::to_string(answer.mode) + " typed " + answer.typed;
            const Ended ended = runReport("box", answer.mode, box.threadStatus, box.status, box.name, box.message,
                                          box.file, box.line, answer.terminal, answer.typed);
            EXPECT_TRUE(ended.exited) << what;
            const std::string tail = answer.mode == VEK_ErrModeLeaf ? leafTail : parentTail;
            const std::string wanted = std::string(box.caption) + "\n" + box.body + tail;
            EXPECT_EQ(ended.errors.substr(0, wanted.size()), wanted) << what;
            EXPECT_EQ(ended.errors.find("<returned>") == std::string::npos, answer.ends) << what << ended.errors;
            EXPECT_EQ(ended.errors.find(ending) != std::string::npos, answer.ends) << what << ended.errors;
            if (answer.ends)
                EXPECT_NE(ended.code, 0) << what;
            else
                EXPECT_EQ(ended.code, returned) << what;
        }
    }
}

TEST(BoxReport, SilentAndUnknownModesAskNothing) {
    for (const int mode : {int{VEK_ErrModeSilent}, 3, -1}) {
        const Ended ended = runReport("box", mode, -5, -5, "f", "m", "file", 1);
        EXPECT_EQ(ended.errors, "<returned>") << mode;
        EXPECT_EQ(ended.code, returned) << mode;
    }
}

#else

TEST(BoxReport, WindowAndItsButtons) {
    const struct {
        int mode;
        int pressed;
        const char* buttons;
        bool ends;
    } answers[] = {
        {VEK_ErrModeLeaf, IDYES, " 6 7", true},
        {VEK_ErrModeLeaf, IDNO, " 6 7", false},
        {VEK_ErrModeParent, IDOK, " 1 2", false},
        {VEK_ErrModeParent, IDCANCEL, " 1 2", true},
    };
    for (const BoxText& box : boxTexts) {
        for (const auto& answer : answers) {
            // A window takes its time: every button once, and every text.
            if (&box != boxTexts && answer.pressed != IDNO) continue;
            const std::string what = std::string(box.body) + " mode " + std::to_string(answer.mode) + " button " +
                                     std::to_string(answer.pressed);
            const Ended ended = runReport("box", answer.mode, box.threadStatus, box.status, box.name, box.message,
                                          box.file, box.line, Terminal::none, "", std::to_string(answer.pressed));
            EXPECT_TRUE(ended.exited) << what;
            const std::string tail = answer.mode == VEK_ErrModeLeaf ? leafTail : parentTail;
            const std::string wanted =
                "[" + std::string(box.caption) + "][" + box.body + tail + "][topmost" + answer.buttons + "]\n";
            EXPECT_EQ(ended.errors.substr(0, wanted.size()), wanted) << what;
            if (answer.ends) {
                EXPECT_NE(ended.errors.find(std::string("[") + ending + "]"), std::string::npos) << what << "\n"
                                                                                                 << ended.errors;
                EXPECT_EQ(ended.errors.find("<returned>"), std::string::npos) << what;
            } else {
                EXPECT_EQ(ended.errors, wanted + "<returned>") << what;
                EXPECT_EQ(ended.code, returned) << what;
            }
        }
    }
}

TEST(BoxReport, SilentAndUnknownModesAskNothing) {
    for (const int mode : {int{VEK_ErrModeSilent}, 3, -1}) {
        const Ended ended = runReport("box", mode, -5, -5, "f", "m", "file", 1, Terminal::none, "", "1");
        EXPECT_EQ(ended.errors, "<returned>") << mode;
        EXPECT_EQ(ended.code, returned) << mode;
    }
}

#endif

// ---- Contexts -------------------------------------------------------------------------------------------------------

constexpr char noContext[] = "VEKlib. Problem to allocate memory for TLS VEK context.";

// unmade BUTTON: a thread for whose context there is no memory, neither when it starts nor when it calls.
int unmadeChild([[maybe_unused]] const std::vector<std::string>& words) {
#ifdef _WIN32
    _setmode(2, _O_BINARY);
    std::atomic<bool> stop{false};
    std::thread([&stop, &words] { pressButtons(stop, std::stoi(words[1])); }).detach();
    Sleep(200);   // it has its own context, and starts before memory ends
#endif
    heap::failEverywhere(true);
    std::thread([] {
        vekGetErrStatus();
        say("<returned>");
    }).join();
    std::_Exit(returned);
}
const RegisterChild registerUnmade("unmade", unmadeChild);

TEST(Context, EndsTheProcessWithoutMemory) {
    if (!heap::available()) GTEST_SKIP();
    const Ended ended = runSelf({"unmade", "1"});
    EXPECT_TRUE(ended.exited);
    EXPECT_EQ(ended.code, 1);
#ifdef _WIN32
    EXPECT_NE(ended.errors.find(std::string("[") + noContext + "]"), std::string::npos) << ended.errors;
    EXPECT_EQ(ended.errors.find("<returned>"), std::string::npos);
#else
    EXPECT_EQ(ended.errors, std::string(noContext) + "\n");
#endif
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
    EXPECT_EQ(ended.errors, std::string(noContext) + "\n");
}

#endif

}   // namespace
