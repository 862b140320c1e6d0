#include "simulator/layout/res_check.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include "simulator/layout/res_attributes.h"
#include "simulator/report/utf8.h"

namespace sim {

namespace {

// The kind of component that a statement describes; none for the dialog itself.
std::optional<ComponentKind> ComponentOf(ContainerType type) {
    switch (type) {
        case ContainerType::kDialog:
            return std::nullopt;
        case ContainerType::kLayout:
            return ComponentKind::kLayout;
        case ContainerType::kMenuPane:
            return ComponentKind::kMenuPane;
        case ContainerType::kCascadeButton:
            return ComponentKind::kCascadeButton;
        case ContainerType::kTable:
            return ComponentKind::kTable;
        case ContainerType::kTree:
            return ComponentKind::kTree;
    }
    return std::nullopt;
}

std::string TypeName(const ResContainer& container) {
    return std::string(ContainerName(container.type));
}

// The word for the component that a statement describes.
std::string OwnerName(const ResContainer& container) {
    return container.type == ContainerType::kTable ? "Table" : TypeName(container);
}

class Checker {
public:
    Checker(const ResFile& layout, ResFindings& findings) : layout_(layout), findings_(findings) {}

    void Run(const std::string& fileStem) {
        const ResContainer& first = layout_.containers.front();
        if (first.type != ContainerType::kDialog) Add(first.place, "the Dialog statement first");
        if (first.name != fileStem)
            Add(first.place, "a dialog named as the file, " + fileStem + ", found " + first.name);
        CollectNames();
        for (std::size_t i = 1; i < layout_.containers.size(); ++i) CheckStatementHasComponent(i);
        CheckAllHang();
        for (const ResContainer& container : layout_.containers) {
            CheckOwnAttributes(container);
            for (const ResComponent& component : container.components) CheckComponent(component);
            CheckPlacement(container);
        }
        CheckDefaultButton(first);
    }

private:
    void Add(ResPlace place, const std::string& text) { findings_.emplace_back(place, text); }

    // Every component and child by name, with its kind; a name is free once in the whole dialog.
    void CollectNames() {
        for (const ResContainer& container : layout_.containers) {
            for (const ResComponent& component : container.components) {
                if (!kinds_.try_emplace(component.name, component.kind).second)
                    Add(component.place,
                        "a name that is free in the dialog, found " + component.name + " again");
                const ComponentKind childKind =
                    component.kind == ComponentKind::kTab ? ComponentKind::kLayout : ComponentKind::kMenuPane;
                for (const std::string& child : component.children)
                    if (!kinds_.try_emplace(child, childKind).second)
                        Add(component.place, "a name that is free in the dialog, found " + child + " again");
                CheckChildren(component);
            }
        }
    }

    void CheckChildren(const ResComponent& component) {
        const bool needsStatement =
            component.kind == ComponentKind::kLayout || component.kind == ComponentKind::kMenuPane;
        if (needsStatement && !HasStatement(component.name, component.kind))
            Add(component.place,
                "a " + std::string(component.kind == ComponentKind::kLayout ? "Layout" : "MenuPane") +
                    " statement for " + component.name);
        const bool isTab = component.kind == ComponentKind::kTab;
        for (const std::string& child : component.children)
            if (!HasStatement(child, isTab ? ComponentKind::kLayout : ComponentKind::kMenuPane))
                Add(component.place,
                    "a " + std::string(isTab ? "Layout" : "MenuPane") + " statement for " + child);
        if (isTab && component.children.empty())
            Add(component.place, "the layouts of the tab after its name");
    }

    bool HasStatement(const std::string& name, ComponentKind kind) const {
        return std::any_of(layout_.containers.begin(), layout_.containers.end(),
                           [&](const ResContainer& container) {
                               return container.name == name && ComponentOf(container.type) == kind;
                           });
    }

