// How every exported operation checks its arguments, reports, and stops: one mechanism for all families.
//
//     Call call{module, "veksbAdd3"};
//     if (call.bad(n <= 0, "n<=0")) return;         // one line per check, in the order that the header states
//     if (call.bad(!srcA, "srcA==0")) return;
//     if (call.stopped()) return;                   // an earlier failure still stands: do not compute
//
// The happy path writes nothing; the report is cold and out of line. Members that return a status return
// `call.result`, the answer of the report handler.
#pragma once

#include "context.h"

// Steps that exports share. They are inlined into each, so that a call and its arguments stay in registers.
#define VEK_STEPS [[gnu::always_inline]] inline

namespace vek::core {

struct Call {
    const char* module;   // as reports name it
    const char* name;     // the exported name
    VekStatus result = VEK_StsOk;
    // Fetched first, while the caller's arguments still stand where they came: making one is a call.
    ThreadContext& thread = context();

    [[gnu::always_inline]] bool bad(bool failed, const char* message, int line = __builtin_LINE()) {
        if (failed) [[unlikely]]
            report(VEK_StsBadArg, message, line);
        return failed;
    }

    [[gnu::always_inline]] bool noMemory(bool failed, const char* message, int line = __builtin_LINE()) {
        if (failed) [[unlikely]]
            report(VEK_StsNoMemory, message, line);
        return failed;
    }

    // After an inner call: adds this operation's line to the chain of reports when the inner call failed.
    [[gnu::always_inline]] bool backtrace(const char* message = nullptr, int line = __builtin_LINE()) {
        if (thread.status >= 0) [[likely]]
            return false;
        report(VEK_StsBacktrace, message, line);
        return true;
    }

    bool stopped() const { return thread.status < 0; }

    [[gnu::always_inline]] void report(VekStatus status, const char* message, int line) {
        result = raise(status, name, message, module, line);
    }

    // Takes no pointer to the call, so that a call lives in registers.
    [[gnu::cold, gnu::noinline]] static VekStatus raise(VekStatus status, const char* name, const char* message,
                                                        const char* module, int line) {
        return vekError(status, name, message, module, line);
    }
};

// For operations that check nothing.
inline bool stopped() { return context().status < 0; }

// Transforms and their tables take orders 0 ... 31.
inline bool badOrder(Call& call, int order, int line = __builtin_LINE()) {
    return call.bad(order < 0, "order<0", line) || call.bad(order > 31, "order>31", line);
}

}   // namespace vek::core
