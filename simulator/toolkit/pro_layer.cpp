#include <ProLayer.h>

#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// The component behind a layer item. Null without a word where the host hides no items of that kind; with a
// violation for an item that does not exist.
Feature* FindComponent(Session& host, const ProLayerItem* item, ProError& refusal) {
    refusal = PRO_TK_BAD_INPUTS;
    if (item == nullptr) return nullptr;
    if (item->owner.origin != PRO_LAYITEM_FROM_MODEL) {
        host.report.Violation("is given a layer item that was never filled");
        return nullptr;
    }
    SimModel* owner = FindModel(host, item->owner.owner.layitem_model);
    if (owner == nullptr) return nullptr;
    Feature* feature = owner->FindFeature(item->id);
    if (feature == nullptr || feature->type != kComponentType) {
        host.report.Violation("is given a layer item that is no component");
        return nullptr;
    }
    const bool isHidable =
        item->type == PRO_LAYER_SUB_ASSEMBLY || (item->type == PRO_LAYER_FEAT && host.strict.featuresHide);
    refusal = PRO_TK_NOT_VALID;
    return isHidable ? feature : nullptr;
}

ProError SetHidden(Session& host, const ProLayerItem* item, bool hidden) {
    ProError refusal = PRO_TK_NO_ERROR;
    Feature* component = FindComponent(host, item, refusal);
    if (component == nullptr) return refusal;
    if (component->isHidden == hidden) return PRO_TK_NO_CHANGE;
    component->isHidden = hidden;
    return PRO_TK_NO_ERROR;
}

}  // namespace

ProError ProLayerItemInit(ProLayerType type, int id, ProMdl owner, ProLayerItem* p_item) {
    static const CallSite kSite("ProLayerItemInit", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {type, id, owner, Out(p_item)}, [&](Session& host) -> ProError {
        SimModel* model = FindModel(host, owner);
        if (model == nullptr || p_item == nullptr) return PRO_TK_BAD_INPUTS;
        if (model->FindFeature(id) == nullptr) return PRO_TK_E_NOT_FOUND;
        ProLayerItem item = {};
        item.type = type;
        item.id = id;
        item.owner.origin = PRO_LAYITEM_FROM_MODEL;
        item.owner.owner.layitem_model = model;
        *p_item = item;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProModelitemHide(ProLayerItem* item) {
    static const CallSite kSite(
        "ProModelitemHide", {PRO_TK_BAD_INPUTS, PRO_TK_NO_CHANGE, PRO_TK_NOT_VALID, PRO_TK_GENERAL_ERROR});
    return Traced(kSite, {item}, [&](Session& host) { return SetHidden(host, item, true); });
}

ProError ProModelitemUnhide(ProLayerItem* item) {
    static const CallSite kSite(
        "ProModelitemUnhide", {PRO_TK_BAD_INPUTS, PRO_TK_NO_CHANGE, PRO_TK_NOT_VALID, PRO_TK_GENERAL_ERROR});
    return Traced(kSite, {item}, [&](Session& host) { return SetHidden(host, item, false); });
}

ProError ProModelitemIsHidden(ProLayerItem* item, ProBoolean* is_hidden) {
    static const CallSite kSite("ProModelitemIsHidden", {PRO_TK_BAD_INPUTS, PRO_TK_NOT_VALID});
    return Traced(kSite, {item, Out(is_hidden)}, [&](Session& host) -> ProError {
        ProError refusal = PRO_TK_NO_ERROR;
        const Feature* component = FindComponent(host, item, refusal);
        if (component == nullptr || is_hidden == nullptr)
            return is_hidden == nullptr ? PRO_TK_BAD_INPUTS : refusal;
        *is_hidden = component->isHidden ? PRO_B_TRUE : PRO_B_FALSE;
        return PRO_TK_NO_ERROR;
    });
}
