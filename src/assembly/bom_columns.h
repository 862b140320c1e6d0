// The columns of the bill of materials.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

enum class BomForm { Summed, Levels };

// What a column shows. Titles other than the reserved ones name a parameter of the model.
enum class BomColumn { ModelName, Quantity, Level, ItemCode, Parameter };

// The titles of a settings list: split at commas of either width, without blanks; empty pieces are dropped.
std::vector<std::wstring> BomTitles(std::wstring_view list);

// What a title stands for. Level and item code are reserved in the level list alone.
BomColumn BomColumnOf(std::wstring_view title, BomForm form);

}  // namespace kv
