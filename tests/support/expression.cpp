#include "expression.h"

#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "vekm6.h"

namespace test {

namespace {

struct Constant {
    const char* name;
    long double value;
};
constexpr Constant constants[] = {{"NULL", 0}, {"INFINITY", __builtin_infl()}, {"NAN", __builtin_nanl("")}};

bool isConstant(const std::string& name, long double& value) {
    for (const Constant& constant : constants)
        if (name == constant.name) {
            value = constant.value;
            return true;
        }
    return false;
}

// Evaluates while it reads; both sides of && and || are always read.
class Reader {
public:
    Reader(const std::string& of, const Names& by) : text(of), names(by) {}
    long double all() {
        const long double value = binary(0);
        skip();
        if (at != text.size()) fail();
        return value;
    }

private:
    const std::string& text;
    const Names& names;
    std::size_t at = 0;

    struct Operator {
        const char* sign;
        int precedence;
        long double (*apply)(long double, long double);
    };
    static long double bits(long double a, long double b) {
        return static_cast<long double>(static_cast<std::int64_t>(a) & static_cast<std::int64_t>(b));
    }
    static const Operator* operators() {
        using L = long double;
        static constexpr Operator known[] = {
            {"||", 1, [](L a, L b) -> L { return a != 0 || b != 0; }},
            {"&&", 2, [](L a, L b) -> L { return a != 0 && b != 0; }},
            {"==", 4, [](L a, L b) -> L { return a == b; }},
            {"!=", 4, [](L a, L b) -> L { return a != b; }},
            {"<=", 5, [](L a, L b) -> L { return a <= b; }},
            {">=", 5, [](L a, L b) -> L { return a >= b; }},
            {"&", 3, bits},
            {"<", 5, [](L a, L b) -> L { return a < b; }},
            {">", 5, [](L a, L b) -> L { return a > b; }},
            {"+", 6, [](L a, L b) -> L { return a + b; }},
            {"-", 6, [](L a, L b) -> L { return a - b; }},
            {"*", 7, [](L a, L b) -> L { return a * b; }},
            {"/", 7, [](L a, L b) -> L { return b == 0 ? 0 : std::trunc(a / b); }},
            {"^", 8, [](L a, L b) -> L { return std::pow(a, b); }},
            {nullptr, 0, nullptr},
        };
        return known;
    }

    long double binary(int least) {
        long double left = unary();
        for (const Operator* found; (found = next(least)) != nullptr;) {
            at += std::string(found->sign).size();
            left = found->apply(left, binary(found->precedence + 1));
        }
        return left;
    }
    const Operator* next(int least) {
        skip();
        for (const Operator* of = operators(); of->sign != nullptr; ++of)
            if (text.compare(at, std::string(of->sign).size(), of->sign) == 0)
                return of->precedence >= least ? of : nullptr;
        return nullptr;
    }
    long double unary() {
        if (take('-')) return -unary();
        if (take('!')) return unary() == 0;
        if (take('(')) {
            const long double value = binary(0);
            expect(')');
            return value;
        }
        skip();
        if (at < text.size() && std::isdigit(static_cast<unsigned char>(text[at])) != 0) return number();
        return named();
    }
    long double number() {
        char* end = nullptr;
        const long double value = std::strtold(text.c_str() + at, &end);
        at = static_cast<std::size_t>(end - text.c_str());
        if (at < text.size() && text[at] == 'f') ++at;
        return value;
    }
    long double named() {
        const std::string name = word();
        long double value = 0;
        if (name.empty()) fail();
        if (isConstant(name, value)) return value;
        if (!take('(')) return names(name, "");
        if (name == "max") {
            const long double first = binary(0);
            expect(',');
            value = std::fmax(first, binary(0));
        } else {
            value = names(word(), name);
        }
        expect(')');
        return value;
    }
    std::string word() {
        skip();
        const std::size_t begin = at;
        while (at < text.size() &&
               (std::isalnum(static_cast<unsigned char>(text[at])) != 0 || text[at] == '_' || text[at] == '.'))
            ++at;
        return text.substr(begin, at - begin);
    }
    bool take(char sign) {
        skip();
        if (at >= text.size() || text[at] != sign) return false;
        ++at;
        return true;
    }
    void expect(char sign) {
        if (!take(sign)) fail();
    }
    void skip() {
        while (at < text.size() && text[at] == ' ') ++at;
    }
    [[noreturn]] void fail() const {
        std::fprintf(stderr, "cannot read \"%s\" from character %zu on\n", text.c_str(), at);
        std::abort();
    }
};

}   // namespace

long double evaluate(const std::string& text, const Names& names) { return Reader(text, names).all(); }

std::vector<std::string> namesIn(const std::string& text) {
    std::vector<std::string> found;
    evaluate(text, [&](const std::string& name, const std::string&) {
        found.push_back(name);
        return 1.0L;
    });
    return found;
}

std::vector<int> constantsIn(const std::string& text) {
    std::vector<int> found;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool begins =
            i == 0 || (std::isalnum(static_cast<unsigned char>(text[i - 1])) == 0 && text[i - 1] != '.');
        if (begins && std::isdigit(static_cast<unsigned char>(text[i])) != 0) found.push_back(std::atoi(&text[i]));
    }
    return found;
}

std::vector<std::string> split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    const auto put = [&](std::size_t first, std::size_t last) {
        while (first < last && text[first] == ' ') ++first;
        while (last > first && text[last - 1] == ' ') --last;
        parts.push_back(text.substr(first, last - first));
    };
    int depth = 0;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        depth += text[i] == '(' || text[i] == '[';
        depth -= text[i] == ')' || text[i] == ']';
        if (depth != 0 || text[i] != separator) continue;
        put(begin, i);
        begin = i + 1;
    }
    if (!text.empty()) put(begin, text.size());
    return parts;
}

}   // namespace test
