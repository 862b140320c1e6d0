// The bill of materials as comma-separated values. Plain rules, without a host call.
#pragma once

#include <string>

#include "bom/bom_sheet.h"

namespace kv {

// The last columns of every such file; the second ends that of the summed list.
inline constexpr wchar_t kCsvNameTitle[] = L"模型名称";
inline constexpr wchar_t kCsvTypeTitle[] = L"类型";
inline constexpr wchar_t kCsvPathTitle[] = L"上级路径";

// UTF-8 with byte-order mark: the titles, then all rows in the order of their numbers, every text as it is.
// Behind the list's own columns stand the model's name, its type and, for the list by level, the names of
// its parents.
std::string BomCsv(const BomSheet& sheet);

}  // namespace kv
