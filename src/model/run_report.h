// The report of a run: its record as a file that the user can open.
#pragma once

#include <string>

#include "base/run_file.h"
#include "model/run_record.h"

namespace kv {

// A table in the user's application data, written as the run goes. A report that cannot be written stops
// nothing.
class RunReport {
public:
    // Begins the file with what is known of the run. command: ASCII name
    explicit RunReport(const char* command);
    RunReport(const RunReport&) = delete;
    RunReport& operator=(const RunReport&) = delete;
    // Adds how long the run took.
    ~RunReport();

    void Add(const RunEntry& entry);

    // Full path; empty when there is no file.
    const std::wstring& Path() const { return file_.Path(); }

private:
    unsigned long long start_;
    RunFile file_;
};

}  // namespace kv
