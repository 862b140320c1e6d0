// Comma-separated values, as spreadsheets read them.

#include "base/csv.h"

namespace kv {

static constexpr std::wstring_view kQuoted = L",;\"\r\n";
static constexpr std::wstring_view kFormulaStarts = L"=+-@\t\r";

static void AppendCell(std::wstring& line, const std::wstring& cell);

std::wstring CsvLine(std::span<const std::wstring> cells) {
    std::wstring line;
    for (const std::wstring& cell : cells) {
        if (&cell != cells.data()) line += L',';
        AppendCell(line, cell);
    }
    return line + L"\r\n";
}

std::vector<std::vector<std::wstring>> CsvRows(std::wstring_view text) {
    std::vector<std::vector<std::wstring>> rows;
    std::vector<std::wstring> row(1);
    bool quoted = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t character = text[i];
        const bool doubled = quoted && text.substr(i).starts_with(L"\"\"");
        if (doubled) {
            row.back() += text[++i];
        } else if (character == L'"') {
            quoted = !quoted;
        } else if (!quoted && character == L',') {
            row.emplace_back();
        } else if (!quoted && text.substr(i).starts_with(L"\r\n")) {
            rows.push_back(std::move(row));
            row.assign(1, {});
            ++i;
        } else {
            row.back() += character;
        }
    }
    return rows;
}

std::wstring HarmlessCell(std::wstring text) {
    const bool isFormula = !text.empty() && kFormulaStarts.find(text.front()) != std::wstring_view::npos;
    return isFormula ? L'\'' + text : text;
}

// Blanks at an end are kept by every reader only inside quotes.
static void AppendCell(std::wstring& line, const std::wstring& cell) {
    const bool plain = cell.find_first_of(kQuoted) == std::wstring::npos &&
                       (cell.empty() || (cell.front() != L' ' && cell.back() != L' '));
    if (plain) {
        line += cell;
        return;
    }
    line += L'"';
    for (const wchar_t character : cell) line.append(character == L'"' ? 2 : 1, character);
    line += L'"';
}

}  // namespace kv
