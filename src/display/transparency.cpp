// KvTransparent, SurfTransparent: what the user picks becomes see-through.
//
// Colour and finish stay. In an assembly only the picked occurrence changes, so that the part's file stays as
// it is; a host that cannot do that makes the part itself see-through.

#include "display/transparency.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

#include <ProMdl.h>
#include <ProModelitem.h>
#include <ProSelection.h>
#include <ProSurface.h>
#include <ProWindows.h>

#include "base/status.h"
#include "base/text.h"
#include "display/appearance.h"
#include "display/refusals_report.h"
#include "model/model_data.h"
#include "model/selection.h"
#include "ui/prompt.h"

namespace kv {

// 1 would be invisible.
static constexpr double kSeeThrough = 0.7;
static constexpr wchar_t kStepOccurrence[] = L"设置元件透明";
static constexpr wchar_t kStepModel[] = L"设置模型透明";
static constexpr wchar_t kStepSurface[] = L"设置曲面透明";

struct PickedItem {
    ProModelitem item;
    ProAsmcomppath path;
};

using MakeTransparent = void (*)(const PickedItem& picked, RunRecord& refusals);

static ProError PickAndMake(const char* command, const char* prompt, const char* filter,
                            MakeTransparent make);
static ProError Pick(const char* filter, std::vector<PickedItem>& picked);
static void MakeModel(const PickedItem& picked, RunRecord& refusals);
static void MakeSurface(const PickedItem& picked, RunRecord& refusals);
static ProError MakeOccurrence(const PickedItem& picked);
static ProError MakeSide(ProModelitem item, int side);
static ProError AppearanceOf(ProModelitem item, int side, Appearance& look);
static RunEntry Refusal(const PickedItem& picked, const wchar_t* step, ProError status);

ProError KvTransparent() {
    return PickAndMake("KvTransparent", "Please select parts to be transparent:", "prt_or_asm", MakeModel);
}

ProError SurfTransparent() {
    return PickAndMake("SurfTransparent",
                       "Please select surfaces to be transparent:", "surface,sldface,qltface", MakeSurface);
}

static ProError PickAndMake(const char* command, const char* prompt, const char* filter,
                            MakeTransparent make) {
    DisplayPickPrompt(prompt);
    std::vector<PickedItem> picked;
    const ProError status = Pick(filter, picked);
    if (Failed(status)) return status;
    RunRecord refusals;
    for (const PickedItem& item : picked) make(item, refusals);
    ReportRefusals(command, refusals);
    ProWindowRepaint(PRO_VALUE_UNUSED);
    return PRO_TK_NO_ERROR;
}

// The selections belong to the host, so what they say is read before anything else is done. One that cannot
// be read picks nothing.
static ProError Pick(const char* filter, std::vector<PickedItem>& picked) {
    ProSelection* selections = nullptr;
    int count = 0;
    const ProError status =
        ProSelect(HostName(filter), kNoLimit, nullptr, nullptr, nullptr, nullptr, &selections, &count);
    if (Failed(status) || selections == nullptr) return status;
    for (int i = 0; i < count; ++i) {
        PickedItem one = {};
        if (Failed(ProSelectionModelitemGet(selections[i], &one.item))) continue;
        // Without a path it is an item of the model in the window.
        if (Failed(ProSelectionAsmcomppathGet(selections[i], &one.path))) one.path = {};
        picked.push_back(one);
    }
    return status;
}

static void MakeModel(const PickedItem& picked, RunRecord& refusals) {
    if (picked.path.table_num > 0) {
        const ProError status = MakeOccurrence(picked);
        if (!Failed(status)) return;
        refusals.push_back(Refusal(picked, kStepOccurrence, status));
    }
    const ProError status = MakeSide(picked.item, kOutside);
    if (Failed(status)) refusals.push_back(Refusal(picked, kStepModel, status));
}

// A surface is seen from both sides.
static void MakeSurface(const PickedItem& picked, RunRecord& refusals) {
    for (const int side : {kOutside, kInside}) {
        const ProError status = MakeSide(picked.item, side);
        if (Failed(status)) refusals.push_back(Refusal(picked, kStepSurface, status));
    }
}

static ProError MakeOccurrence(const PickedItem& picked) {
    ProAsmitem occurrence = {};
    occurrence.item = picked.item;
    occurrence.item.owner = picked.path.owner;
    occurrence.path = picked.path;
    Appearance look = {};
    ProError status = ProMdlVisibleSideAppearancepropsGet(&occurrence, kOutside, &look);
    if (HasNoAppearance(status)) status = AppearanceOf(picked.item, kOutside, look);
    if (Failed(status)) return status;
    look.transparency = std::max(look.transparency, kSeeThrough);
    return ProMdlVisibleSideAppearancepropsSet(&occurrence, kOutside, &look);
}

static ProError MakeSide(ProModelitem item, int side) {
    Appearance look = {};
    const ProError status = AppearanceOf(item, side, look);
    if (Failed(status)) return status;
    look.transparency = std::max(look.transparency, kSeeThrough);
    return ProSurfaceSideAppearancepropsSet(&item, side, &look);
}

// How the item is drawn: its own look, a surface's else that of its part, else the host's default.
static ProError AppearanceOf(ProModelitem item, int side, Appearance& look) {
    ProError status = ProSurfaceSideAppearancepropsGet(&item, side, &look);
    ProModelitem model = {};
    if (HasNoAppearance(status) && !IsWholeModel(item) && !Failed(ProMdlToModelitem(item.owner, &model)))
        status = ProSurfaceSideAppearancepropsGet(&model, kOutside, &look);
    return HasNoAppearance(status) ? DefaultAppearanceGet(look) : status;
}

static RunEntry Refusal(const PickedItem& picked, const wchar_t* step, ProError status) {
    RunEntry entry = {{}, step, status};
    if (Failed(ModelNameGet(picked.item.owner, entry.model))) entry.model.clear();
    return entry;
}

}  // namespace kv
