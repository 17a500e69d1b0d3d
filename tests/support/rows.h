// One row per export: how to call it, what its arguments are, and its checks in their order. The generic tests, the
// fuzzer and the benchmarks run over all rows; a family joins them by a file of its own, tests/rows/rows_<family>.cpp:
//
//     VEK_ROWS(arith) {
//         const Group arith{.module = "vekarith"};
//         add(arith, "in srcA[n], in srcB[n], out dst[n], length n", "n<=0; srcA==0; srcB==0; dst==0", SDCZ(b, Add3));
//         ...
//     }
//
// Arguments, in the order of the call: a role, a name, for arrays the number of elements in brackets, and after = the
// value of an ordinary call, further values to try after bars. Lengths, orders and scalars have values of their own.
//     in, out, inout   arrays; an out or inout may be the same array as an in of its type
//     apart            an out that must not overlap any other
//     length, order    the call's size; further ones need a value: "length hLen=xLen/2+1"
//     scalar           of any element type
//     mode, factor     how results are brought to int16, and the pointer to the shift, which is read or written, or
//     null
//                      where the checks let it; both have values of their own
//     flags, plain     other numbers
//     record           a pointer to a state record; Group::setUp makes it ready
//     pointer          anything else that is not looked into
// Sizes and values are expressions of support/expression.h over the arguments.
//
// Checks, in order, with semicolons between: the message, which is the condition itself, or else stands before it with
// a colon: "n<=0; Null buffer pointer: taps==0 || state==0". After a plus sign a check that holds does not keep the
// next ones from being reported too; after an equals sign stands no check, but a condition on which the call ends here
// and well.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "expression.h"
#include "function.h"

namespace test {

enum class Role {
    in,
    out,
    apart,
    inout,
    length,
    order,
    scalar,
    mode,
    factor,
    flags,
    plain,
    record,
    pointer
};

struct Argument {
    Role role;
    std::string name;
    std::string size;                  // an expression: elements of an array
    std::vector<std::string> values;   // expressions; the first is that of an ordinary call
    ArgumentType type;

    bool isBuffer() const { return role <= Role::inout || role == Role::factor; }
    bool isWritten() const {
        return role == Role::out || role == Role::apart || role == Role::inout || role == Role::factor;
    }
    bool isRead() const { return role == Role::in || role == Role::inout || role == Role::factor; }
};

struct Check {
    std::string message;
    std::string condition;
    bool goesOn = false;   // +
    bool ends = false;     // =
};

// What a negative status of the thread does to a call.
enum class Gate {
    computes,   // it stands still
    always,     // nothing: it works all the same
    clears      // it is cleared first
};

struct Scene;   // support/scene.h

// A state that a record must not be in: how it comes into it.
struct Hostile {
    const char* name;
    void (*make)(Scene& scene);
};

// What rows have in common beyond their arguments and checks.
struct Group {
    std::string module = {};
    Gate gate = Gate::computes;
    bool returnsStatus = false;   // after a report what the handler answered,
    bool leavesStatus = false;    // or the status that the thread is left with
    // The message when its tables cannot be built, or one for each of its requests, with semicolons between; empty: it
    // asks for no memory.
    std::string noMemory = {};
    VekStatus noMemoryStatus = VEK_StsNoMemory;
    bool retriesMemory = false;                 // one failed request is made good
    bool doesWithout = false;                   // where memory is short it goes another way, without a report
    std::string late = {};                      // checks that are reported after the computation
    void (*setUp)(Scene& scene) = nullptr;      // makes records ready
    void (*tearDown)(Scene& scene) = nullptr;   // releases what they own
    std::vector<Hostile> hostile = {};
    bool perLevel = false;       // levels may differ by more than the last bits: roundings add up, or become integers
    std::string testedBy = {};   // where the results are tested, if not by an oracle
};

// The export that another one calls, a two-signal member twice, and the arguments of each call.
struct Inner {
    std::string name;
    std::string first, second;   // names, or numbers other than zero, with spaces between
    std::string both;            // a condition on which the second call is made; empty: it never is
    std::string message = {};    // of the backtrace
};
// What a factor's plain value is where the call passes null.
inline constexpr std::int64_t noFactor = INT64_MIN;

struct Row {
    Function function;
    Group group;
    std::vector<Argument> arguments;
    std::vector<Check> checks, late;
    Inner inner;

