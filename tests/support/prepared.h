// The tests' scenes: arrays and records between unreadable pages.
#pragma once

#include <memory>

#include "data.h"
#include "guarded.h"
#include "scene.h"

namespace test {

// Where an array lies: flush against an unreadable page, or `bytes` beyond a cache line's start.
struct Place {
    enum {
        front,
        back,
        offset
    } where = offset;
    std::size_t bytes = 0;
};

enum class Filling {
    positive,   // [0.25, 1)
    ordinary,   // (-1, 1)
    mixed       // special values among them
};

struct SceneOptions {
    std::vector<Place> places = {};   // one per argument; missing ones are Place{}
    Filling filling = Filling::positive;
    std::uint64_t salt = 0;
    std::vector<std::pair<int, int>> aliases = {};   // arguments: an out, and the in that it is
    void (*hostile)(Scene& scene) = nullptr;         // takes the place of the set-up step
};

// With canaries around all that the call may write.
class Prepared : public Scene {
public:
    Prepared(const Row& row, const Cells& plain, const SceneOptions& options = {});
    Prepared(const Row& of, int size, const SceneOptions& options = {}) : Prepared(of, of.plain(size), options) {}
    ~Prepared() override;

    void* array(char letter, std::size_t count) override;

    // Before the call: makes arguments, or what they point to, wrong.
    void spoil(const Changes& changes);

    // The contents of what the row writes, one after the other; of records only the arrays that they were given.
    std::vector<unsigned char> outputs() const;
    // Whether those, and the records, hold what they held before the call.
    bool untouched() const;
    // What is wrong with the memory beside the outputs: bytes written around an array or in an input. Empty: nothing.
    std::string damage() const;

    // An argument's array before the call, and now.
    const std::vector<unsigned char>& initial(int argument) const;
    std::vector<unsigned char> now(int argument) const;

private:
    struct Block {
        int argument;   // -1: of a set-up step
        bool input, record;
        std::size_t bytes;
        std::unique_ptr<Guarded, void (*)(Guarded*)> memory;
        std::vector<unsigned char> before;

        std::vector<unsigned char> held() const { return {memory->data(), memory->data() + bytes}; }
    };
    std::vector<Block> blocks;
    std::vector<int> blockOf;   // of each argument; -1: none
    SceneOptions options;
    Data data;

    unsigned char* place(int argument, bool input, bool record, std::size_t bytes, Place place);
    void fill(unsigned char* to, char real, std::size_t bytes);
};

// The floats or doubles that stand in memory; of anything else the bytes.
std::vector<double> realsAt(const void* start, std::size_t bytes, char real);

// All tables of the thread; it keeps no more than 32 lengths of a type.
void releaseTables();

// All ways in which outs may be one of the ins; the first is none.
std::vector<std::vector<std::pair<int, int>>> aliasings(const Row& row, const Cells& cells);

}   // namespace test
