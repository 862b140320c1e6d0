#include <ProParamval.h>

#include <algorithm>

#include "session/traced.h"
#include "toolkit/arguments.h"

using namespace sim;

ProError ProParamvalueSet(ProParamvalue* p_handle, PRO_CONST_ARG void* p_value, ProParamvalueType type) {
    static const CallSite kSite("ProParamvalueSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_handle, p_value, type}, [&](Session& host) -> ProError {
        if (p_handle == nullptr || p_value == nullptr) return PRO_TK_BAD_INPUTS;
        switch (type) {
            case PRO_PARAM_DOUBLE:
                p_handle->value.d_val = *static_cast<const double*>(p_value);
                break;
            case PRO_PARAM_INTEGER:
            case PRO_PARAM_NOTE_ID:
                p_handle->value.i_val = *static_cast<const int*>(p_value);
                break;
            case PRO_PARAM_BOOLEAN:
                p_handle->value.l_val = *static_cast<const short*>(p_value);
                break;
            case PRO_PARAM_STRING: {
                // What a real host does with a longer text is not known; it may write past the structure.
                const auto text = TextInput(host, static_cast<const wchar_t*>(p_value), PRO_LINE_SIZE);
                if (!text) return PRO_TK_BAD_INPUTS;
                std::fill(std::begin(p_handle->value.s_val), std::end(p_handle->value.s_val), L'\0');
                std::ranges::copy(*text, p_handle->value.s_val);
                break;
            }
            case PRO_PARAM_VOID:
            case PRO_PARAM_NOT_SET:
            default:
                return PRO_TK_BAD_INPUTS;
        }
        p_handle->type = type;
        return PRO_TK_NO_ERROR;
    });
}
