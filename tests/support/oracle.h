// What calls should give, from definitions alone: an oracle per operation, over all rows that have it. A family's stand
// in tests/oracles/<family>.cpp:
//
//     VEK_ORACLES(arith) {
//         each("bAdd1 bAdd2 bAdd3", "sdcz", [](const Element& e) -> Expected { return e.x + e.y; });
//         ...
//     }
#pragma once

#include <cmath>
#include <cstddef>
#include <functional>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "rows.h"

namespace test {

// ---- Numbers that are wide enough to be the truth -------------------------------------------------------------------

// 113 bits: sums, products, quotients and roots rounded to it, then to double or float, are rounded as if once; all
// integers of 64 bits are exact.
__extension__ typedef __float128 Exact;

struct Number {
    Exact re = 0, im = 0;
};
inline Number operator+(Number a, Number b) { return {a.re + b.re, a.im + b.im}; }
inline Number operator-(Number a, Number b) { return {a.re - b.re, a.im - b.im}; }
inline Number conj(Number a) { return {a.re, -a.im}; }
inline bool isFinite(Exact a) { return a - a == 0; }
inline bool isFinite(Number a) { return isFinite(a.re) && isFinite(a.im); }
bool isNegative(Exact a);   // the sign bit
inline Exact magnitude(Exact a) { return isNegative(a) ? -a : a; }
Exact withSign(Exact a, Exact sign);
Exact squareRoot(Exact a);
Exact modulus(Number a);

// For transforms, where 64 bits do and speed counts.
struct Wide {
    long double re = 0, im = 0;
};
inline Wide operator+(Wide a, Wide b) { return {a.re + b.re, a.im + b.im}; }
inline Wide operator-(Wide a, Wide b) { return {a.re - b.re, a.im - b.im}; }
inline Wide operator*(Wide a, Wide b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }
inline Wide conj(Wide a) { return {a.re, -a.im}; }

// exp(-2 pi i k / n); the angle never exceeds an eighth of the circle.
Wide root(unsigned long long k, unsigned long long n);
// sum over n of x[n] exp(sign 2 pi i n k / N): by the definition, and by splitting even and odd.
std::vector<Wide> naiveDft(const std::vector<Wide>& x, int sign);
std::vector<Wide> referenceFft(const std::vector<Wide>& x, int sign);

std::size_t reversedBits(std::size_t value, int order);

// ---- Expectations ---------------------------------------------------------------------------------------------------

// A real as it should come out.
struct Part {
    enum {
        rounded,   // value, rounded once; one NaN is as good as another
        bits,      // value to the bit, NaN too
        near,      // within `error` of value, and of its sign where value is zero
        anything
    } kind = rounded;
    Exact value = 0;
    Exact error = 0;
    std::vector<Exact> others = {};   // as good as value, rounded

    Part() = default;
    Part(Exact of) : value(of) {}
    Part(decltype(kind) how, Exact of, Exact within = 0) : kind(how), value(of), error(within) {}
};
// An element.
struct Expected {
    Part re, im;

    Expected() = default;
    Expected(Exact of) : re(of) {}
    Expected(Number of) : re(of.re), im(of.im) {}
    Expected(Part first, Part second = {}) : re(std::move(first)), im(std::move(second)) {}
};
inline Expected exactly(Number of) { return {{Part::bits, of.re}, {Part::bits, of.im}}; }
inline Expected anything() { return {{Part::anything, 0}, {Part::anything, 0}}; }

// The reals of one element type.
struct RealType {
    char letter;
    Exact epsilon, largest, smallest;   // smallest: the least above zero
    Exact rounded(Exact value) const;
};
RealType realType(char letter);

// What an array should be: element by element, or as a whole, in relative L2 distance.
struct Wanted {
    std::vector<Expected> elements;
    std::vector<Wide> whole;   // may be shorter than the array: the rest is not spoken of
    long double power = -1;    // what the error is relative to; below zero: the power of whole
    int order = 0;             // of the transform, on which the bound depends
    double bound = -1;         // below zero: that of the fast transforms
};

// A call as oracles see it: arguments and arrays before it was made.
class Sight {
public:
    explicit Sight(const Row& of, const Cells& cells,
                   const std::function<std::vector<unsigned char>(int argument)>& before);

    const Row& row;
    RealType real;                          // of what the call writes or returns
    std::map<std::string, Wanted> wanted;   // by array; what it returns has no name

    int number(const char* name) const;
    bool isNull(const char* name) const;
    const std::vector<Number>& array(const char* name) const;   // a scalar is an array of one
    std::vector<Wide> wide(const char* name) const;

    // What the operands are, an array that is overwritten first; and the arrays that are written.
    std::vector<std::string> operands, results;

private:
    Cells cells;
    std::map<std::string, std::vector<Number>> arrays;
};

// One element of an element-wise call: its first two operands, and what stood where the result goes.
struct Element {
    const Sight& call;
    const RealType& real;
    std::size_t index;
    Number x, y, former;
};

struct Oracle {
    std::string types;
    bool ordinaryOnly;   // on special values nothing is known
    std::function<void(Sight& call)> tell;
};
// The oracle of a row; null: none.
const Oracle* oracleOf(const Row& row);

// The reals of an element in memory, and whether they are as expected; else what is wrong.
std::string differs(const ArgumentType& type, const unsigned char* element, const Expected& expected);
// The reals of an array as numbers.
std::vector<Number> numbers(const ArgumentType& type, const std::vector<unsigned char>& bytes);
// Errors of whole arrays and the power of what was wanted.
struct ErrorSum {
    long double error = 0, power = 0;
    void add(const std::vector<Number>& got, const Wanted& wanted);
    double relative() const;
};

// ---- For the oracle files -------------------------------------------------------------------------------------------

void each(const std::string& operations, const std::string& types,
          const std::function<Expected(const Element& e)>& compute);
void whole(const std::string& operations, const std::string& types, const std::function<void(Sight& call)>& tell,
           bool ordinaryOnly = false);

struct RegisterOracles {
    explicit RegisterOracles(void (*addOracles)()) { addOracles(); }
};
#define VEK_ORACLES(family)                                             \
    static void oraclesOf_##family();                                   \
    static const RegisterOracles register_##family(oraclesOf_##family); \
    static void oraclesOf_##family()

}   // namespace test
