#include "prepared.h"

#include <algorithm>
#include <mutex>

namespace test {

namespace {

// Mappings are costly: small ones are used again, by whichever thread comes next. (Not thread-local: with mingw's
// threads an object's destructor runs after its storage is gone.)
constexpr std::size_t small = 1 << 16;
std::mutex poolMutex;
std::vector<std::unique_ptr<Guarded>> pool;

void giveBack(Guarded* memory) {
    std::unique_ptr<Guarded> owned(memory);
    const std::lock_guard<std::mutex> lock(poolMutex);
    if (owned->size() <= 2 * small) pool.push_back(std::move(owned));
}

std::unique_ptr<Guarded, void (*)(Guarded*)> borrow(std::size_t bytes) {
    if (bytes > small) return {new Guarded(bytes), giveBack};
    const std::lock_guard<std::mutex> lock(poolMutex);
    if (pool.empty()) pool.push_back(std::make_unique<Guarded>(small));
    Guarded* memory = pool.back().release();
    pool.pop_back();
    return {memory, giveBack};
}

template <class T>
void fillWith(unsigned char* bytes, std::size_t count, Data& data, Filling filling) {
    const std::vector<T> values = filling == Filling::mixed ? data.mixed<T>(count) : data.ordinary<T>(count);
    for (std::size_t i = 0; i < count; ++i) {
        T value = values[i];
        if constexpr (!std::is_integral_v<T>)
            if (filling == Filling::positive) value = static_cast<T>(static_cast<float>(data.uniform(0.25, 1)));
        std::memcpy(bytes + i * sizeof(T), &value, sizeof value);
    }
}

}   // namespace

void Prepared::fill(unsigned char* to, char real, std::size_t bytes) {
    switch (real) {
        case 's': return fillWith<float>(to, bytes / 4, data, options.filling);
        case 'd': return fillWith<double>(to, bytes / 8, data, options.filling);
        case 'w': return fillWith<std::int16_t>(to, bytes / 2, data, options.filling);
        case 'i': return fillWith<std::int32_t>(to, bytes / 4, data, options.filling);
        case 'b': return fillWith<unsigned char>(to, bytes, data, options.filling);
        default: return;   // garbage
    }
}

unsigned char* Prepared::place(int argument, bool input, bool record, std::size_t bytes, Place where) {
    auto memory = borrow(bytes + 1024);
    auto* start = static_cast<unsigned char*>(where.where == Place::front  ? memory->place(bytes, Edge::front)
                                              : where.where == Place::back ? memory->place(bytes, Edge::back)
                                                                           : memory->placeAt(bytes, 256 + where.bytes));
    blocks.push_back({argument, input, record, bytes, std::move(memory), {}});
    return start;
}

void* Prepared::array(char letter, std::size_t count) {
    const ArgumentType type = typeOfLetter(letter);
    const std::size_t bytes = count * type.bytes;
    unsigned char* start = place(-1, false, false, bytes, {Place::back, 0});
    fill(start, type.real(), bytes);
    return start;
}

Prepared::Prepared(const Row& of, const Cells& plain, const SceneOptions& how)
    : Scene(of, plain), blockOf(of.arguments.size(), -1), options(how), data(how.salt + 77) {
    const auto sourceOf = [&](int out) {
        for (const auto& [to, from] : options.aliases)
            if (to == out) return from;
        return -1;
    };
    // Arrays that are written first, so that an input may be one of them.
    for (const bool written : {true, false}) {
        for (std::size_t i = 0; i < row.arguments.size(); ++i) {
            const Argument& argument = row.arguments[i];
            const int at = static_cast<int>(i);
            if (!argument.isBuffer() || argument.isWritten() != written) continue;
            const std::size_t bytes = row.elements(argument, cells) * argument.type.bytes;
            const auto shared = std::find_if(options.aliases.begin(), options.aliases.end(),
                                             [&](const auto& pair) { return pair.second == at; });
            if (shared != options.aliases.end()) {
                cells[i] = cells[static_cast<std::size_t>(shared->first)];
                blockOf[i] = blockOf[static_cast<std::size_t>(shared->first)];
                continue;
            }
            blockOf[i] = static_cast<int>(blocks.size());
            unsigned char* start =
                place(at, !argument.isWritten(), false, bytes, i < options.places.size() ? options.places[i] : Place{});
            if (argument.role == Role::factor) {
                const int shift = static_cast<int>(cells[i].get<std::int64_t>());
                std::memcpy(start, &shift, sizeof shift);
            } else if (argument.isRead() || sourceOf(at) >= 0) {
                fill(start, argument.type.real(), bytes);
            }
            cells[i].set<void*>(start);
        }
    }
    for (std::size_t i = 0; i < row.arguments.size(); ++i)
        if (row.arguments[i].role == Role::record)
            cells[i].set<void*>(place(static_cast<int>(i), false, true, row.arguments[i].type.bytes, {Place::back, 0}));
    if (options.hostile != nullptr)
        options.hostile(*this);
    else
        setUp();
    for (std::size_t i = 0; i < row.arguments.size(); ++i) {
        if (row.arguments[i].role != Role::factor || plain[i].get<std::int64_t>() != noFactor) continue;
        const Cell pointer = std::exchange(cells[i], Cell{});
        VekStatus status = VEK_StsOk;
        if (!row.expectedReports(cells, status).empty()) cells[i] = pointer;
    }
    for (Block& block : blocks) block.before = block.held();
}

void Prepared::spoil(const Changes& changes) {
    apply(changes, cells);
    for (Block& block : blocks) block.before = block.held();
}

Prepared::~Prepared() {
    if (options.hostile == nullptr) tearDown();
}

std::vector<unsigned char> Prepared::outputs() const {
    std::vector<unsigned char> all;
    for (const Block& block : blocks)
        if (!block.input && !block.record)
            all.insert(all.end(), block.memory->data(), block.memory->data() + block.bytes);
    return all;
}

bool Prepared::untouched() const {
    return std::all_of(blocks.begin(), blocks.end(), [](const Block& of) { return of.held() == of.before; });
}

std::string Prepared::damage() const {
    std::string found;
    for (const Block& block : blocks) {
        const std::string name =
            block.argument < 0 ? "of the set-up" : row.arguments[static_cast<std::size_t>(block.argument)].name;
        const std::string around = block.memory->damage();
        if (!around.empty()) found += name + ": " + around + "\n";
        if (block.input && block.held() != block.before) found += name + ": input written\n";
    }
    return found;
}

const std::vector<unsigned char>& Prepared::initial(int argument) const {
    return blocks[static_cast<std::size_t>(blockOf[static_cast<std::size_t>(argument)])].before;
}
std::vector<unsigned char> Prepared::now(int argument) const {
    return blocks[static_cast<std::size_t>(blockOf[static_cast<std::size_t>(argument)])].held();
}

std::vector<double> realsAt(const void* start, std::size_t bytes, char real) {
    std::vector<double> values;
    const auto* at = static_cast<const unsigned char*>(start);
    const std::size_t step = real == 'd' ? sizeof(double) : real == 's' ? sizeof(float) : 1;
    for (std::size_t i = 0; i + step <= bytes; i += step) {
        double value = at[i];
        float single = 0;
        std::memcpy(real == 'd' ? static_cast<void*>(&value) : &single, at + i, step);
        values.push_back(real == 's' ? static_cast<double>(single) : value);
    }
    return values;
}

void releaseTables() {
    vekcFreeTwdTbls();
    vekzFreeTwdTbls();
    vekvFreeTwdTbls();
    vekFreeBitRevTbls();
}

std::vector<std::vector<std::pair<int, int>>> aliasings(const Row& of, const Cells& cells) {
    std::vector<std::vector<std::pair<int, int>>> all = {{}};
    for (std::size_t out = 0; out < of.arguments.size(); ++out) {
        const Argument& to = of.arguments[out];
        if (to.role != Role::out && to.role != Role::inout) continue;
        std::vector<std::pair<int, int>> both;
        for (std::size_t in = 0; in < of.arguments.size(); ++in) {
            const Argument& from = of.arguments[in];
            if (from.role != Role::in || from.type.letter != to.type.letter ||
                of.elements(from, cells) > of.elements(to, cells))
                continue;
            all.push_back({{static_cast<int>(out), static_cast<int>(in)}});
            both.emplace_back(static_cast<int>(out), static_cast<int>(in));
        }
        if (both.size() > 1) all.push_back(both);
    }
    return all;
}

}   // namespace test
