// The action of commands that are still to come.

#include "host/not_available.h"

#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kNotAvailable[] = L"\t此功能尚未开放，敬请期待！\t";

ProError NotAvailable() {
    ShowMessage(kNotAvailable);
    return PRO_TK_NO_ERROR;
}

}  // namespace kv
