#include "assembly/representation.h"

#include <algorithm>
#include <cstddef>

#include <ProSimprepdata.h>
#include <ProSolid.h>

#include "base/host_callback.h"
#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

static constexpr int kMaster = -1;

using RepData = HostHandle<ProSimprepdata*, ProSimprepdataFree>;

static ProError OnRepresentation(ProSimprep* rep, ProError status, ProAppData data);
static std::wstring RepNameOf(ProSimprep rep);
static ProError ItemsAdd(ProSimprepdata* data, const RepPlan& plan, bool keepsOnly);

ProError RepresentationsGet(ProMdl assembly, std::vector<NamedRep>& reps) {
    ProSimprep master = {};
    ProError status = ProSimprepInit(nullptr, kMaster, static_cast<ProSolid>(assembly), &master);
    if (Failed(status)) return status;
    reps.push_back({master, {}, true});
    std::vector<ProSimprep> own;
    status =
        ProSolidSimprepVisit(static_cast<ProSolid>(assembly), nullptr, HostCallback<OnRepresentation>, &own);
    if (Failed(status) && status != PRO_TK_E_NOT_FOUND) return status;
    for (const ProSimprep& rep : own) reps.push_back({rep, RepNameOf(rep), false});
    return PRO_TK_NO_ERROR;
}

ProError RepresentationFind(ProMdl assembly, const std::wstring& name, ProSimprep& rep) {
    ProName text = {};
    const ProError status = CopyText(name, text);
    return Failed(status) ? status : ProSimprepInit(text, kMaster, static_cast<ProSolid>(assembly), &rep);
}

ProError RepresentationMake(ProMdl assembly, const std::wstring& name, const RepPlan& plan, bool keepsOnly,
                            const ProSimprep* replaced, ProSimprep& rep) {
    ProName text = {};
    ProError status = CopyText(name, text);
    if (Failed(status)) return status;
    RepData data;
    status = data.Received(ProSimprepdataAlloc(
        text, PRO_B_FALSE, keepsOnly ? PRO_SIMPREP_EXCLUDE : PRO_SIMPREP_INCLUDE, data.Receive()));
    if (!Failed(status)) status = ItemsAdd(data.Get(), plan, keepsOnly);
    if (Failed(status)) return status;
    if (replaced == nullptr) return ProSimprepCreate(static_cast<ProSolid>(assembly), data.Get(), &rep);
    rep = *replaced;
    return ProSimprepdataSet(&rep, data.Get());
}

ProError RepresentationShow(ProMdl assembly, const ProSimprep& rep) {
    ProSimprep item = rep;
    const ProError status = ProSimprepActivate(static_cast<ProSolid>(assembly), &item);
    if (!Failed(status)) ProSolidDisplay(static_cast<ProSolid>(assembly));
    return status;
}

MasterRepresentation::MasterRepresentation(ProMdl assembly) : assembly_(assembly) {
    ProSimprep master = {};
    status_ = ProSimprepActiveGet(static_cast<ProSolid>(assembly), &former_);
    if (Failed(status_) || former_.id == kMaster) return;
    status_ = ProSimprepInit(nullptr, kMaster, static_cast<ProSolid>(assembly), &master);
    if (!Failed(status_)) status_ = ProSimprepActivate(static_cast<ProSolid>(assembly), &master);
    isChanged_ = !Failed(status_);
}

MasterRepresentation::~MasterRepresentation() {
    if (isChanged_) (void)RepresentationShow(assembly_, former_);
}

static ProError OnRepresentation(ProSimprep* rep, ProError, ProAppData data) {
    static_cast<std::vector<ProSimprep>*>(data)->push_back(*rep);
    return PRO_TK_NO_ERROR;
}

static std::wstring RepNameOf(ProSimprep rep) {
    RepData data;
    ProName name = {};
    ProError status = data.Received(ProSimprepdataGet(&rep, data.Receive()));
    if (!Failed(status)) status = ProSimprepdataNameGet(data.Get(), name);
    return Failed(status) ? std::wstring() : std::wstring(name);
}

static ProError ItemsAdd(ProSimprepdata* data, const RepPlan& plan, bool keepsOnly) {
    ProSimprepAction action = {};
    ProError status =
        ProSimprepActionInit(keepsOnly ? PRO_SIMPREP_INCLUDE : PRO_SIMPREP_EXCLUDE, nullptr, &action);
    for (const ComponentIds& path : plan.items) {
        ProIdTable ids = {};
        if (path.size() > PRO_MAX_ASSEM_LEVEL) return PRO_TK_BAD_INPUTS;
        std::ranges::copy(path, ids);
        ProSimprepitem item = {};
        if (!Failed(status))
            status =
                ProSimprepdataitemInit(ids, static_cast<int>(path.size()), PRO_VALUE_UNUSED, &action, &item);
        if (!Failed(status)) status = ProSimprepdataitemAdd(data, &item);
        if (Failed(status)) return status;
    }
    return status;
}

}  // namespace kv
