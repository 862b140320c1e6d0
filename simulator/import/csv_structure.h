// A product structure in a table of comma-separated values.

#pragma once

#include <filesystem>

#include "simulator/import/structure.h"

namespace sim {

// One row a component. The first row names the columns, in any letter case:
//
//   level or parent             level: a row belongs to the last row above it that is one level higher
//                               parent: the name of the assembly; none: at the top
//   name                        of the model; rows of one name and type are one model
//   type                        part, assembly, sheetmetal, skeleton; none: an assembly if it has components
//   number                      how often it is placed, 1 if nothing is said
//
// 层级, 上级, 模型名称 or 名称, 类型, 模型数量 or 数量 are the same. All other columns become parameters with
// a text. UTF-8 or GBK; fields are separated by commas, semicolons or tabs, quoted where needed. Throws
// ImportError.
ImportedStructure ReadCsvStructure(const std::filesystem::path& file);

}  // namespace sim
