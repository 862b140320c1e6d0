// Box selection: what the user draws a box around becomes the host's selection.

#include "display/box_selection.h"

#include <cstddef>
#include <iterator>
#include <span>

#include <ProSelbuffer.h>
#include <ProSelection.h>

#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"
#include "display/refusals_report.h"
#include "model/model_data.h"
#include "model/selection.h"

namespace kv {

static constexpr char kParts[] = "part";
static constexpr char kSurfaces[] = "surface";
static constexpr wchar_t kStepSelect[] = L"加入选择";

static void EnvironmentFree(ProSelectionEnv* environment) {
    ProSelectionEnvFree(*environment);
}
using SelectionEnvironment = HostHandle<ProSelectionEnv, EnvironmentFree>;

static ProError SelectInBox(const char* command, const char* filter);
static ProError PickInBox(const char* filter, std::span<ProSelection>& picked);
static RunEntry Refusal(ProSelection selection, ProError status);

ProError BoxSel() {
    return SelectInBox("BoxSel", kParts);
}

ProError KvBoxSelSur() {
    return SelectInBox("KvBoxSelSur", kSurfaces);
}

// The selection of before stays until the user has picked something.
static ProError SelectInBox(const char* command, const char* filter) {
    std::span<ProSelection> picked;
    ProError status = PickInBox(filter, picked);
    if (Failed(status) || picked.empty()) return status;
    status = ProSelbufferClear();
    if (Failed(status)) return status;
    RunRecord refusals;
    for (ProSelection selection : picked) {
        const ProError added = ProSelbufferSelectionAdd(selection);
        if (Failed(added)) refusals.push_back(Refusal(selection, added));
    }
    ReportRefusals(command, refusals);
    return PRO_TK_NO_ERROR;
}

// What is picked belongs to the host until its next selection.
static ProError PickInBox(const char* filter, std::span<ProSelection>& picked) {
    ProSelectionEnvOption options[] = {
        {PRO_SELECT_DONE_REQUIRED, 0},
        {PRO_SELECT_BY_MENU_ALLOWED, 1},
        {PRO_SELECT_BY_BOX_ALLOWED, 1},
    };
    SelectionEnvironment environment;
    ProError status = environment.Received(
        ProSelectionEnvAlloc(options, static_cast<int>(std::size(options)), environment.Receive()));
    if (Failed(status)) return status;
    ProSelection* selections = nullptr;
    int count = 0;
    status = ProSelect(HostName(filter), kNoLimit, nullptr, nullptr, environment.Get(), nullptr, &selections,
                       &count);
    if (!Failed(status) && selections != nullptr && count > 0)
        picked = {selections, static_cast<std::size_t>(count)};
    return status;
}

static RunEntry Refusal(ProSelection selection, ProError status) {
    RunEntry entry = {{}, kStepSelect, status};
    ProModelitem item = {};
    if (Failed(ProSelectionModelitemGet(selection, &item)) || Failed(ModelNameGet(item.owner, entry.model)))
        entry.model.clear();
    return entry;
}

}  // namespace kv
