// Status codes, error modes, report handlers. All state is the calling thread's own.
#include "vekm6/frame.h"

#include <cstdio>
#include <cstdlib>

#include "core/context.h"
#include "core/platform/platform.h"

namespace platform = vek::platform;
using vek::core::context;

namespace {

constexpr const char* unknownText = "Unknown error or status code";

// Indexed by status - firstStatus.
constexpr int firstStatus = VEK_StsAutotrace;
constexpr const char* statusTexts[] = {
    "Autotrace call",   // -8
    "Iteration convergence failed",
    "Unsupported function",
    "Bad argument",
    "Out of memory",
    "Internal error (bad state)",
    unknownText,   // -2 has no meaning
    "Backtrace",
    "No Error",
};

// Reports of these kinds tell where an error passed through; they are no errors of their own.
bool isTrace(VekStatus status) { return status == VEK_StsBacktrace || status == VEK_StsAutotrace; }

void endByBox() { platform::fatalExit("ZTL Library:\nterminating the application"); }

}   // namespace

extern "C" {

VekStatus VEKAPI vekError(VekStatus status, const char* name, const char* message, const char* file, int line) {
    auto& thread = context();
    if (!isTrace(status)) thread.status = status;
    if (status == VEK_StsOk) return VEK_StsOk;
    return thread.handler(status, name, message, file, line);
}

const char* VEKAPI vekErrorStr(VekStatus status) {
    return status >= firstStatus && status <= VEK_StsOk ? statusTexts[status - firstStatus] : unknownText;
}

VekStatus VEKAPI vekGetErrStatus(void) { return context().status; }

void VEKAPI vekSetErrStatus(VekStatus status) { context().status = status; }

int VEKAPI vekGetErrMode(void) { return context().mode; }

void VEKAPI vekSetErrMode(int mode) { context().mode = mode; }

VekErrorHandler VEKAPI vekRedirectError(VekErrorHandler handler) {
    auto& thread = context();
    const VekErrorHandler previous = thread.handler;
    thread.handler = handler != nullptr ? handler : vekGuiBoxReport;
    return previous;
}

VekStatus VEKAPI vekStdErrReport(VekStatus status, const char* name, const char* message, const char* file, int line) {
    const int mode = context().mode;
    if (mode == VEK_ErrModeSilent) return status;
    if (isTrace(status))
        std::fputs("\tcalled from", stderr);
    else
        std::fprintf(stderr, "\nZTL Library Error: %s \n\tin function", vekErrorStr(status));
    if (line > 0 || file != nullptr) std::fprintf(stderr, " [%s:%d]", file != nullptr ? file : "", line);
    std::fprintf(stderr, ":%s", name != nullptr ? name : "<unknown>");
    if (message != nullptr) std::fprintf(stderr, status == VEK_StsAutotrace ? "(%s)" : "(): %s", message);
    std::fputs("\n", stderr);
    std::fflush(stderr);
    if (mode == VEK_ErrModeLeaf) {
        std::fputs("ZTL Library Error\nErrMode=VEK_ErrModeLeaf\nterminating the application", stderr);
        std::fflush(stderr);
        std::exit(1);
    }
    return status;
}

VekStatus VEKAPI vekNulDevReport(VekStatus status, const char*, const char*, const char*, int) {
    if (context().mode == VEK_ErrModeLeaf) std::exit(1);
    return status;
}

VekStatus VEKAPI vekGuiBoxReport(VekStatus status, const char* name, const char* message, const char* file, int line) {
    const auto& thread = context();
    if (thread.mode == VEK_ErrModeSilent) return status;
    const bool leaf = thread.mode == VEK_ErrModeLeaf;
    const bool parent = thread.mode == VEK_ErrModeParent;
    const char* tail = leaf     ? "\n\nErrMode=VEK_ErrorModeLeaf\n\nTerminate the application?"
                       : parent ? "\n\nErrMode=VEK_ErrorModeParent\n\nContinue?"
                                : "";
    const char* format = status == VEK_StsBacktrace   ? "called from [%s:%d]:%s():\n %s%s"
                         : status == VEK_StsAutotrace ? "called from [%s:%d]:\n %s(%s)%s"
                                                      : "in function [%s:%d]:%s():\n %s%s";
    char body[platform::textCapacity];
    char caption[platform::textCapacity];
    platform::formatText(body, format, file != nullptr ? file : "", line < 0 ? 0 : line,
                         name != nullptr ? name : "<unknown>", message != nullptr ? message : "", tail);
    // The thread's status, so that every box of a chain is headed by the error that started it.
    platform::formatText(caption, "ZTL Library Error: %s", vekErrorStr(thread.status));
    if (parent && platform::messageBox(body, caption, platform::okCancelSystemModal) == platform::answerCancel)
        endByBox();
    if (leaf && platform::messageBox(body, caption, platform::yesNoSystemModal) == platform::answerYes) endByBox();
    return status;
}

}   // extern "C"
