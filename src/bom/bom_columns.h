// The columns of the bill of materials.
#pragma once

#include <string_view>

namespace kv {

enum class BomForm { Summed, Levels };

// What a column shows. Titles other than the reserved ones name a parameter of the model.
enum class BomColumn { ModelName, Quantity, Level, ItemCode, Parameter };

// The reserved titles.
inline constexpr std::wstring_view kBomNameTitle = L"模型名称";
inline constexpr std::wstring_view kBomQuantityTitle = L"模型数量";
inline constexpr std::wstring_view kBomLevelTitle = L"层级1";
inline constexpr std::wstring_view kBomCodeTitle = L"层级2";

// What a title stands for. Level and item code are reserved in the level list alone.
BomColumn BomColumnOf(std::wstring_view title, BomForm form);

}  // namespace kv
