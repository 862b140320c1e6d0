// AboutKv: the about dialog and the terms of use.

#include "host/about_kv.h"

#include <ProUIDialog.h>

#include "base/text.h"
#include "ui/dialog.h"
#include "ui/message_box.h"

namespace kv {

static constexpr char kDialog[] = "AboutKv";
static constexpr int kAccepted = 1;
static constexpr wchar_t kDisclaimer[] =
    L"使用本插件表示同意以下条款：\n"
    L"使用前应充分了解该插件所有功能并进行备份数据测试，本插件不承担任何使用过程中造成的数据丢失或其他损失;"
    L"。";

static void OnAccept();

ProError AboutKv() {
    return RunDialog(kDialog, {Pressed<OnAccept>("OK")});
}

static void OnAccept() {
    ProUIDialogExit(HostName(kDialog), kAccepted);
    ShowMessage(kDisclaimer);
}

}  // namespace kv