    const std::string& name() const { return function.name; }
    int index(const std::string& argument) const;   // -1: none
    int sizeArgument() const;                       // the first length or order; -1: none
    bool takesOrder() const;
    bool hasBuffers() const;

    long double value(const std::string& expression, const Cells& cells) const;
    std::size_t elements(const Argument& buffer, const Cells& cells) const;
    // All but pointers, though of a factor what it points to, for a call of that size: an ordinary one, or variant
    // `choice` of choices().
    Cells plain(int size, int choice = 0) const;
    int choices() const;

    // What a call reports, as reportLine() lines, and the status that it leaves.
    std::string expectedReports(const Cells& cells, VekStatus& status) const;
    // The same of a call that computes, from what its arrays hold before.
    std::string lateReports(const Cells& cells, VekStatus& status) const;
    // Whether a call that is rejected has computed something before: the first half of a two-signal member.
    bool computesBeforeFailing(const Cells& cells) const;
    // The reports when the first, second ... request for memory fails.
    std::string noMemoryReports(std::size_t request) const;
    // What it returns after having reported, or at a negative status.
    Cell expectedFailure(VekStatus status) const;
    // Of a two-signal member: the arguments that its first or second call passes on.
    Cells passedOn(const std::string& names, const Cells& cells) const;
};

const std::vector<Row>& rows();
const Row& row(const std::string& name);

// As TEST_P parameters.
std::vector<std::string> rowNames(bool (*wanted)(const Row& row));

// One or more values of arguments or of their records' fields, such that a check of the row holds.
struct Change {
    int argument;
    std::size_t offset;   // in the record, for fields
    std::size_t bytes;
    bool inRecord;
    Cell value;
};
using Changes = std::vector<Change>;
void apply(const Changes& changes, Cells& cells);
// Each check of the row with several ways to make it hold, never none; of a two-signal member the checks of the inner
// one, for the arguments of either call.
struct Wrong {
    std::string message;
    std::vector<Changes> ways;
};
std::vector<Wrong> wrongs(const Row& row, const Cells& cells);

// ---- For the row files ----------------------------------------------------------------------------------------------

using Functions = std::vector<Function>;
void add(const Group& group, const std::string& arguments, const std::string& checks, const Functions& functions,
         const Inner& inner = {});

struct RegisterRows {
    RegisterRows(const char* family, void (*addRows)());
};
#define VEK_ROWS(family)                                                   \
    static void rowsOf_##family();                                         \
    static const RegisterRows register_##family(#family, rowsOf_##family); \
    static void rowsOf_##family()

// A record's field, for checks that look at it: VEK_FIELD(VekFirState, self). What a factor points to is its field
// `value`.
struct Field {
    const void* record;
    const char* name;
    std::size_t offset;
    ArgumentType type;
};
struct RegisterField {
    explicit RegisterField(const Field& field);
};
#define VEK_FIELD(Record, field)                            \
    static const RegisterField register_##Record##_##field( \
        {&recordTag<Record>, #field, offsetof(Record, field), typeOf<decltype(Record::field)>()})

// VEK_NAMES(bAdd3, s, d) is veksbAdd3 and vekdbAdd3; without letters, VEK_NAMES(BitRev, ), it is vekBitRev.
#define VEK_NAMES(operation, ...) VEK_MANY(VEK_NEXT_NAME(operation, __VA_ARGS__))
#define VEK_NEXT_NAME(operation, letters, ...)                      \
    test::functionOf(#letters, #operation, vek##letters##operation) \
        __VA_OPT__(, VEK_NAME_AGAIN VEK_PARENTHESES(operation, __VA_ARGS__))
#define VEK_NAME_AGAIN() VEK_NEXT_NAME
#define VEK_PARENTHESES ()
#define VEK_MANY(...) VEK_FEW(VEK_FEW(VEK_FEW(VEK_FEW(__VA_ARGS__))))
#define VEK_FEW(...) VEK_ONCE(VEK_ONCE(VEK_ONCE(VEK_ONCE(__VA_ARGS__))))
#define VEK_ONCE(...) __VA_ARGS__
#define SDCZ(operation) VEK_NAMES(operation, s, d, c, z)
#define SD(operation) VEK_NAMES(operation, s, d)
#define CZ(operation) VEK_NAMES(operation, c, z)

}   // namespace test
