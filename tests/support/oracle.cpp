#include "oracle.h"

#include <cstring>
#include <memory>

namespace test {

// ---- Numbers --------------------------------------------------------------------------------------------------------

bool isNegative(Exact a) {
    unsigned char bytes[sizeof a];
    std::memcpy(bytes, &a, sizeof a);
    return (bytes[15] & 0x80) != 0;
}

Exact withSign(Exact a, Exact sign) { return isNegative(a) == isNegative(sign) ? a : -a; }

Exact squareRoot(Exact a) {
    if (!(a > 0) || !isFinite(a)) return a;
    // Scaled by a power of four into the range of long double, then one of Newton's steps from its 64 bits.
    Exact scale = 1;
    while (a * scale * scale < 0x1p-1000L) scale *= 0x1p500L;
    while (a * scale * scale > 0x1p1000L) scale *= 0x1p-500L;
    const Exact square = a * scale * scale;
    const Exact guess = std::sqrt(static_cast<long double>(square));
    return (guess + square / guess) / 2 / scale;
}

Exact modulus(Number a) { return squareRoot(a.re * a.re + a.im * a.im); }

Wide root(unsigned long long k, unsigned long long n) {
    k %= n;
    // cos and sin of 2 pi k / n by the octant that k lies in: 8 k = octant n + rest.
    const unsigned long long octant = 8 * k / n;
    unsigned long long rest = 8 * k - octant * n;
    if (octant & 1) rest = n - rest;
    const long double angle =
        0.78539816339744830961566084581987572L * static_cast<long double>(rest) / static_cast<long double>(n);
    long double c = std::cos(angle);
    long double s = std::sin(angle);
    if (((octant + 1) >> 1) & 1) {
        const long double t = c;
        c = s;
        s = t;
    }
    if (octant >= 2 && octant < 6) c = -c;
    if (octant >= 4) s = -s;
    return {c, -s};
}

std::vector<Wide> naiveDft(const std::vector<Wide>& x, int sign) {
    const std::size_t n = x.size();
    std::vector<Wide> w(n);
    for (std::size_t k = 0; k < n; ++k) w[k] = sign < 0 ? root(k, n) : conj(root(k, n));
    std::vector<Wide> sums(n);
    for (std::size_t k = 0; k < n; ++k)
        for (std::size_t i = 0; i < n; ++i) sums[k] = sums[k] + x[i] * w[i * k % n];
    return sums;
}

namespace {

void split(const Wide* x, Wide* out, std::size_t n, std::size_t stride, const Wide* w, std::size_t wStride, int sign) {
    if (n == 1) {
        out[0] = x[0];
        return;
    }
    const std::size_t half = n / 2;
    split(x, out, half, 2 * stride, w, 2 * wStride, sign);
    split(x + stride, out + half, half, 2 * stride, w, 2 * wStride, sign);
    for (std::size_t k = 0; k < half; ++k) {
        const Wide factor = sign < 0 ? w[k * wStride] : conj(w[k * wStride]);
        const Wide odd = out[half + k] * factor;
        const Wide even = out[k];
        out[k] = even + odd;
        out[half + k] = even - odd;
    }
}

}   // namespace

std::vector<Wide> referenceFft(const std::vector<Wide>& x, int sign) {
    const std::size_t n = x.size();
    std::vector<Wide> w(n / 2 + 1);
    for (std::size_t k = 0; k < n / 2; ++k) w[k] = root(k, n);
    std::vector<Wide> out(n);
    split(x.data(), out.data(), n, 1, w.data(), 1, sign);
    return out;
}

std::size_t reversedBits(std::size_t value, int order) {
    std::size_t reversed = 0;
    for (int i = 0; i < order; ++i)
        if (value & (std::size_t{1} << i)) reversed |= std::size_t{1} << (order - 1 - i);
    return reversed;
}

// ---- Reals in memory ------------------------------------------------------------------------------------------------

namespace {

template <class T>
T read(const unsigned char* at) {
    T value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

// f(T) for the type of reals of a letter.
template <class F>
auto withType(char real, F f) {
    switch (real) {
        case 's': return f(float{});
        case 'd': return f(double{});
        case 'w': return f(std::int16_t{});
        case 'b': return f(static_cast<unsigned char>(0));
        default: return f(std::int32_t{});
    }
}

template <class T>
bool sameBits(T a, T b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

template <class T>
bool agrees(T got, const Part& part) {
    const Exact wide = got;
    const auto isRounded = [got](Exact value) {
        const T rounded = static_cast<T>(value);
        return sameBits(got, rounded) || (got != got && rounded != rounded);
    };
    switch (part.kind) {
        case Part::anything: return true;
        case Part::bits: return sameBits(got, static_cast<T>(part.value));
        case Part::rounded: break;
        case Part::near:
            if (isRounded(part.value)) return true;
            if (got == 0 && part.value == 0) break;   // of the other sign
            // What may have been rounded up to infinity.
            if (!isFinite(wide) && got == got && isNegative(wide) == isNegative(part.value) &&
                magnitude(part.value) + part.error >= static_cast<Exact>(std::numeric_limits<T>::max()))
                return true;
            if (magnitude(wide - part.value) <= part.error) return true;
            break;
    }
    if (part.kind == Part::rounded && isRounded(part.value)) return true;
    for (const Exact other : part.others)
        if (isRounded(other)) return true;
    return false;
}

std::string shown(Exact value) {
    char text[64];
    std::snprintf(text, sizeof text, "%.21Lg", static_cast<long double>(value));
    return text;
}

}   // namespace

RealType realType(char letter) {
    return withType(letter, [letter](auto zero) -> RealType {
        using Limits = std::numeric_limits<decltype(zero)>;
        return {letter, Limits::epsilon(), Limits::max(), Limits::denorm_min()};
    });
}
Exact RealType::rounded(Exact value) const {
    return withType(letter, [value](auto zero) -> Exact { return static_cast<decltype(zero)>(value); });
}

std::vector<Number> numbers(const ArgumentType& type, const std::vector<unsigned char>& bytes) {
    std::vector<Number> values(bytes.size() / type.bytes);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const unsigned char* at = &bytes[i * type.bytes];
        withType(type.real(), [&](auto zero) {
            using T = decltype(zero);
            values[i].re = read<T>(at);
            if (type.isComplex()) values[i].im = read<T>(at + sizeof(T));
        });
    }
    return values;
}

std::string differs(const ArgumentType& type, const unsigned char* element, const Expected& expected) {
    return withType(type.real(), [&](auto zero) -> std::string {
        using T = decltype(zero);
        for (const bool imaginary : {false, true}) {
            if (imaginary && !type.isComplex()) break;
            const T got = read<T>(element + (imaginary ? sizeof(T) : 0));
            const Part& part = imaginary ? expected.im : expected.re;
            if (!agrees(got, part))
                return (imaginary ? "imaginary part " : "") + shown(got) + " instead of " + shown(part.value) +
                       (part.kind == Part::near ? " within " + shown(part.error) : "");
        }
        return {};
    });
}

void ErrorSum::add(const std::vector<Number>& got, const Wanted& wanted) {
    for (std::size_t i = 0; i < wanted.whole.size(); ++i) {
        const Wide value = {static_cast<long double>(got[i].re), static_cast<long double>(got[i].im)};
        const Wide apart = value - wanted.whole[i];
        error += apart.re * apart.re + apart.im * apart.im;
        if (wanted.power < 0)
            power += wanted.whole[i].re * wanted.whole[i].re + wanted.whole[i].im * wanted.whole[i].im;
    }
    if (wanted.power >= 0) power += wanted.power;
}

double ErrorSum::relative() const {
    if (error == 0) return 0;
    const auto ratio = static_cast<double>(std::sqrt(error / power));
    return ratio == ratio ? ratio : HUGE_VAL;
}

// ---- Calls ----------------------------------------------------------------------------------------------------------

Sight::Sight(const Row& of, const Cells& given, const std::function<std::vector<unsigned char>(int argument)>& before)
    : row(of), real(realType(of.function.result.real())), cells(given) {
    for (const bool overwritten : {true, false}) {
        for (std::size_t i = 0; i < row.arguments.size(); ++i) {
            const Argument& argument = row.arguments[i];
            if ((argument.role == Role::inout) != overwritten) continue;
            if (argument.role == Role::scalar) {
                const unsigned char* bytes = cells[i].bytes;
                arrays[argument.name] = numbers(argument.type, {bytes, bytes + argument.type.bytes});
            } else if (argument.isBuffer()) {
                arrays[argument.name] = numbers(argument.type, before(static_cast<int>(i)));
            } else {
                continue;
            }
            if (argument.role == Role::scalar || argument.isRead()) operands.push_back(argument.name);
            if (!argument.isWritten() || argument.role == Role::factor) continue;
            results.push_back(argument.name);
            real = realType(argument.type.real());
        }
    }
}

int Sight::number(const char* name) const { return cells[static_cast<std::size_t>(row.index(name))].get<int>(); }

bool Sight::isNull(const char* name) const { return cells[static_cast<std::size_t>(row.index(name))] == Cell{}; }

const std::vector<Number>& Sight::array(const char* name) const { return arrays.at(name); }

std::vector<Wide> Sight::wide(const char* name) const {
    std::vector<Wide> values;
    for (const Number& value : array(name))
        values.push_back({static_cast<long double>(value.re), static_cast<long double>(value.im)});
    return values;
}

namespace {

// Filled while the program starts.
std::multimap<std::string, Oracle>& oracles() {
    static std::multimap<std::string, Oracle> known;
    return known;
}

}   // namespace

const Oracle* oracleOf(const Row& row) {
    const auto [begin, end] = oracles().equal_range(row.function.operation);
    for (auto candidate = begin; candidate != end; ++candidate)
        if ((" " + candidate->second.types + " ").find(" " + row.function.letters + " ") != std::string::npos)
            return &candidate->second;
    return nullptr;
}

void whole(const std::string& operations, const std::string& types, const std::function<void(Sight& call)>& tell,
           bool ordinaryOnly) {
    for (const std::string& operation : split(operations, ' '))
        oracles().insert({operation, {types, ordinaryOnly, tell}});
}

void each(const std::string& operations, const std::string& types,
          const std::function<Expected(const Element& e)>& compute) {
    whole(operations, types, [compute](Sight& call) {
        const std::string result = call.results.empty() ? "" : call.results[0];
        const std::size_t n = result.empty() ? 1 : call.array(result.c_str()).size();
        const auto value = [&](std::size_t operand, std::size_t i) {
            if (operand >= call.operands.size()) return Number{};
            const std::vector<Number>& of = call.array(call.operands[operand].c_str());
            return of[of.size() == 1 ? 0 : i];
        };
        std::vector<Expected>& elements = call.wanted[result].elements;
        for (std::size_t i = 0; i < n; ++i) {
            const Number former = result.empty() ? Number{} : call.array(result.c_str())[i];
            elements.push_back(compute({call, call.real, i, value(0, i), value(1, i), former}));
        }
    });
}

}   // namespace test
