// The command KvDrwScaleCheck.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Lists the sheets of the working directory's drawings on which a main view has another scale than the sheet.
// Errors: those of ModelFilesGet.
[[nodiscard]] ProError KvDrwScaleCheck();

}  // namespace kv
