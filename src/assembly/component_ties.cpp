// What ties a component to its assembly, on the toolkit's calls for constraints.

#include "assembly/component_ties.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <ProAsmcomppath.h>
#include <ProFeature.h>

#include "base/host_handle.h"
#include "base/status.h"
#include "model/model_data.h"
#include "model/run_steps.h"

namespace kv {

static constexpr wchar_t kForeign[] = L"不是激活组件的元件";
static constexpr wchar_t kSuppressed[] = L"已隐含";
static constexpr wchar_t kFrozen[] = L"已冻结";
static constexpr wchar_t kUnplaced[] = L"未放置";
static constexpr wchar_t kUnreadable[] = L"状态或约束无法读取";

static constexpr wchar_t kStepPosition[] = L"读取位置";
static constexpr wchar_t kStepFix[] = L"固定";
static constexpr wchar_t kStepRemove[] = L"移除约束";
static constexpr wchar_t kStepKeep[] = L"保持位置";
static constexpr wchar_t kStepRegenerateComponent[] = L"再生元件";

// Positions that differ by less, relative to their numbers, are the same.
static constexpr double kSamePlace = 1e-9;

static void TieFree(ProAsmcompconstraint* constraint) {
    ProAsmcompconstraintFree(*constraint);
}
static void TiesFree(ProAsmcompconstraint** constraints) {
    ProAsmcompconstraintArrayFree(*constraints);
}

using TieHandle = HostHandle<ProAsmcompconstraint, TieFree>;
using TieArray = HostHandle<ProAsmcompconstraint*, TiesFree>;

static std::wstring ReasonToLeave(ProAsmcomp& component);
static ProError TypesGet(ProAsmcomp& component, std::vector<int>& types);
static ProError OwnerPathGet(const ProAsmcomp& component, ProAsmcomppath& path);
static ProError PlaceGet(const ProAsmcomp& component, ProMatrix place);
static ProError Fix(ProAsmcomp& component);
static ProError SetFree(ProAsmcomp& component, ProMatrix place, const wchar_t*& step);
static bool AreSamePlaces(const ProMatrix& one, const ProMatrix& other);

ComponentTies TiesRead(ProMdl assembly, const ProAsmcomp& component) {
    ComponentTies ties = {component, {}};
    ProMdl model = nullptr;
    if (Failed(ProAsmcompMdlGet(&ties.component, &model)) || Failed(ModelNameGet(model, ties.name)))
        ties.leftOut = kUnreadable;
    ties.name += L" (#" + std::to_wstring(component.id) + L")";
    if (component.owner != assembly) ties.leftOut = kForeign;
    if (ties.leftOut.empty()) ties.leftOut = ReasonToLeave(ties.component);
    if (!ties.leftOut.empty()) return ties;
    ProBoolean isMovable = PRO_B_FALSE;
    const bool isRead = !Failed(TypesGet(ties.component, ties.types)) &&
                        !Failed(ProAsmcompIsUnderconstrained(&ties.component, &isMovable));
    if (!isRead) ties.leftOut = kUnreadable;
    ties.isMovable = isRead && isMovable == PRO_B_TRUE;
    return ties;
}

ProError TiesRelease(ComponentTies& ties, Released released, const wchar_t*& step) {
    step = released == Released::Fixed ? kStepFix : kStepRemove;
    if (released == Released::Free && ties.types.empty()) return PRO_TK_NO_CHANGE;
    ProMatrix before = {};
    ProMatrix after = {};
    ProError status = PlaceGet(ties.component, before);
    if (Failed(status)) {
        step = kStepPosition;
        return status;
    }
    status = released == Released::Fixed ? Fix(ties.component) : SetFree(ties.component, before, step);
    if (Failed(status)) return status;
    status = PlaceGet(ties.component, after);
    if (!Failed(status) && AreSamePlaces(before, after)) return PRO_TK_NO_ERROR;
    step = kStepComparePlace;
    return Failed(status) ? status : PRO_TK_NOT_VALID;
}

static std::wstring ReasonToLeave(ProAsmcomp& component) {
    ProFeatStatus state = PRO_FEAT_INVALID;
    ProBoolean isFrozen = PRO_B_FALSE;
    ProBoolean isUnplaced = PRO_B_FALSE;
    if (Failed(ProFeatureStatusGet(&component, &state))) return kUnreadable;
    if (state != PRO_FEAT_ACTIVE) return kSuppressed;
    if (Failed(ProAsmcompIsFrozen(&component, &isFrozen))) return kUnreadable;
    if (isFrozen == PRO_B_TRUE) return kFrozen;
    if (Failed(ProAsmcompIsUnplaced(&component, &isUnplaced))) return kUnreadable;
    return isUnplaced == PRO_B_TRUE ? kUnplaced : L"";
}

// A component without constraints is no failure.
static ProError TypesGet(ProAsmcomp& component, std::vector<int>& types) {
    ProAsmcomppath path = {};
    TieArray constraints;
    types.clear();
    ProError status = OwnerPathGet(component, path);
    if (!Failed(status))
        status = constraints.Received(
            ProAsmcompConstraintsWithComppathGet(&component, &path, constraints.Receive()));
    if (status == PRO_TK_E_NOT_FOUND) return PRO_TK_NO_ERROR;
    if (Failed(status)) return status;
    for (ProAsmcompconstraint constraint : Items(constraints)) {
        ProAsmcompConstrType type = PRO_ASM_UNDEF;
        status = ProAsmcompconstraintTypeGet(constraint, &type);
        if (Failed(status)) return status;
        types.push_back(type);
    }
    return PRO_TK_NO_ERROR;
}

static ProError OwnerPathGet(const ProAsmcomp& component, ProAsmcomppath& path) {
    return ProAsmcomppathInit(static_cast<ProSolid>(component.owner), nullptr, 0, &path);
}

static ProError PlaceGet(const ProAsmcomp& component, ProMatrix place) {
    ProIdTable ids = {component.id};
    ProAsmcomppath path = {};
    const ProError status = ProAsmcomppathInit(static_cast<ProSolid>(component.owner), ids, 1, &path);
    return Failed(status) ? status : ProAsmcomppathTrfGet(&path, PRO_B_TRUE, place);
}

static ProError Fix(ProAsmcomp& component) {
    TieHandle fix;
    TieArray constraints;
    ProError status = fix.Received(ProAsmcompconstraintAlloc(fix.Receive()));
    if (!Failed(status)) status = ProAsmcompconstraintTypeSet(fix.Get(), PRO_ASM_FIX);
    if (!Failed(status)) status = ArrayAlloc(constraints);
    if (Failed(status)) return status;
    ProAsmcompconstraint held = fix.Get();
    ProArray memory = constraints.Release();
    status = ProArrayObjectAdd(&memory, -1, 1, &held);
    constraints.Reset(static_cast<ProAsmcompconstraint*>(memory));
    if (Failed(status)) return status;
    // The array frees it from here on.
    (void)fix.Release();
    return ProAsmcompConstraintsSet(nullptr, &component, constraints.Get());
}

// Nothing moves before the component is regenerated: one that cannot be told to stay is fixed, for it would
// go to where it was first placed.
static ProError SetFree(ProAsmcomp& component, ProMatrix place, const wchar_t*& step) {
    ProError status = ProAsmcompConstrRemove(&component, -1);
    if (Failed(status)) return status;
    step = kStepKeep;
    status = ProAsmcompPositionSet(nullptr, &component, place);
    if (Failed(status)) {
        (void)Fix(component);
        return status;
    }
    step = kStepRegenerateComponent;
    status = ProAsmcompRegenerate(&component, PRO_B_FALSE);
    if (Failed(status)) return status;
    std::vector<int> left;
    status = TypesGet(component, left);
    step = left.empty() ? kStepRemove : kStepInterfaceTie;
    if (Failed(status)) return status;
    return left.empty() ? PRO_TK_NO_ERROR : PRO_TK_NOT_VALID;
}

static bool AreSamePlaces(const ProMatrix& one, const ProMatrix& other) {
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column) {
            const double a = one[row][column];
            const double b = other[row][column];
            if (!(std::abs(a - b) <= kSamePlace * std::max({1.0, std::abs(a), std::abs(b)}))) return false;
        }
    return true;
}

}  // namespace kv
