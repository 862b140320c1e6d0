// What changed between two lists, as lines for people. Plain rules, without a host call.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "bom/bom_compare.h"

namespace kv {

// One thing that changed.
struct ChangeLine {
    const wchar_t* kind = L"";  // in words
    std::wstring name;
    bool isAssembly = false;
    std::wstring path;    // names of the parents in the list that holds the row: the new one if both do
    std::wstring column;  // whose text changed
    std::wstring before;
    std::wstring after;
};

inline constexpr std::size_t kChangeColumns = 7;
inline constexpr std::array<const wchar_t*, kChangeColumns> kChangeTitles = {
    L"变化", L"模型名称", L"类型", L"上级路径", L"列", L"旧", L"新"};

// The texts of a line under those titles.
std::array<std::wstring, kChangeColumns> ChangeCells(const ChangeLine& line);

// Lines in the order of the new list, then what went. A row that only follows its parent to another place has
// none.
std::vector<ChangeLine> ChangeLines(const ListedRows& before, const ListedRows& after,
                                    const ListChanges& changes);

// How many lines there are of each kind, as one text.
std::wstring ChangeCountText(const std::vector<ChangeLine>& lines);

}  // namespace kv
