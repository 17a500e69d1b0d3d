#include "rows.h"

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <map>

#include "reports.h"

namespace test {

namespace {

// Filled while the program starts, whose order of files is open.
std::map<std::string, void (*)()>& families() {
    static std::map<std::string, void (*)()> known;
    return known;
}
std::vector<Field>& fields() {
    static std::vector<Field> known = {{&recordTag<int>, "value", 0, typeOf<int>()}};
    return known;
}
std::vector<Row> table;

[[noreturn]] void fail(const std::string& what, const std::string& text) {
    std::fprintf(stderr, "%s: \"%s\"\n", what.c_str(), text.c_str());
    std::abort();
}

long double valueOf(const ArgumentType& type, const void* at) {
    const auto as = [at](auto value) {
        std::memcpy(&value, at, sizeof value);
        return static_cast<long double>(value);
    };
    if (type.pointer || type.letter == 'x') return as(std::uintptr_t{});
    switch (type.real()) {
        case 's': return as(float{});
        case 'd': return as(double{});
        case 'w': return as(std::int16_t{});
        case 'i': return as(std::int32_t{});
        case 'b': return as(static_cast<unsigned char>(0));
        default: return 0;
    }
}

Cell cellOf(const ArgumentType& type, long double value) {
    Cell cell;
    if (type.pointer) return cell;
    switch (type.real()) {
        case 's': cell.set(static_cast<float>(value)); break;
        case 'd': cell.set(static_cast<double>(value)); break;
        case 'w': cell.set(static_cast<std::int16_t>(static_cast<std::int64_t>(value))); break;
        case 'i': cell.set(static_cast<std::int32_t>(static_cast<std::int64_t>(value))); break;
        default: break;
    }
    return cell;
}

std::string before(const std::string& name, char sign) { return name.substr(0, name.find(sign)); }
std::string after(const std::string& name, char sign) {
    const std::size_t at = name.find(sign);
    return at == std::string::npos ? "" : name.substr(at + 1);
}

const Field* fieldOf(const ArgumentType& type, const std::string& name) {
    for (const Field& field : fields())
        if (field.record == type.record && name == field.name) return &field;
    return nullptr;
}

// anyZero(src), anyNegative(src): of a buffer's elements.
bool anyElement(const Row& row, const std::string& name, const std::string& function, const Cells& cells) {
    const auto index = static_cast<std::size_t>(row.index(name));
    const Argument& buffer = row.arguments[index];
    const auto* bytes = cells[index].get<const unsigned char*>();
    if (bytes == nullptr) return false;
    const std::size_t n = row.elements(buffer, cells);
    ArgumentType type = buffer.type;
    type.pointer = false;
    for (std::size_t i = 0; i < n; ++i) {
        const unsigned char* element = bytes + i * type.bytes;
        const long double re = valueOf(type, element);
        const long double im = type.isComplex() ? valueOf(type, element + type.realBytes()) : 0;
        if (function == "anyNegative" ? re < 0 : re == 0 && im == 0) return true;
    }
    return false;
}

constexpr const char* roleNames[] = {"in",   "out",    "apart", "inout", "length", "order",  "scalar",
                                     "mode", "factor", "flags", "plain", "record", "pointer"};

Argument parseArgument(const std::string& text, const ArgumentType& type) {
    const std::string head = before(text, '=');
    const std::vector<std::string> words = split(before(head, '['), ' ');
    if (words.size() != 2) fail("an argument is a role and a name", text);
    const auto role = std::find(std::begin(roleNames), std::end(roleNames), words[0]);
    if (role == std::end(roleNames)) fail("no such role", text);
    Argument argument = {static_cast<Role>(role - std::begin(roleNames)), words[1], before(after(head, '['), ']'),
                         split(after(text, '='), '|'), type};
    if (argument.role == Role::factor) {
        argument.size = "1";
        if (argument.values.empty())
            argument.values = split("1|0|-1|2|15|16|17|31|33|-3|-15|-16|-2147483648|2147483647|null", '|');
    }
    if (argument.role == Role::mode && argument.values.empty()) argument.values = {"0", "1", "2", "3", "4", "5"};
    if (argument.isBuffer() && (argument.size.empty() || !type.pointer)) fail("an array needs a size", text);
    if (argument.isWritten() && type.constant) fail("the array is constant", text);
    return argument;
}

std::vector<Check> parseChecks(const std::string& text) {
    std::vector<Check> checks;
    for (std::string one : split(text, ';')) {
        Check check;
        check.goesOn = one[0] == '+';
        check.ends = one[0] == '=';
        if (check.goesOn || check.ends) one.erase(0, 1);
        const std::size_t colon = one.find(": ");
        check.message = one.substr(0, colon);
        check.condition = colon == std::string::npos ? one : one.substr(colon + 2);
        checks.push_back(check);
    }
    return checks;
}

}   // namespace

// ---- Rows -----------------------------------------------------------------------------------------------------------

int Row::index(const std::string& argument) const {
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (arguments[i].name == argument) return static_cast<int>(i);
    return -1;
}

int Row::sizeArgument() const {
    for (std::size_t i = 0; i < arguments.size(); ++i)
        if (arguments[i].role == Role::length || arguments[i].role == Role::order) return static_cast<int>(i);
    return -1;
}

bool Row::takesOrder() const {
    const int at = sizeArgument();
    return at >= 0 && arguments[static_cast<std::size_t>(at)].role == Role::order;
}

bool Row::hasBuffers() const {
    return std::any_of(arguments.begin(), arguments.end(), [](const Argument& of) { return of.isBuffer(); });
}

long double Row::value(const std::string& expression, const Cells& cells) const {
    return evaluate(expression, [&](const std::string& name, const std::string& function) -> long double {
        const int at = index(before(name, '.'));
        if (at < 0) fail(this->name() + " has no argument " + name, expression);
        if (!function.empty()) return anyElement(*this, name, function, cells) ? 1 : 0;
        const ArgumentType& type = arguments[static_cast<std::size_t>(at)].type;
        const Cell& cell = cells[static_cast<std::size_t>(at)];
        const std::string part = after(name, '.');
        if (part.empty()) return valueOf(type, cell.bytes);
        if (!type.pointer) return valueOf(type, cell.bytes + (part == "im" ? type.realBytes() : 0));
        const Field* field = fieldOf(type, part);
        if (field == nullptr) fail(this->name() + " has no field " + name, expression);
        const auto* record = cell.get<const unsigned char*>();
        return record == nullptr ? 0 : valueOf(field->type, record + field->offset);
    });
}

std::size_t Row::elements(const Argument& buffer, const Cells& cells) const {
    const long double count = value(buffer.size, cells);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
}

int Row::choices() const {
    int most = 1;
    for (const Argument& argument : arguments) most *= std::max(1, static_cast<int>(argument.values.size()));
    return most;
}

Cells Row::plain(int size, int choice) const {
    Cells cells(arguments.size());
    const int sized = sizeArgument();
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const Argument& argument = arguments[i];
        if (static_cast<int>(i) == sized && argument.values.empty()) {
            cells[i].set(size);
        } else if (!argument.values.empty()) {
            const int of = static_cast<int>(argument.values.size());
            const std::string& chosen = argument.values[static_cast<std::size_t>(choice % of)];
            if (argument.role == Role::factor)
                cells[i].set(chosen == "null" ? noFactor : static_cast<std::int64_t>(value(chosen, cells)));
            else
                cells[i] = cellOf(argument.type, value(chosen, cells));
            choice /= of;
        } else if (argument.role == Role::scalar) {
            const bool integer = argument.type.real() == 'w' || argument.type.real() == 'i';
            cells[i] = cellOf(argument.type, integer ? 3 : 0.5L);
            const Cell im = cellOf(argument.type, integer ? -2 : 0.25L);
            if (argument.type.isComplex())
                std::memcpy(cells[i].bytes + argument.type.realBytes(), im.bytes, argument.type.realBytes());
        }
    }
    return cells;
}

