// KvVersion, AboutKv, ForTest: the commands that belong to the plug-in as a whole.

#include "host/version.h"

#include <string>

#include <ProMdl.h>
#include <ProSelection.h>
#include <ProUIDialog.h>

#include "base/host_version.h"
#include "base/status.h"
#include "base/text.h"
#include "ui/dialog.h"
#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kVersion[] = L"当前版本：5.1C9";
static constexpr wchar_t kHostVersion[] = L"\n主程序版本：";
static constexpr char kAboutDialog[] = "AboutKv";
static constexpr int kAccepted = 1;
static constexpr wchar_t kDisclaimer[] =
    L"使用本插件表示同意以下条款：\n"
    L"使用前应充分了解该插件所有功能并进行备份数据测试，本插件不承担任何使用过程中造成的数据丢失或其他损失;"
    L"。";

static void OnAccept(char* dialog, char* component, ProAppData data);

ProError KvVersion() {
    std::wstring text = kVersion;
    if (!HostVersion().empty()) text += kHostVersion + HostVersion();
    ShowMessage(text.c_str());
    return PRO_TK_NO_ERROR;
}

ProError AboutKv() {
    return RunDialog(kAboutDialog, {{"OK", DialogCallback<OnAccept>}});
}

static void OnAccept(char*, char*, ProAppData) {
    ProUIDialogExit(HostName(kAboutDialog), kAccepted);
    ShowMessage(kDisclaimer);
}

ProError ForTest() {
    ProMdl model = nullptr;
    ProError status = ProMdlCurrentGet(&model);
    if (Failed(status)) return status;
    // The picked selections belong to the host.
    ProSelection* selections = nullptr;
    int count = 0;
    status = ProSelect(HostName("feature"), 1, nullptr, nullptr, nullptr, nullptr, &selections, &count);
    if (Failed(status) || count != 1 || selections == nullptr) return status;
    ProModelitem item = {};
    return ProSelectionModelitemGet(selections[0], &item);
}

}  // namespace kv
