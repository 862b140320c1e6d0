// Parameter values as texts for people.
#pragma once

#include <optional>
#include <string>

#include <ProParamval.h>

namespace kv {

// A string as it is, an integer in decimal, a real number with three decimals and a point on every machine, a
// Boolean as "是" or "否", empty for one that holds neither 1 nor 0. Nothing for every other type.
std::optional<std::wstring> ParameterText(const ProParamvalue& value);

}  // namespace kv