Cells Row::passedOn(const std::string& names, const Cells& cells) const {
    Cells passed;
    for (const std::string& name : split(names, ' ')) {
        passed.emplace_back();
        if (const int at = index(name); at >= 0)
            passed.back() = cells[static_cast<std::size_t>(at)];
        else
            passed.back().set(std::stoi(name));
    }
    return passed;
}

std::string Row::expectedReports(const Cells& cells, VekStatus& status) const {
    std::string text;
    if (group.gate == Gate::clears) status = VEK_StsOk;
    if (inner.name.empty()) {
        bool failed = false;
        for (const Check& check : checks) {
            if (failed && !check.goesOn) break;   // the end of a stage that reports all
            if (value(check.condition, cells) == 0) continue;
            if (check.ends) break;
            text += reportLine(VEK_StsBadArg, name(), check.message, group.module);
            status = VEK_StsBadArg;
            failed = true;
            if (!check.goesOn) break;
        }
        return text;
    }
    text += row(inner.name).expectedReports(passedOn(inner.first, cells), status);
    if (!inner.both.empty() && value(inner.both, cells) != 0)
        text += row(inner.name).expectedReports(passedOn(inner.second, cells), status);
    if (status < 0) text += reportLine(VEK_StsBacktrace, name(), inner.message, group.module);
    return text;
}

