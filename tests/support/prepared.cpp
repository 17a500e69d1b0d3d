#include "prepared.h"

#include <memory>
#include <mutex>

#include "data.h"

namespace test {

namespace {

// Mappings are costly: small ones are used again, by whichever thread comes next. (Not thread-local: with mingw's
// threads an object's destructor runs after its storage is gone.)
constexpr std::size_t small = 1 << 16;
std::mutex poolMutex;
std::vector<std::unique_ptr<Guarded>> pool;

template <class T>
void fillWith(unsigned char* bytes, std::size_t count, Data& data) {
    for (std::size_t i = 0; i < count; ++i) {
        T value;
        if constexpr (std::is_integral_v<T>)
            value = static_cast<T>(data.bits());
        else
            value = static_cast<T>(static_cast<float>(data.uniform(0.25, 1)));
        std::memcpy(bytes + i * sizeof(T), &value, sizeof value);
    }
}

}   // namespace

std::unique_ptr<Guarded, Prepared::Return> Prepared::borrow(std::size_t bytes) {
    if (bytes > small) return std::unique_ptr<Guarded, Return>(new Guarded(bytes));
    const std::lock_guard<std::mutex> lock(poolMutex);
    if (pool.empty()) pool.push_back(std::make_unique<Guarded>(small));
    std::unique_ptr<Guarded, Return> memory(pool.back().release());
    pool.pop_back();
    return memory;
}

void Prepared::Return::operator()(Guarded* memory) const {
    std::unique_ptr<Guarded> owned(memory);
    const std::lock_guard<std::mutex> lock(poolMutex);
    if (owned->size() <= 2 * small) pool.push_back(std::move(owned));
}

Prepared::Prepared(const Row& of, int size, const std::vector<Place>& places) : cells(of.plainCells(size)), row(of) {
    Data data(static_cast<std::uint64_t>(size) + 77);
    for (std::size_t i = 0; i < row.arguments.size(); ++i) {
        const Argument& argument = row.arguments[i];
        if (!argument.isBuffer()) continue;
        const std::size_t bytes = row.elements(argument, size) * argument.type.bytes;
        const Place place = i < places.size() ? places[i] : Place{};
        std::unique_ptr<Guarded, Return> borrowed = borrow(bytes + 1024);
        Guarded& memory = *borrowed;
        auto* start =
            static_cast<unsigned char*>(place.where == Place::front  ? memory.place(bytes, Edge::front)
                                        : place.where == Place::back ? memory.place(bytes, Edge::back)
                                                                     : memory.placeAt(bytes, 256 + place.bytes));
        if (argument.role != Role::out) {
            const char real = argument.type.real;
            if (real == 'f') fillWith<float>(start, bytes / 4, data);
            if (real == 'd') fillWith<double>(start, bytes / 8, data);
            if (real == 'w') fillWith<std::int16_t>(start, bytes / 2, data);
            if (real == 'i') fillWith<std::int32_t>(start, bytes / 4, data);
        }
        cells[i].set<void*>(start);
        buffers.push_back({i, bytes, std::move(borrowed)});
    }
    outputsBefore = outputs();
    for (std::size_t i = 0; i < buffers.size(); ++i) inputsBefore.push_back(held(false, i));
}

std::vector<unsigned char> Prepared::held(bool outputsWanted, std::size_t index) const {
    const Buffer& buffer = buffers[index];
    const bool isOutput = row.arguments[buffer.argument].role != Role::in;
    if (isOutput != outputsWanted) return {};
    const unsigned char* start = buffer.memory->data();
    return {start, start + buffer.size};
}

std::vector<unsigned char> Prepared::outputs() const {
    std::vector<unsigned char> all;
    for (std::size_t i = 0; i < buffers.size(); ++i) {
        const auto one = held(true, i);
        all.insert(all.end(), one.begin(), one.end());
    }
    return all;
}

std::string Prepared::damage() const {
    std::string found;
    for (std::size_t i = 0; i < buffers.size(); ++i) {
        const std::string& name = row.arguments[buffers[i].argument].name;
        const std::string around = buffers[i].memory->damage();
        if (!around.empty()) found += name + ": " + around + "\n";
        if (held(false, i) != inputsBefore[i]) found += name + ": input written\n";
    }
    return found;
}

}   // namespace test
