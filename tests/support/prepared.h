// A call of one row with its buffers in place.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cases.h"
#include "guarded.h"

namespace test {

// Where a buffer lies: flush against an unreadable page, or `offset` bytes beyond a cache line's start.
struct Place {
    enum {
        front,
        back,
        offset
    } where = offset;
    std::size_t bytes = 0;
};

class Prepared {
public:
    // Inputs hold ordinary positive values, outputs canaries. places: one per argument; missing ones are Place{}.
    Prepared(const Row& row, int size, const std::vector<Place>& places = {});

    Cells cells;   // what call() passes

    Cell call() const { return row.function.invoke(cells); }

    // The contents of the buffers that the row writes, one after the other.
    std::vector<unsigned char> outputs() const;
    // What is wrong with the memory beside the outputs: bytes written around a buffer or in an input. Empty: nothing.
    std::string damage() const;
    // As outputs(), but what they held before the call.
    const std::vector<unsigned char>& before() const { return outputsBefore; }

private:
    // Gives the mapping back for the next call to use.
    struct Return {
        void operator()(Guarded* memory) const;
    };
    struct Buffer {
        std::size_t argument;
        std::size_t size;
        std::unique_ptr<Guarded, Return> memory;
    };
    static std::unique_ptr<Guarded, Return> borrow(std::size_t bytes);

    const Row& row;
    std::vector<Buffer> buffers;
    std::vector<unsigned char> outputsBefore;
    std::vector<std::vector<unsigned char>> inputsBefore;
    std::vector<unsigned char> held(bool outputsWanted, std::size_t index) const;
};

}   // namespace test
