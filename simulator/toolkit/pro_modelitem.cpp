#include <ProModelitem.h>

#include <string>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// Of a feature or a coordinate system; null, with a violation, for any other item.
const std::wstring* FindName(Session& host, const ProModelitem* item) {
    if (item == nullptr || item->type != PRO_CSYS) {
        const Feature* feature = FindFeature(host, item);
        return feature == nullptr ? nullptr : &feature->name;
    }
    const SimModel* owner = FindModel(host, item->owner);
    const CoordinateSystem* system = owner == nullptr ? nullptr : owner->FindCoordinateSystem(item->id);
    if (system == nullptr) host.report.Violation("is given a coordinate system that its model does not have");
    return system == nullptr ? nullptr : &system->name;
}

}  // namespace

ProError ProModelitemNameGet(ProModelitem* p_item, ProName name) {
    static const CallSite kSite("ProModelitemNameGet", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {p_item, Out(name, PRO_NAME_SIZE)}, [&](Session& host) -> ProError {
        const std::wstring* own = FindName(host, p_item);
        if (own == nullptr || name == nullptr) return PRO_TK_BAD_INPUTS;
        if (own->empty()) return PRO_TK_E_NOT_FOUND;
        return FillBuffer<wchar_t>(*own, name, PRO_NAME_SIZE) ? PRO_TK_NO_ERROR : PRO_TK_GENERAL_ERROR;
    });
}

ProError ProModelitemMdlGet(ProModelitem* p_model_item, ProMdl* p_owner) {
    static const CallSite kSite("ProModelitemMdlGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_model_item, Out(p_owner)}, [&](Session& host) -> ProError {
        if (p_model_item == nullptr || p_owner == nullptr) return PRO_TK_BAD_INPUTS;
        SimModel* owner = FindModel(host, p_model_item->owner);
        if (owner == nullptr) return PRO_TK_BAD_INPUTS;
        *p_owner = owner;
        return PRO_TK_NO_ERROR;
    });
}
