// KvClearAllColor: the host's own command that takes all appearances off the model, played as a macro with
// its question answered.

#include "display/kv_clear_all_color.h"

#include <ProMenu.h>

#include "base/text.h"

namespace kv {

// The host reads every blank and backquote of it.
static constexpr wchar_t kClearAppearances[] =
    L"~ Select `main_dlg_cur` `ProCmdViewGallery.view`; "
    L"~ Select `main_dlg_cur` `ProCmdViewGallery_layoutph.palette_holder.clearAppearance`; "
    L"~ Close `main_dlg_cur`  `ProCmdViewGallery_layoutph.palette_holder.clearAppearance`; "
    L"~ Activate `main_dlg_cur` `clearAllAppearance`;"
    L"~ Close `main_dlg_cur`  `ProCmdViewGallery_layoutph.palette_holder.clearAppearance`; "
    L"~ Close `main_dlg_cur` `ProCmdViewGallery.view`; "
    L"~ FocusIn `UI Message Dialog` `yes`;"
    L"~ Activate `UI Message Dialog` `yes`;";

ProError KvClearAllColor() {
    return ProMacroLoad(HostText(kClearAppearances));
}

}  // namespace kv
