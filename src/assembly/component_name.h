// How new components are named. Plain rules, without a host call.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// The name of an assembly without the ending "_00" that marks the first of a series.
std::wstring SeriesBase(std::wstring_view assembly);

// The n-th name of a series: `number` counts from 1.
using CopyNameRule = std::wstring (*)(const std::wstring& base, int number);

// "PUMP-1", "PUMP-2", ...
std::wstring NumberedName(const std::wstring& base, int number);

// "PUMP_01", ..., "PUMP_09", "PUMP_10", ...
std::wstring NumberedAssemblyName(const std::wstring& base, int number);

// "合并1", ...: the names of merge features.
std::wstring MergeName(int number);

// The number in the name of a merge feature; 0 for any other name.
int MergeNumber(std::wstring_view name);

}  // namespace kv
