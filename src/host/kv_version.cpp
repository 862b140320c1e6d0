// KvVersion: which plug-in and which host are running.

#include "host/kv_version.h"

#include <string>

#include "base/host_version.h"
#include "base/plugin_version.h"
#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kVersion[] = L"当前版本：";
static constexpr wchar_t kHostVersion[] = L"\n主程序版本：";

ProError KvVersion() {
    std::wstring text = std::wstring(kVersion) + kPluginVersion;
    if (!HostVersion().empty()) text += kHostVersion + HostVersion();
    ShowMessage(text.c_str());
    return PRO_TK_NO_ERROR;
}

}  // namespace kv
