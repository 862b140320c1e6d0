#include <ProSelbuffer.h>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

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
