#include <ProSelbuffer.h>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// What may be selected together: models, features, and geometry each on its own.
int SelectionGroup(const Pick& pick) {
    const int type = ItemType(pick);
    if (type == PRO_PART || type == PRO_ASSEMBLY) return 0;
    return type == PRO_FEATURE ? 1 : 2;
}

}  // namespace

ProError ProSelbufferSelectionsGet(ProSelection** ret_buff) {
    static const CallSite kSite("ProSelbufferSelectionsGet",
                                {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND, PRO_TK_CANT_ACCESS});
    return Traced(kSite, {Out(ret_buff)}, [&](Session& host) -> ProError {
        if (ret_buff == nullptr) return PRO_TK_BAD_INPUTS;
        if (!host.desk.canAccessSelection) return PRO_TK_CANT_ACCESS;
        const std::vector<Pick>& selected = host.desk.selected;
        if (selected.empty()) return PRO_TK_E_NOT_FOUND;
        const HostBlock& block =
            host.memory.Allocate(BlockKind::kSelectionArray, selected.size(), sizeof(ProSelection));
        auto* array = reinterpret_cast<ProSelection*>(block.Data());
        for (std::size_t i = 0; i < selected.size(); ++i)
            array[i] = static_cast<ProSelection>(host.desk.NewSelection(selected[i]));
        *ret_buff = array;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSelbufferClear() {
    static const CallSite kSite("ProSelbufferClear", {PRO_TK_CANT_ACCESS, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {}, [](Session& host) -> ProError {
        if (!host.desk.canAccessSelection) return PRO_TK_CANT_ACCESS;
        host.desk.selected.clear();
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSelbufferSelectionAdd(ProSelection add_sel) {
    static const CallSite kSite("ProSelbufferSelectionAdd",
                                {PRO_TK_INVALID_ITEM, PRO_TK_NOT_DISPLAYED, PRO_TK_BAD_CONTEXT,
                                 PRO_TK_CANT_ACCESS, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {add_sel}, [&](Session& host) -> ProError {
        if (!host.desk.canAccessSelection) return PRO_TK_CANT_ACCESS;
        const Pick* pick = host.desk.FindSelection(add_sel);
        if (pick == nullptr) {
            host.report.Violation("is given a selection that does not exist, or no longer");
            return PRO_TK_INVALID_ITEM;
        }
        std::vector<Pick>& selected = host.desk.selected;
        if (!selected.empty() && SelectionGroup(selected.front()) != SelectionGroup(*pick))
            return PRO_TK_BAD_CONTEXT;
        selected.push_back(*pick);
        return PRO_TK_NO_ERROR;
    });
}
