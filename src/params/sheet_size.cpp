// The sheet-size parameter: the sizes of the sheets of a model's drawing.

#include "params/sheet_size.h"

#include <vector>

#include "base/status.h"
#include "model/drawing_sheets.h"
#include "model/model_data.h"
#include "model/parameter.h"
#include "params/parameter_value.h"

namespace kv {

ProError SheetSizeWrite(ProMdl model, const std::wstring& modelName, const std::wstring& parameter) {
    ProMdl drawing = nullptr;
    std::vector<std::wstring> sizes;
    ProParamvalue value = {};
    ProError status = ModelRetrieveByType(modelName, PRO_MDLFILE_DRAWING, drawing);
    if (!Failed(status)) status = SheetSizesGet(static_cast<ProDrawing>(drawing), sizes);
    if (!Failed(status)) status = StringValue(SheetSizesText(sizes), value);
    return Failed(status) ? status : ParameterWrite(model, parameter, value);
}

}  // namespace kv
