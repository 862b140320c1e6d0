#include "display/appearance.h"

namespace kv {

bool HasNoAppearance(ProError status) {
    return status == PRO_TK_NOT_EXIST || status == PRO_TK_E_NOT_FOUND;
}

ProError DefaultAppearanceGet(Appearance& look) {
    look = {};
    return ProSurfaceAppearanceDefaultPropsGet(PRO_DEF_APPEARANCE_SOLID, &look);
}

}  // namespace kv
