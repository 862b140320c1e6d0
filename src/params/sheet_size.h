// The sheet-size parameter of a model.
#pragma once

#include <string>

#include <ProMdl.h>

namespace kv {

// Writes the sizes of all sheets of the drawing that has the model's name, such as "A3,A4", into the model's
// string parameter. The drawing is loaded if it is not in memory.
//
// Errors     those of ModelRetrieveByType when there is no such drawing, of reading its sheets and of writing
//            the parameter; PRO_TK_LINE_TOO_LONG for more sizes than the host's 80 characters hold. The
//            parameter is then left alone.
[[nodiscard]] ProError SheetSizeWrite(ProMdl model, const std::wstring& modelName,
                                      const std::wstring& parameter);

}  // namespace kv