std::string Row::lateReports(const Cells& cells, VekStatus& status) const {
    std::string text;
    for (const Check& check : late) {
        if (value(check.condition, cells) == 0) continue;
        text += reportLine(VEK_StsBadArg, name(), check.message, group.module);
        status = VEK_StsBadArg;
    }
    return text;
}

std::string Row::noMemoryReports(std::size_t request) const {
    const std::vector<std::string> messages = split(group.noMemory, ';');
    return reportLine(group.noMemoryStatus, name(), messages[std::min(request, messages.size() - 1)], group.module);
}

bool Row::computesBeforeFailing(const Cells& cells) const {
    if (inner.name.empty()) return false;
    VekStatus status = VEK_StsOk;
    return row(inner.name).expectedReports(passedOn(inner.first, cells), status).empty();
}

Cell Row::expectedFailure(VekStatus status) const {
    Cell cell;
    if (group.leavesStatus) cell.set(status);
    if (group.returnsStatus && status < 0) cell.set(Reports::answer(inner.name.empty() ? status : VEK_StsBacktrace));
    return cell;
}

const std::vector<Row>& rows() {
    if (table.empty())
        for (const auto& [family, addRows] : families()) addRows();
    return table;
}

const Row& row(const std::string& name) {
    static std::map<std::string, const Row*> byName;
    if (byName.empty())
        for (const Row& candidate : rows()) byName[candidate.name()] = &candidate;
    const auto found = byName.find(name);
    if (found == byName.end()) fail("no row", name);
    return *found->second;
}

std::vector<std::string> rowNames(bool (*wanted)(const Row& row)) {
    std::vector<std::string> names;
    for (const Row& candidate : rows())
        if (wanted(candidate)) names.push_back(candidate.name());
    return names;
}

// ---- Provoking ------------------------------------------------------------------------------------------------------

void apply(const Changes& changes, Cells& cells) {
    for (const Change& change : changes) {
        Cell& cell = cells[static_cast<std::size_t>(change.argument)];
        unsigned char* to = change.inRecord ? cell.get<unsigned char*>() : cell.bytes;
        if (to != nullptr) std::memcpy(to + change.offset, change.value.bytes, change.bytes);
    }
}

