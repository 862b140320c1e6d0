// A drawing that is exported.
#pragma once

#include <string>
#include <vector>

#include <ProDrawing.h>
#include <ProMdl.h>

namespace kv {

// A drawing in work.
struct DrawingTask {
    ProDrawing drawing = nullptr;
    std::wstring name;
    int sheets = 0;
    int currentSheet = 0;                      // the one that was current at the start
    ProError displayed = PRO_TK_NO_ERROR;      // whether it is in the current window
    ProMdl shown = nullptr;                    // the model of its first view; null when there is none
    std::vector<std::wstring> fileNames = {};  // by sheet, without extension
};

// Reads the drawing's name, number of sheets and current sheet. Errors: those of the calls;
// PRO_TK_INVALID_TYPE for a model that is no drawing, PRO_TK_BAD_CONTEXT for one without a sheet.
[[nodiscard]] ProError DrawingTaskGet(ProMdl model, DrawingTask& task);

// Makes the sheet current that was so at the start.
void SheetRestore(const DrawingTask& task) noexcept;

}  // namespace kv
