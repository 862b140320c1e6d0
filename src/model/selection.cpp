// What is selected, from the host's selection buffer.

#include "model/selection.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <span>
#include <utility>

#include <ProAsmcomp.h>
#include <ProAsmcomppath.h>
#include <ProFeatType.h>
#include <ProFeature.h>
#include <ProMdl.h>
#include <ProModelitem.h>
#include <ProSelbuffer.h>

#include "base/status.h"
#include "base/text.h"

namespace kv {

static constexpr char kComponentFilter[] = "prt_or_asm";

static bool IsComponent(ProModelitem& item);
static void AddComponents(std::span<ProSelection> selections, ProMdl top,
                          std::vector<SelectedComponent>& components);

ProError SelectionRead(SelectionArray& selections) {
    const ProError status = selections.Received(ProSelbufferSelectionsGet(selections.Receive()));
    if (Failed(status)) return status;
    // A selection that cannot be counted is not none: a command without one works on everything.
    std::span<ProSelection> selected;
    const ProError counted = ItemsGet(selections, selected);
    if (Failed(counted)) return counted;
    return selected.empty() ? PRO_TK_E_NOT_FOUND : PRO_TK_NO_ERROR;
}

ProModelitem SelectedItem(ProSelection selection) {
    ProModelitem item = {};
    const ProError status = ProSelectionModelitemGet(selection, &item);
    return Failed(status) ? ProModelitem{PRO_TYPE_INVALID, PRO_VALUE_UNUSED, nullptr} : item;
}

bool IsWholeModel(const ProModelitem& item) {
    return item.type == PRO_ASSEMBLY || item.type == PRO_PART;
}

ProError SelectedModelGet(ProSelection selection, ComponentMeans component, ProMdl& model) {
    ProModelitem item = {};
    const ProError status = ProSelectionModelitemGet(selection, &item);
    if (Failed(status)) return status;
    if (IsWholeModel(item)) return ProModelitemMdlGet(&item, &model);
    if (component == ComponentMeans::Model && IsComponent(item)) return ProAsmcompMdlGet(&item, &model);
    model = item.owner;
    return PRO_TK_NO_ERROR;
}

ProError SelectedComponentGet(ProSelection selection, ProAsmcomp& component) {
    ProError status = ProSelectionModelitemGet(selection, &component);
    if (Failed(status)) return status;
    if (IsComponent(component)) return PRO_TK_NO_ERROR;
    if (!IsWholeModel(component)) return PRO_TK_INVALID_TYPE;
    ProAsmcomppath path = {};
    status = ProSelectionAsmcomppathGet(selection, &path);
    if (Failed(status)) return status;
    if (path.table_num <= 0) return PRO_TK_INVALID_TYPE;
    const int last = path.table_num - 1;
    ProAsmcomppath above = {};
    ProMdl owner = nullptr;
    status = ProAsmcomppathInit(path.owner, path.comp_id_table, last, &above);
    if (!Failed(status)) status = ProAsmcomppathMdlGet(&above, &owner);
    if (!Failed(status)) component = {PRO_FEATURE, path.comp_id_table[last], owner};
    return status;
}

ProError SelectedModelsGet(SelectedModels& selected) {
    SelectionArray selections;
    const ProError status = SelectionRead(selections);
    if (status == PRO_TK_E_NOT_FOUND) return PRO_TK_NO_ERROR;
    if (Failed(status)) return status;
    selected.any = true;
    for (ProSelection selection : Items(selections)) {
        ProModelitem item = SelectedItem(selection);
        if (!IsWholeModel(item) && !IsComponent(item)) continue;
        DistinctModel met = {nullptr, PRO_MDL_UNUSED};
        const ProError had =
            IsWholeModel(item) ? ProModelitemMdlGet(&item, &met.model) : ProAsmcompMdlGet(&item, &met.model);
        if (Failed(had) || Failed(ProMdlTypeGet(met.model, &met.type))) continue;
        if (std::ranges::find(selected.models, met.model, &DistinctModel::model) == selected.models.end())
            selected.models.push_back(met);
    }
    return PRO_TK_NO_ERROR;
}

ProError ComponentBelowGet(ProSelection selection, ProMdl top, SelectedComponent& component) {
    ProModelitem item = {};
    ProAsmcomppath path = {};
    ProError status = ProSelectionModelitemGet(selection, &item);
    if (!Failed(status)) status = ProSelectionAsmcomppathGet(selection, &path);
    if (Failed(status)) return status;
    if (path.owner != top || path.table_num < 0 || path.table_num > PRO_MAX_ASSEM_LEVEL)
        return PRO_TK_E_NOT_FOUND;
    component.ids.assign(path.comp_id_table, path.comp_id_table + path.table_num);
    if (IsWholeModel(item)) {
        status = ProModelitemMdlGet(&item, &component.model);
    } else if (IsComponent(item)) {
        component.ids.push_back(item.id);
        status = ProAsmcompMdlGet(&item, &component.model);
    } else {
        return PRO_TK_E_NOT_FOUND;
    }
    return Failed(status) || !component.ids.empty() ? status : PRO_TK_E_NOT_FOUND;
}

static void AddComponents(std::span<ProSelection> selections, ProMdl top,
                          std::vector<SelectedComponent>& components) {
    std::set<ComponentIds> met;
    for (ProSelection selection : selections) {
        SelectedComponent component = {};
        if (Failed(ComponentBelowGet(selection, top, component))) continue;
        if (met.insert(component.ids).second) components.push_back(std::move(component));
    }
}

ProError SelectedComponentsGet(ProMdl top, std::vector<SelectedComponent>& components) {
    SelectionArray selections;
    const ProError status = SelectionRead(selections);
    if (status == PRO_TK_E_NOT_FOUND) return PRO_TK_NO_ERROR;
    if (!Failed(status)) AddComponents(Items(selections), top, components);
    return status;
}

ProError PickedComponentsGet(ProMdl top, std::vector<SelectedComponent>& components) {
    ProSelection* picked = nullptr;  // stays the host's
    int count = 0;
    const ProError status =
        ProSelect(HostName(kComponentFilter), kNoLimit, nullptr, nullptr, nullptr, nullptr, &picked, &count);
    if (!Failed(status) && picked != nullptr && count > 0)
        AddComponents({picked, static_cast<std::size_t>(count)}, top, components);
    return status;
}

static bool IsComponent(ProModelitem& item) {
    ProFeattype type = 0;
    return item.type == PRO_FEATURE && !Failed(ProFeatureTypeGet(&item, &type)) && type == PRO_FEAT_COMPONENT;
}

}  // namespace kv
