// Comma-separated values, as spreadsheets read them.

#include "base/csv.h"

#include <utility>

namespace kv {

static constexpr std::wstring_view kQuoted = L",;\"\r\n";
static constexpr std::wstring_view kFormulaStarts = L"=+-@\t\r";

static void AppendCell(std::wstring& line, const std::wstring& cell);
static wchar_t DividerOf(std::wstring_view text);

std::wstring CsvLine(std::span<const std::wstring> cells) {
    std::wstring line;
    for (const std::wstring& cell : cells) {
        if (&cell != cells.data()) line += L',';
        AppendCell(line, cell);
    }
    return line + L"\r\n";
}

std::wstring HarmlessCell(std::wstring text) {
    const bool isFormula = !text.empty() && kFormulaStarts.find(text.front()) != std::wstring_view::npos;
    return isFormula ? L'\'' + text : text;
}

std::wstring CellAsWritten(std::wstring text) {
    const bool marked =
        text.size() > 1 && text.front() == L'\'' && kFormulaStarts.find(text[1]) != std::wstring_view::npos;
    if (marked) text.erase(0, 1);
    return text;
}

std::vector<std::vector<std::wstring>> CsvRows(std::wstring_view text) {
    const wchar_t divider = DividerOf(text);
    std::vector<std::vector<std::wstring>> rows;
    std::vector<std::wstring> row;
    std::wstring cell;
    bool quoted = false;    // inside quotes
    bool anything = false;  // in this line
    const auto endCell = [&] { row.push_back(std::exchange(cell, {})); };
    const auto endRow = [&] {
        if (anything) {
            endCell();
            rows.push_back(std::move(row));
        }
        row.clear();
        anything = false;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const wchar_t character = text[i];
        const bool isPair = quoted && character == L'"' && i + 1 < text.size() && text[i + 1] == L'"';
        const bool isLineEnd = character == L'\r' || character == L'\n';
        if (isPair) {
            cell += text[++i];
        } else if (character == L'"' && (quoted || cell.empty())) {
            quoted = !quoted;
            anything = true;
        } else if (!quoted && isLineEnd) {
            endRow();
        } else if (!quoted && character == divider) {
            endCell();
            anything = true;
        } else {
            cell += character;
            anything = true;
        }
    }
    endRow();
    return rows;
}

std::wstring_view WholeRows(std::wstring_view text) {
    bool quoted = false;
    std::size_t end = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == L'"') quoted = !quoted;
        if (text[i] == L'\n' && !quoted) end = i + 1;
    }
    return text.substr(0, end);
}

// The first divider outside quotes.
static wchar_t DividerOf(std::wstring_view text) {
    bool quoted = false;
    for (const wchar_t character : text) {
        if (character == L'"') quoted = !quoted;
        if (quoted) continue;
        if (character == L',' || character == L';') return character;
        if (character == L'\n') break;
    }
    return L',';
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
