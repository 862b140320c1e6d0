// What is selected, as far as it is items, models and components.
#pragma once

#include <vector>

#include <ProObjects.h>
#include <ProSelection.h>

#include "base/host_handle.h"
#include "model/model_walk.h"

namespace kv {

// For ProSelect: as many as the user picks.
inline constexpr int kNoLimit = -1;

// The selected items in the order of selection; read them with Items. Errors: PRO_TK_E_NOT_FOUND when nothing
// is selected, else those of ProSelbufferSelectionsGet and ProArraySizeGet.
[[nodiscard]] ProError SelectionRead(SelectionArray& selections);

// The item behind a selection; of the type PRO_TYPE_INVALID when the host cannot tell it.
ProModelitem SelectedItem(ProSelection selection);

// Whether an item is a part or an assembly as a whole. A component that is selected as a feature is not.
bool IsWholeModel(const ProModelitem& item);

// What a selected component feature stands for: the assembly that it is a feature of, as any other item does,
// or the model that it places.
enum class ComponentMeans { Owner, Model };

// The model that a selected item is, or the one that it belongs to. Errors: those of
// ProSelectionModelitemGet, ProModelitemMdlGet and ProAsmcompMdlGet.
[[nodiscard]] ProError SelectedModelGet(ProSelection selection, ComponentMeans component, ProMdl& model);

// The component that is selected, as a feature of the assembly that holds it: a part or an assembly is one by
// the component path that it is selected by. PRO_TK_INVALID_TYPE for what is none, else the errors of the
// host's calls.
[[nodiscard]] ProError SelectedComponentGet(ProSelection selection, ProAsmcomp& component);

// A component by the feature ids that lead to it.
using ComponentIds = std::vector<int>;
struct SelectedComponent {
    ComponentIds ids;
    ProMdl model;
};

// The component below `top` that a selection stands for, selected as a model or as a feature. Errors: those
// of the selection's calls; PRO_TK_E_NOT_FOUND for anything else.
[[nodiscard]] ProError ComponentBelowGet(ProSelection selection, ProMdl top, SelectedComponent& component);

// The components below `top` that are selected, each once, in the order of selection; other items are passed
// over. Nothing selected is no failure. Errors: those of ProSelbufferSelectionsGet.
[[nodiscard]] ProError SelectedComponentsGet(ProMdl top, std::vector<SelectedComponent>& components);

// The same of items that the user is asked to pick. Errors: those of ProSelect.
[[nodiscard]] ProError PickedComponentsGet(ProMdl top, std::vector<SelectedComponent>& components);

struct SelectedModels {
    bool any = false;                   // something is selected, whatever it is
    std::vector<DistinctModel> models;  // each once, in the order of the selection
};

// The models that are selected as such or by one of their components; other items are passed over, and so is
// a component whose model cannot be had. Nothing selected is no failure. Errors: those of
// ProSelbufferSelectionsGet.
[[nodiscard]] ProError SelectedModelsGet(SelectedModels& selected);

}  // namespace kv
