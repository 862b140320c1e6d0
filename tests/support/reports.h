// Reports of runs as a user finds them.

#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/host/sim_host.h"

namespace test {

struct Report {
    std::wstring name;  // of the file
    std::map<std::wstring, std::wstring> head;
    std::vector<std::map<std::wstring, std::wstring>> rows;  // by column title

    std::wstring Head(const std::wstring& title) const;
    // Rows with this result.
    std::size_t Count(std::wstring_view result) const;
    // What stands in a column of the rows that say that all went well.
    std::vector<std::wstring> Done(const std::wstring& title) const;
    // The reason in the first failed row of a model; empty for none.
    std::wstring Reason(std::wstring_view model) const;
};

// The newest report in the user's application data; empty when there is none.
Report LastReport(const sim::SimHost& host);
std::vector<std::wstring> ReportFiles(const sim::SimHost& host);

}  // namespace test
