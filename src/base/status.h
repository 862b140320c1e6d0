// Statuses of toolkit calls.
#pragma once

#include <ProToolkit.h>

namespace kv {

inline constexpr bool Failed(ProError status) {
    return status != PRO_TK_NO_ERROR;
}

}  // namespace kv
