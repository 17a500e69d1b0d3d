#include "reports.h"

namespace test {

namespace {

thread_local std::vector<Report> recorded;

std::string orNull(const char* text) { return text != nullptr ? text : "(null)"; }

VekStatus VEKAPI record(VekStatus status, const char* name, const char* message, const char* file, int line) {
    recorded.push_back({status, orNull(name), orNull(message), orNull(file), line});
    return Reports::answer(status);
}

}   // namespace

std::string reportLine(VekStatus status, const std::string& name, const std::string& message,
                       const std::string& module) {
    return std::to_string(status) + " " + name + ": " + message + " (" + module + ")\n";
}

std::string describe(const std::vector<Report>& reports) {
    std::string text;
    for (const Report& report : reports) text += reportLine(report.status, report.name, report.message, report.module);
    return text;
}

Reports::Reports() : previous(vekRedirectError(record)) { clear(); }

Reports::~Reports() {
    clear();
    vekRedirectError(previous);
}

const std::vector<Report>& Reports::seen() const { return recorded; }

void Reports::clear() {
    recorded.clear();
    vekSetErrStatus(VEK_StsOk);
}

}   // namespace test
