#include "reports.h"

namespace test {

namespace {

thread_local Reports* current = nullptr;

std::string orNull(const char* text) { return text != nullptr ? text : "(null)"; }

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

VekStatus VEKAPI Reports::record(VekStatus status, const char* name, const char* message, const char* file, int line) {
    current->recorded.push_back({status, orNull(name), orNull(message), orNull(file), line});
    return answer(status);
}

Reports::Reports() : previous(vekRedirectError(record)), outer(current) {
    current = this;
    clear();
}

Reports::~Reports() {
    clear();
    current = outer;
    vekRedirectError(previous);
}

void Reports::clear() {
    recorded.clear();
    vekSetErrStatus(VEK_StsOk);
}

}   // namespace test
