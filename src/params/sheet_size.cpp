// The sheet-size parameter: the sizes of the sheets of a model's drawing.

#include "params/sheet_size.h"

#include <ProDrawing.h>

#include "base/status.h"
#include "model/model_data.h"
#include "model/parameter.h"
#include "params/parameter_value.h"

namespace kv {

static ProError SheetSizesGet(ProDrawing drawing, std::wstring& sizes);

ProError SheetSizeWrite(ProMdl model, const std::wstring& modelName, const std::wstring& parameter) {
    ProMdl drawing = nullptr;
    std::wstring sizes;
    ProParamvalue value = {};
    ProError status = ModelRetrieveByType(modelName, PRO_MDLFILE_DRAWING, drawing);
    if (!Failed(status)) status = SheetSizesGet(static_cast<ProDrawing>(drawing), sizes);
    if (!Failed(status)) status = StringValue(sizes, value);
    return Failed(status) ? status : ParameterWrite(model, parameter, value);
}

static ProError SheetSizesGet(ProDrawing drawing, std::wstring& sizes) {
    int count = 0;
    ProError status = ProDrawingSheetsCount(drawing, &count);
    // Sheets count from 1.
    for (int sheet = 1; sheet <= count && !Failed(status); ++sheet) {
        ProName size = {};
        ProMatrix unused = {};
        status = ProDrawingSheetTrfGet(drawing, sheet, size, unused);
        if (sheet > 1) sizes += L',';
        sizes += size;
    }
    return status;
}

}  // namespace kv
