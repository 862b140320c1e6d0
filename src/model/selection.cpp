// What is selected, from the host's selection buffer.

#include "model/selection.h"

#include <ProSelbuffer.h>

#include "base/status.h"

namespace kv {

ProError SelectionRead(SelectionArray& selections) {
    const ProError status = selections.Received(ProSelbufferSelectionsGet(selections.Receive()));
    if (Failed(status)) return status;
    return Items(selections).empty() ? PRO_TK_E_NOT_FOUND : PRO_TK_NO_ERROR;
}

ProModelitem SelectedItem(ProSelection selection) {
    ProModelitem item = {};
    const ProError status = ProSelectionModelitemGet(selection, &item);
    return Failed(status) ? ProModelitem{PRO_TYPE_INVALID, PRO_VALUE_UNUSED, nullptr} : item;
}

bool IsWholeModel(const ProModelitem& item) {
    return item.type == PRO_ASSEMBLY || item.type == PRO_PART;
}

}  // namespace kv
