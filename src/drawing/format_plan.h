// Formats of sheets: which sheets get another one, and what that changes. Plain rules, without a host call.
#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace kv {

// A sheet as it is.
struct SheetState {
    int number = 0;
    std::wstring size = {};
    std::wstring format = {};  // empty: none
    std::size_t formatTables = 0;
};

enum class SheetScope { All, ByFormat, BySize };

struct FormatRequest {
    SheetScope scope = SheetScope::All;
    std::wstring wanted = {};  // the present format, or the size, that a sheet has to have
    std::wstring newFormat = {};
    std::wstring newSize = {};  // empty: not known
    int formatSheet = 1;
    bool replacesTables = false;  // also where tables of the present format may hold what a user typed
};

enum class SheetFate { Replaced, NotWanted, HasTables };

// Nobody can read what users typed into the tables of a format: all of them count as holding something.
SheetFate FateOf(const SheetState& sheet, const FormatRequest& request);

// What becomes of a sheet, "第1页：A3_OLD → A3_NEW，图幅 A3 → A2"; empty for one that is not wanted.
std::wstring SheetPlanText(const SheetState& sheet, const FormatRequest& request);

// What becomes of a drawing.
std::wstring DrawingPlanText(std::span<const SheetState> sheets, const FormatRequest& request);

// The present formats, each once, "A3_OLD,A4_OLD".
std::wstring FormatsText(std::span<const SheetState> sheets);

}  // namespace kv
