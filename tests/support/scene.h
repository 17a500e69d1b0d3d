// A call of one row with its arrays and records in place, as set-up steps see it. Tests and benchmarks make their own
// kinds of it.
#pragma once

#include "rows.h"

namespace test {

// Set-up steps (Group::setUp) work with this, in tests and in benchmarks.
struct Scene {
    explicit Scene(const Row& of, const Cells& plain) : row(of), cells(plain) {}
    virtual ~Scene() = default;
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    const Row& row;
    Cells cells;   // what the call passes

    // An array of elements of that letter, which lives as long as the scene and holds what the row's inputs do.
    virtual void* array(char letter, std::size_t count) = 0;

    int number(const char* name) const { return cells[at(name)].get<int>(); }
    template <class T>
    T* pointer(const char* name) const {
        return static_cast<T*>(cells[at(name)].get<void*>());
    }
    Cell call() const { return row.function.call(cells); }

protected:
    // Makes the records ready, on a clear status; and releases what they own.
    void setUp();
    void tearDown();

private:
    std::size_t at(const char* name) const;
};

}   // namespace test
