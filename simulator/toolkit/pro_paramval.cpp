#include <ProParamval.h>

#include <algorithm>

#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// What a real host does with a text that is too long is not known; it may write past the structure.
ProError FillText(Session& host, const wchar_t* value, ProLine line) {
    const auto text = TextInput(host, value, PRO_LINE_SIZE);
    if (!text) return PRO_TK_BAD_INPUTS;
    std::fill_n(line, PRO_LINE_SIZE, L'\0');
    std::ranges::copy(*text, line);
    return PRO_TK_NO_ERROR;
}

ProError Fill(Session& host, const void* value, ProParamvalueType type, ProParamvalueValue& target) {
    switch (type) {
        case PRO_PARAM_DOUBLE:
            target.d_val = *static_cast<const double*>(value);
            return PRO_TK_NO_ERROR;
        case PRO_PARAM_INTEGER:
        case PRO_PARAM_NOTE_ID:
            target.i_val = *static_cast<const int*>(value);
            return PRO_TK_NO_ERROR;
        case PRO_PARAM_BOOLEAN:
            target.l_val = *static_cast<const short*>(value);
            return PRO_TK_NO_ERROR;
        case PRO_PARAM_STRING:
            return FillText(host, static_cast<const wchar_t*>(value), target.s_val);
        case PRO_PARAM_VOID:
        case PRO_PARAM_NOT_SET:
            break;
    }
    return PRO_TK_BAD_INPUTS;
}

}  // namespace

ProError ProParamvalueSet(ProParamvalue* p_handle, PRO_CONST_ARG void* p_value, ProParamvalueType type) {
    static const CallSite kSite("ProParamvalueSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {Out(p_handle), p_value, type}, [&](Session& host) -> ProError {
        if (p_handle == nullptr || p_value == nullptr) return PRO_TK_BAD_INPUTS;
        const ProError status = Fill(host, p_value, type, p_handle->value);
        if (status == PRO_TK_NO_ERROR) p_handle->type = type;
        return status;
    });
}