namespace {

// What may make a condition hold that looks at a value of this type, the likeliest first.
std::vector<Cell> hostileValues(const ArgumentType& type, const Cell& now, const std::vector<int>& constants,
                                const std::vector<long double>& others) {
    std::vector<Cell> values;
    const auto put = [&](long double value) { values.push_back(cellOf(type, value)); };
    if (type.pointer || type.letter == 'x') {
        values.push_back({});
        return values;
    }
    if (type.letter == 'i') {
        const int given = now.get<int>();
        int all = 0;
        for (const int constant : constants) all |= constant;
        put(given | all);
        put(given & ~all);
        for (const int constant : constants) {
            put(given | constant);
            put(given & ~constant);
        }
        for (const long double value : {0.0L, -1.0L, 32.0L}) put(value);
        put(INT_MIN);
        put(INT_MAX);
        put(1 << 30);
    } else if (type.letter == 's' || type.letter == 'd') {
        put(-1);
        put(type.letter == 's' ? -0x1p-149L : -0x1p-1074L);
    }
    put(0);
    if (type.isComplex()) {   // zeros of either sign
        Cell cell;
        const Cell minus = cellOf(type, -0.0L);
        std::memcpy(cell.bytes + type.realBytes(), minus.bytes, type.realBytes());
        values.push_back(cell);
    }
    for (const int constant : constants)
        for (const int beside : {0, 1, -1}) put(static_cast<long double>(constant) + beside);
    for (const long double other : others)
        for (const int beside : {0, 1, -1}) put(other + beside);
    return values;
}

std::vector<Changes> provocations(const Row& of, const Cells& cells, const std::string& condition) {
    constexpr std::size_t enough = 3;
    const std::vector<int> constants = constantsIn(condition);
    std::vector<long double> others;
    std::vector<std::string> names = namesIn(condition);
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    for (const std::string& name : names) others.push_back(of.value(name, cells));

    std::vector<Change> candidates;
    for (const std::string& name : names) {
        const int at = of.index(before(name, '.'));
        const Argument& argument = of.arguments[static_cast<std::size_t>(at)];
        const Cell& cell = cells[static_cast<std::size_t>(at)];
        const Field* field = argument.type.pointer ? fieldOf(argument.type, after(name, '.')) : nullptr;
        if (field == nullptr) {
            for (const Cell& value : hostileValues(argument.type, cell, constants, others))
                candidates.push_back(
                    {at, 0, argument.type.pointer ? sizeof(void*) : argument.type.bytes, false, value});
        } else if (const auto* record = cell.get<const unsigned char*>(); record != nullptr) {
            const std::size_t bytes = field->type.pointer ? sizeof(void*) : field->type.bytes;
            Cell now;
            std::memcpy(now.bytes, record + field->offset, bytes);
            for (const Cell& value : hostileValues(field->type, now, constants, others))
                candidates.push_back({at, field->offset, bytes, true, value});
        }
    }

    std::vector<Changes> found;
    const auto holdsAfter = [&](const Changes& changes) {
        Cells changed = cells;
        Changes undo = changes;   // records are changed where they lie
        for (Change& change : undo)
            if (change.inRecord)
                std::memcpy(change.value.bytes,
                            cells[static_cast<std::size_t>(change.argument)].get<unsigned char*>() + change.offset,
                            change.bytes);
        apply(changes, changed);
        VekStatus status = VEK_StsOk;
        const bool holds = of.value(condition, changed) != 0 && !of.expectedReports(changed, status).empty();
        for (const Change& change : undo)
            if (change.inRecord) apply({change}, changed);
        return holds;
    };
    const auto isNew = [&](const Changes& changes) {
        return std::none_of(found.begin(), found.end(), [&](const Changes& known) {
            return std::equal(known.begin(), known.end(), changes.begin(), changes.end(),
                              [](const Change& a, const Change& b) {
                                  return a.argument == b.argument && a.offset == b.offset && a.value == b.value;
                              });
        });
    };
    const auto tryOut = [&](const Changes& changes) {
        if (found.size() < enough && isNew(changes) && holdsAfter(changes)) found.push_back(changes);
    };
    for (const Change& candidate : candidates) tryOut({candidate});
    if (found.empty())
        for (const Change& first : candidates)
            for (const Change& second : candidates) tryOut({first, second});
    if (found.empty()) fail(of.name() + ": cannot be provoked", condition);
    return found;
}

}   // namespace

std::vector<Wrong> wrongs(const Row& of, const Cells& cells) {
    std::vector<Wrong> all;
    for (const Check& check : of.checks)
        if (!check.ends) all.push_back({check.message, provocations(of, cells, check.condition)});
    if (of.inner.name.empty()) return all;
    for (const std::string& half : {of.inner.first, of.inner.second}) {
        if (half.empty()) continue;
        const std::vector<std::string> names = split(half, ' ');
        for (Wrong& wrong : wrongs(row(of.inner.name), of.passedOn(half, cells))) {
            for (Changes& changes : wrong.ways)
                for (Change& change : changes)
                    change.argument = of.index(names[static_cast<std::size_t>(change.argument)]);
            std::erase_if(wrong.ways, [](const Changes& changes) {   // of what the caller does not pass
                return std::any_of(changes.begin(), changes.end(), [](const Change& of) { return of.argument < 0; });
            });
            if (!wrong.ways.empty()) all.push_back(wrong);
        }
    }
    return all;
}

// ---- For the row files ----------------------------------------------------------------------------------------------

RegisterRows::RegisterRows(const char* family, void (*addRows)()) { families()[family] = addRows; }

RegisterField::RegisterField(const Field& field) { fields().push_back(field); }

void add(const Group& group, const std::string& arguments, const std::string& checks, const Functions& functions,
         const Inner& inner) {
    const std::vector<std::string> texts = split(arguments, ',');
    for (const Function& function : functions) {
        Row made = {function, group, {}, parseChecks(checks), parseChecks(group.late), inner};
        if (texts.size() != function.arguments.size()) fail(function.name + " takes other arguments", arguments);
        for (std::size_t i = 0; i < texts.size(); ++i)
            made.arguments.push_back(parseArgument(texts[i], function.arguments[i]));
        table.push_back(made);
    }
}

}   // namespace test
