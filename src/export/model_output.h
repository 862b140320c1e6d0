// Parts and assemblies exported to files.
#pragma once

#include <string>

#include <ProDrawing.h>
#include <ProMdl.h>
#include <ProUtil.h>

namespace kv {

// Writes a model to a file of the working directory. Errors: those of ProOutputFileMdlnameWrite;
// PRO_TK_LINE_TOO_LONG for a name that the host cannot take.
[[nodiscard]] ProError ModelWrite(ProMdl model, ProImportExportFile type, const std::wstring& file);

// The model of a drawing's first view; of a drawing without views its first model. Errors: those of the
// calls, PRO_TK_E_NOT_FOUND for a drawing without models and for a view whose model is missing.
[[nodiscard]] ProError ShownModelGet(ProDrawing drawing, ProMdl& model);

}  // namespace kv
