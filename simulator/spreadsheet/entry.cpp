// What an entry becomes in a cell, as the original application reads it under a Chinese Windows.

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "simulator/report/utf8.h"
#include "simulator/spreadsheet/sheet.h"

namespace sim {

namespace {

constexpr int kDigitsKept = 15;
constexpr wchar_t kDateFormat[] = L"yyyy/m/d";
constexpr wchar_t kPercentFormat[] = L"0%";

CellValue TextValue(std::wstring_view text) {
    return {CellKind::kText, 0, std::wstring(text)};
}

std::wstring_view Trimmed(std::wstring_view text) {
    while (!text.empty() && text.front() == L' ') text.remove_prefix(1);
    while (!text.empty() && text.back() == L' ') text.remove_suffix(1);
    return text;
}

// Numbers keep 15 digits; the others become zeros.
double Shortened(double number) {
    std::array<char, 64> digits = {};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                   std::chars_format::scientific, kDigitsKept - 1);
    std::from_chars(digits.data(), end.ptr, number);
    return number;
}

std::optional<double> NumberOf(std::wstring_view entry) {
    const std::wstring_view text = Trimmed(entry);
    const bool plus = !text.empty() && text.front() == L'+';
    const std::string digits = Utf8(text.substr(plus ? 1 : 0));
    const bool begins = !digits.empty() && digits.find_first_of("0123456789.-") == 0;
    if (!begins || digits.find_first_not_of("0123456789.+-eE") != std::string::npos) return std::nullopt;
    double number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
    return Shortened(number);
}

// Days since the end of 1899, with the 29 February 1900 that the application believes in.
double DaySerial(int year, int month, int day) {
    const int shifted = month <= 2 ? year - 1 : year;
    const int era = shifted / 400;
    const int ofEra = shifted - era * 400;
    const int ofYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    const int days = era * 146097 + ofEra * 365 + ofEra / 4 - ofEra / 100 + ofYear - 719468 + 25569;
    return days < 61 ? days - 1 : days;
}

// "2024-1-2" or "2024/1/2".
std::optional<double> DateOf(std::wstring_view entry) {
    const std::string text = Utf8(Trimmed(entry));
    std::array<int, 3> parts = {};
    const char* at = text.data();
    const char* const end = at + text.size();
    for (std::size_t i = 0; i < parts.size(); ++i) {
        if (i > 0 && (at == end || (*at != '-' && *at != '/'))) return std::nullopt;
        if (i > 0) ++at;
        if (at == end || *at < '0' || *at > '9') return std::nullopt;
        at = std::from_chars(at, end, parts[i]).ptr;
    }
    const auto [year, month, day] = parts;
    const bool exists = year >= 1900 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 && day <= 31;
    if (at != end || !exists) return std::nullopt;
    return DaySerial(year, month, day);
}

// Not a grammar: enough to tell a formula from a text that only begins like one.
bool CanBeFormula(std::wstring_view formula) {
    int open = 0;
    for (const wchar_t c : formula) {
        if (c == L'(') ++open;
        if (c == L')' && --open < 0) return false;
    }
    const std::wstring_view operators = L"+-*/^&=<>,";
    return open == 0 && operators.find(formula.back()) == std::wstring_view::npos;
}

std::optional<CellValue> GeneralValue(std::wstring_view entry, std::wstring& format) {
    if (entry.front() == L'=' && entry.size() > 1) {
        if (!CanBeFormula(entry)) return std::nullopt;
        return CellValue{CellKind::kFormula, 0, std::wstring(entry)};
    }
    if (entry.front() == L'\'') return TextValue(entry.substr(1));
    const std::wstring upper = UpperName(entry);
    if (upper == L"TRUE" || upper == L"FALSE")
        return CellValue{CellKind::kTruth, upper == L"TRUE" ? 1.0 : 0.0, {}};
    if (const auto number = NumberOf(entry)) return CellValue{CellKind::kNumber, *number, {}};
    if (const auto date = DateOf(entry)) {
        format = format == kGeneralFormat ? kDateFormat : format;
        return CellValue{CellKind::kNumber, *date, {}};
    }
    const auto percent = entry.back() == L'%' ? NumberOf(entry.substr(0, entry.size() - 1)) : std::nullopt;
    if (!percent) return TextValue(entry);
    format = format == kGeneralFormat ? kPercentFormat : format;
    return CellValue{CellKind::kNumber, *percent / 100, {}};
}

}  // namespace

std::optional<CellValue> ValueOfEntry(std::wstring_view entry, std::wstring& numberFormat) {
    if (entry.empty()) return CellValue{};
    if (numberFormat == kTextFormat) return TextValue(entry);
    return GeneralValue(entry, numberFormat);
}

}  // namespace sim
