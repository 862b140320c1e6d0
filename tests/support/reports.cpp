#include "support/reports.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "simulator/report/utf8.h"
#include "support/plugin_home.h"

namespace test {

namespace fs = std::filesystem;

namespace {

using Cells = std::vector<std::wstring>;

// The cells of one line; line ends inside quotes do not occur in these files.
Cells Split(const std::wstring& line) {
    Cells cells(1);
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const bool doubled = quoted && line[i] == L'"' && i + 1 < line.size() && line[i + 1] == L'"';
        if (doubled)
            cells.back() += line[++i];
        else if (line[i] == L'"')
            quoted = !quoted;
        else if (line[i] == L',' && !quoted)
            cells.emplace_back();
        else
            cells.back() += line[i];
    }
    return cells;
}

std::vector<Cells> Rows(const fs::path& file) {
    std::string bytes = ReadBytes(file);
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.erase(0, 3);
    std::istringstream lines(bytes);
    std::vector<Cells> rows;
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with('\r')) line.pop_back();
        rows.push_back(Split(sim::Wide(line)));
    }
    return rows;
}

fs::path ReportFolder(const sim::SimHost& host) {
    return const_cast<sim::SimHost&>(host).State().user.localData / "Korvane" / "reports";
}

}  // namespace

// Of a report that broke off, cells may be missing.
static std::wstring Cell(const std::map<std::wstring, std::wstring>& row, const std::wstring& title) {
    const auto found = row.find(title);
    return found == row.end() ? std::wstring() : found->second;
}

std::wstring Report::Head(const std::wstring& title) const {
    const auto found = head.find(title);
    return found == head.end() ? std::wstring() : found->second;
}

std::size_t Report::Count(std::wstring_view result) const {
    const auto matches = [&](const auto& row) { return Cell(row, L"结果") == result; };
    return static_cast<std::size_t>(std::count_if(rows.begin(), rows.end(), matches));
}

std::vector<std::wstring> Report::Done(const std::wstring& title) const {
    std::vector<std::wstring> texts;
    for (const auto& row : rows)
        if (Cell(row, L"结果") == L"完成") texts.push_back(Cell(row, title));
    return texts;
}

std::wstring Report::Reason(std::wstring_view model) const {
    for (const auto& row : rows)
        if (Cell(row, L"模型") == model && Cell(row, L"结果") == L"失败") return Cell(row, L"原因");
    return {};
}

std::vector<std::wstring> ReportFiles(const sim::SimHost& host) {
    std::vector<std::wstring> names;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(ReportFolder(host), error))
        names.push_back(entry.path().filename().wstring());
    return names;
}

// The newest: the time stands in the name.
Report LastReport(const sim::SimHost& host) {
    Report report;
    std::vector<std::wstring> names = ReportFiles(host);
    const auto stamp = [](const std::wstring& name) {
        return name.substr(std::min(name.find(L'_'), name.size()));
    };
    std::sort(names.begin(), names.end(),
              [&](const std::wstring& a, const std::wstring& b) { return stamp(a) < stamp(b); });
    if (names.empty()) return report;

    report.name = names.back();
    Cells titles;
    for (const Cells& row : Rows(ReportFolder(host) / names.back())) {
        if (titles.empty() && row.size() == 2) report.head[row[0]] = row[1];
        if (row.size() <= 2) continue;
        if (titles.empty()) {
            titles = row;
            continue;
        }
        auto& cells = report.rows.emplace_back();
        for (std::size_t i = 0; i < titles.size(); ++i)
            cells[titles[i]] = i < row.size() ? row[i] : std::wstring();
    }
    return report;
}

}  // namespace test