    void CheckStatementHasComponent(std::size_t index) {
        const ResContainer& container = layout_.containers[index];
        for (std::size_t earlier = 0; earlier < index; ++earlier)
            if (layout_.containers[earlier].name == container.name)
                Add(container.place, "one statement for " + container.name);
        const std::optional<ComponentKind> kind = ComponentOf(container.type);
        const auto known = kinds_.find(container.name);
        if (!kind)
            Add(container.place, "one Dialog statement a file");
        else if (known == kinds_.end() || known->second != *kind)
            Add(container.place, "a " + OwnerName(container) + " component named " + container.name);
    }

    // Every statement belongs to the dialog in the end, none to itself.
    void CheckAllHang() {
        std::set<std::string> hanging = {layout_.containers.front().name};
        std::vector<const ResContainer*> next = {&layout_.containers.front()};
        const auto hang = [&](const std::string& name) {
            const ResContainer* container = layout_.Find(name);
            if (container != nullptr && hanging.insert(name).second) next.push_back(container);
        };
        for (std::size_t i = 0; i < next.size(); ++i) {
            for (const ResComponent& component : next[i]->components) {
                hang(component.name);
                for (const std::string& child : component.children) hang(child);
            }
        }
        for (const ResContainer& container : layout_.containers)
            if (kinds_.contains(container.name) && !hanging.contains(container.name))
                Add(container.place, "a place in the dialog for " + container.name);
    }

    void CheckOwnAttributes(const ResContainer& container) {
        const std::optional<ComponentKind> kind = ComponentOf(container.type);
        const bool isCells =
            container.type == ContainerType::kTable || container.type == ContainerType::kTree;
        if (!kind)
            CheckDialogAttributes(container.attributes, findings_);
        else if (isCells && !container.attributes.empty())
            Add(container.attributes.begin()->second.place,
                "attributes of " + container.name + " where the component is listed");
        else
            CheckAttributes(container.attributes, *kind, "a " + TypeName(container), findings_);
    }

    static std::vector<std::wstring> Texts(const ResAttributes& attributes, std::string_view name) {
        std::vector<std::wstring> texts;
        if (const auto attribute = attributes.find(name); attribute != attributes.end())
            for (const ResValue& value : attribute->second.values) texts.push_back(value.text);
        return texts;
    }

    void CheckComponent(const ResComponent& component) {
        const std::string kind(KindName(component.kind));
        CheckAttributes(component.attributes, component.kind, "a " + kind, findings_);
        CheckSameLength(component, "Names", "Labels");
        CheckSameLength(component, "Names", "ItemHelpText");
        CheckSameLength(component, "Names", "ParentNames");
        CheckSameLength(component, "RowNames", "RowLabels");
        for (const char* columnList :
             {"ColumnLabels", "ColumnWidths", "ColumnResizings", "ColumnJustifications"})
            CheckSameLength(component, "ColumnNames", columnList);
        for (const char* nameList : {"Names", "ColumnNames", "RowNames"}) CheckDistinct(component, nameList);
        if (component.kind != ComponentKind::kTable && component.kind != ComponentKind::kTab)
            CheckSelection(component);
        CheckShownValue(component);
    }

    void CheckSameLength(const ResComponent& component, std::string_view names, std::string_view others) {
        const auto list = component.attributes.find(others);
        if (list == component.attributes.end()) return;
        const std::size_t expected = Texts(component.attributes, names).size();
        if (list->second.values.size() != expected)
            Add(list->second.place, std::to_string(expected) + " values, as many as " + std::string(names) +
                                        ", found " + std::to_string(list->second.values.size()));
    }

    void CheckDistinct(const ResComponent& component, std::string_view list) {
        const auto attribute = component.attributes.find(list);
        if (attribute == component.attributes.end()) return;
        std::set<std::wstring> seen;
        for (const ResValue& value : attribute->second.values) {
            if (value.text.empty()) Add(value.place, "a name that is not empty");
            if (!seen.insert(value.text).second)
                Add(value.place, "different names, found " + Utf8(value.text) + " again");
        }
    }

