// Captures the calling thread's reports.
#pragma once

#include <string>
#include <vector>

#include "vekm6.h"

namespace test {

struct Report {
    VekStatus status;
    std::string name;
    std::string message;   // "(null)" for none
    std::string module;
    int line;
};

std::string describe(const std::vector<Report>& reports);

// While it lives, the thread's handler is one that records and answers what no library handler would; the status is
// cleared before and after.
class Reports {
public:
    Reports();
    ~Reports();
    Reports(const Reports&) = delete;
    Reports& operator=(const Reports&) = delete;

    // What the handler answers to a report of this status.
    static VekStatus answer(VekStatus status) { return static_cast<VekStatus>(static_cast<unsigned>(status) - 1000); }

    const std::vector<Report>& seen() const { return recorded; }
    std::size_t count() const { return seen().size(); }
    // Forgets the reports and clears the thread's status.
    void clear();
    // The reports as lines "status name: message (module)"; empty when there is none.
    std::string text() const { return describe(seen()); }

private:
    static VekStatus VEKAPI record(VekStatus status, const char* name, const char* message, const char* file, int line);

    std::vector<Report> recorded;
    VekErrorHandler previous;
    Reports* outer;
};

std::string reportLine(VekStatus status, const std::string& name, const std::string& message,
                       const std::string& module);

}   // namespace test
