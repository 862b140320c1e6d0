// Components as layer items: the host hides those.

#include "display/component_visibility.h"

#include "base/status.h"

namespace kv {

bool ComponentVisibility::IsHidden(const ProAsmcomp& component) {
    ProBoolean hidden = PRO_B_FALSE;
    const ProError status =
        WithItem(component, [&](ProLayerItem* item) { return ProModelitemIsHidden(item, &hidden); });
    return !Failed(status) && hidden == PRO_B_TRUE;
}

ProError ComponentVisibility::Set(const ProAsmcomp& component, bool hidden) {
    return WithItem(component, [&](ProLayerItem* item) {
        const ProError status = hidden ? ProModelitemHide(item) : ProModelitemUnhide(item);
        return status == PRO_TK_NO_CHANGE ? PRO_TK_NO_ERROR : status;
    });
}

// Hosts differ in which kind of item a component is: a feature, or a sub-assembly. The first kind that one of
// them takes is the kind of all.
template <typename Call>
ProError ComponentVisibility::WithItem(const ProAsmcomp& component, Call call) {
    ProError status = WithItemOf(kind_, component, call);
    if (Failed(status) && !kindIsSettled_) {
        const ProError other = WithItemOf(PRO_LAYER_SUB_ASSEMBLY, component, call);
        if (!Failed(other)) {
            kind_ = PRO_LAYER_SUB_ASSEMBLY;
            status = other;
        }
    }
    if (!Failed(status)) kindIsSettled_ = true;
    return status;
}

// The items of an assembly's components differ in the identifier alone.
template <typename Call>
ProError ComponentVisibility::WithItemOf(ProLayerType kind, const ProAsmcomp& component, Call call) {
    if (!item_ || owner_ != component.owner || item_->type != kind) {
        ProLayerItem item = {};
        const ProError status = ProLayerItemInit(kind, component.id, component.owner, &item);
        if (Failed(status)) return status;
        item_ = item;
        owner_ = component.owner;
    }
    item_->id = component.id;
    return call(&*item_);
}

}  // namespace kv
