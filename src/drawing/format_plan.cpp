// Formats of sheets: which sheets get another one, and what that changes.

#include "drawing/format_plan.h"

#include <algorithm>
#include <vector>

#include "base/text.h"

namespace kv {

static constexpr wchar_t kNoFormatName[] = L"(无)";
static constexpr wchar_t kTo[] = L" → ";

static const std::wstring& NameOrNone(const std::wstring& format, const std::wstring& none) {
    return format.empty() ? none : format;
}

SheetFate FateOf(const SheetState& sheet, const FormatRequest& request) {
    const std::wstring& has = request.scope == SheetScope::ByFormat ? sheet.format : sheet.size;
    if (request.scope != SheetScope::All && UpperCase(has) != UpperCase(request.wanted))
        return SheetFate::NotWanted;
    const bool keepsTables = sheet.formatTables > 0 && !request.replacesTables;
    return keepsTables ? SheetFate::HasTables : SheetFate::Replaced;
}

std::wstring SheetPlanText(const SheetState& sheet, const FormatRequest& request) {
    const SheetFate fate = FateOf(sheet, request);
    if (fate == SheetFate::NotWanted) return {};
    std::wstring text = L"第" + std::to_wstring(sheet.number) + L"页：";
    if (fate == SheetFate::HasTables) return text + L"有图框表格，跳过";
    text += NameOrNone(sheet.format, kNoFormatName) + kTo + request.newFormat;
    if (!request.newSize.empty() && request.newSize != sheet.size)
        text += L"，图幅 " + sheet.size + kTo + request.newSize;
    if (sheet.formatTables > 0) text += L"，删除" + std::to_wstring(sheet.formatTables) + L"个图框表格";
    return text;
}

std::wstring DrawingPlanText(std::span<const SheetState> sheets, const FormatRequest& request) {
    std::wstring text;
    for (const SheetState& sheet : sheets) {
        const std::wstring part = SheetPlanText(sheet, request);
        if (!text.empty() && !part.empty()) text += L"；";
        text += part;
    }
    return text.empty() ? L"没有符合条件的页" : text;
}

std::wstring FormatsText(std::span<const SheetState> sheets) {
    std::vector<std::wstring> names;
    std::wstring text;
    for (const SheetState& sheet : sheets) {
        const std::wstring name = NameOrNone(sheet.format, kNoFormatName);
        if (std::ranges::find(names, name) != names.end()) continue;
        if (!names.empty()) text += L',';
        text += name;
        names.push_back(name);
    }
    return text;
}

}  // namespace kv