    void CheckSelection(const ResComponent& component) {
        const auto selection = component.attributes.find("SelectedNames");
        if (selection == component.attributes.end()) return;
        const std::vector<std::wstring> names = Texts(component.attributes, "Names");
        const bool oneOnly =
            component.kind == ComponentKind::kRadioGroup || component.kind == ComponentKind::kOptionMenu;
        if (oneOnly && selection->second.values.size() > 1) Add(selection->second.place, "one selected name");
        for (const ResValue& value : selection->second.values)
            if (std::find(names.begin(), names.end(), value.text) == names.end())
                Add(value.place, "one of Names, found " + Utf8(value.text));
    }

    void CheckShownValue(const ResComponent& component) {
        const auto value = component.attributes.find("Value");
        if (value == component.attributes.end() || value->second.values.size() != 1) return;
        const ResValue& shown = value->second.values.front();
        const auto number = [&](const char* name, double otherwise) {
            const auto attribute = component.attributes.find(name);
            const bool given =
                attribute != component.attributes.end() && attribute->second.values.size() == 1;
            return given ? attribute->second.values.front().number : otherwise;
        };
        if (component.kind == ComponentKind::kOptionMenu && number("Editable", 0) == 0) {
            const std::vector<std::wstring> labels = Texts(component.attributes, "Labels");
            if (std::find(labels.begin(), labels.end(), shown.text) == labels.end())
                Add(shown.place, "one of Labels, found " + Utf8(shown.text));
        }
        const double longest = number("MaxLen", 0);
        if (longest > 0 && static_cast<double>(shown.text.size()) > longest)
            Add(shown.place, "at most MaxLen characters");
    }

    void CheckPlacement(const ResContainer& container) {
        const bool isPlane =
            container.type == ContainerType::kDialog || container.type == ContainerType::kLayout;
        if (!isPlane) {
            if (container.grid) Add(container.place, "no .Layout in a " + TypeName(container));
            return;
        }
        if (!container.grid) {
            Add(container.place, "a .Layout in " + container.name);
            return;
        }
        std::map<std::string, int> placed;
        CountPlaces(container, *container.grid, placed);
        for (const ResComponent& component : container.components) {
            const bool inGrid =
                component.kind != ComponentKind::kMenuBar && component.kind != ComponentKind::kMenuPane;
            const int times = placed.contains(component.name) ? placed.at(component.name) : 0;
            if (inGrid && times == 0) Add(component.place, component.name + " placed in the grid");
            if (!inGrid && times > 0)
                Add(component.place, "a menu outside of the grid, found " + component.name);
        }
    }

    void CountPlaces(const ResContainer& container, const ResGrid& grid, std::map<std::string, int>& placed) {
        for (const ResCell& cell : grid.cells) {
            for (const ResGrid& nested : cell.grid) CountPlaces(container, nested, placed);
            if (cell.component.empty()) continue;
            const bool listed =
                std::any_of(container.components.begin(), container.components.end(),
                            [&](const ResComponent& component) { return component.name == cell.component; });
            if (!listed) Add(cell.place, "a component of " + container.name + ", found " + cell.component);
            if (++placed[cell.component] > 1) Add(cell.place, cell.component + " placed once only");
        }
    }

    void CheckDefaultButton(const ResContainer& dialog) {
        const auto attribute = dialog.attributes.find("DefaultButton");
        if (attribute == dialog.attributes.end() || attribute->second.values.empty()) return;
        const auto button = kinds_.find(Utf8(attribute->second.values.front().text));
        if (button == kinds_.end() || button->second != ComponentKind::kPushButton)
            Add(attribute->second.values.front().place, "a push button of the dialog");
    }

    const ResFile& layout_;
    ResFindings& findings_;
    std::map<std::string, ComponentKind> kinds_;
};

}  // namespace

void CheckResFile(const ResFile& layout, const std::string& fileStem, ResFindings& findings) {
    Checker(layout, findings).Run(fileStem);
}

}  // namespace sim
