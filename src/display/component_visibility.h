// Hiding and showing components.
//
// The state belongs to the component feature in the assembly that owns it: all placements of a sub-assembly
// share the states of what is in it.
#pragma once

#include <optional>

#include <ProAsmcomp.h>
#include <ProLayer.h>

namespace kv {

// Reads and changes the states of components, for one command. Components of one assembly one after the other
// cost one call less each.
class ComponentVisibility {
public:
    ComponentVisibility() = default;
    ComponentVisibility(const ComponentVisibility&) = delete;
    ComponentVisibility& operator=(const ComponentVisibility&) = delete;

    // A component whose state cannot be read counts as shown.
    [[nodiscard]] bool IsHidden(const ProAsmcomp& component);

    // Errors: those of ProLayerItemInit, ProModelitemHide and ProModelitemUnhide; that a component is so
    // already is none.
    [[nodiscard]] ProError Set(const ProAsmcomp& component, bool hidden);

private:
    template <typename Call>
    ProError WithItem(const ProAsmcomp& component, Call call);
    template <typename Call>
    ProError WithItemOf(ProLayerType kind, const ProAsmcomp& component, Call call);

    ProLayerType kind_ = PRO_LAYER_FEAT;
    bool kindIsSettled_ = false;
    std::optional<ProLayerItem> item_;  // the last one, for the next of its assembly
    ProMdl owner_ = nullptr;
};

}  // namespace kv
