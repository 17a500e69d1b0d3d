// Buffers that lie flush against unreadable pages, or at a chosen offset, with canaries in the slack.
#pragma once

#include <cstddef>
#include <cstring>
#include <string>

#include "os.h"

namespace test {

enum class Edge {
    front,
    back
};

class Guarded {
public:
    explicit Guarded(std::size_t capacityBytes)
        : capacity((capacityBytes + 128 + pageSize() - 1) / pageSize() * pageSize()),
          first(static_cast<unsigned char*>(mapBetweenGuards(capacity))) {}
    ~Guarded() { unmapBetweenGuards(first, capacity); }
    Guarded(const Guarded&) = delete;
    Guarded& operator=(const Guarded&) = delete;

    // `size` bytes whose first (last) byte is the first (last) one before the unreadable page; the rest is canary.
    void* place(std::size_t size, Edge edge) { return placeAt(size, edge == Edge::front ? 0 : capacity - size); }

    // `size` bytes at `offset` from a page's start.
    void* placeAt(std::size_t size, std::size_t offset) {
        begin = first + offset;
        bytes = size;
        std::memset(slackBefore(), canary, static_cast<std::size_t>(begin - slackBefore()));
        std::memset(begin, canary, bytes);
        std::memset(begin + bytes, canary, static_cast<std::size_t>(slackAfter() - (begin + bytes)));
        return begin;
    }

    // Empty when nothing outside the placed bytes was written.
    std::string damage() const {
        for (const unsigned char* p = slackBefore(); p < slackAfter(); ++p) {
            if (p == begin && bytes != 0)
                p += bytes - 1;
            else if (*p != canary)
                return "byte written at " + std::to_string(p - begin) + " of a buffer of " + std::to_string(bytes) +
                       " bytes";
        }
        return {};
    }

    const unsigned char* data() const { return begin; }
    std::size_t size() const { return capacity; }

    static constexpr unsigned char canary = 0xa5;

private:
    // As far as a stray vector store can reach, and then some.
    static constexpr std::size_t slack = 512;
    unsigned char* slackBefore() const { return begin - first > std::ptrdiff_t{slack} ? begin - slack : first; }
    unsigned char* slackAfter() const {
        unsigned char* end = first + capacity;
        return end - (begin + bytes) > std::ptrdiff_t{slack} ? begin + bytes + slack : end;
    }

    std::size_t capacity;
    unsigned char* first;
    unsigned char* begin = nullptr;
    std::size_t bytes = 0;
};

}   // namespace test
