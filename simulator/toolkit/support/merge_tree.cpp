#include "simulator/toolkit/support/merge_tree.h"

#include <algorithm>
#include <array>
#include <map>

#include <ProAsmcomp.h>
#include <ProFeatType.h>

namespace sim {

namespace {

constexpr int kNone = 0;

struct MergeNode {
    int id;
    int parent;
    int valueType;
    int number = 0;       // the value of a number
    int otherParent = 0;  // where the documents have it
};

constexpr std::array<MergeNode, 11> kNodes = {{
    {PRO_E_FEATURE_TREE, kNone, kNone},
    {PRO_E_FEATURE_TYPE, PRO_E_FEATURE_TREE, PRO_VALUE_TYPE_INT, PRO_FEAT_GEN_MERGE},
    {PRO_E_STD_FEATURE_NAME, PRO_E_FEATURE_TREE, PRO_VALUE_TYPE_WSTRING},
    {PRO_E_GMRG_FEAT_TYPE, PRO_E_FEATURE_TREE, PRO_VALUE_TYPE_INT, 0},
    {PRO_E_DSF_REF_MDL, PRO_E_FEATURE_TREE, kNone},
    {PRO_E_DSF_EXT_LOCAL_TYPE, PRO_E_DSF_REF_MDL, PRO_VALUE_TYPE_INT, 0},
    {PRO_E_DSF_SEL_REF_MDL, PRO_E_DSF_REF_MDL, PRO_VALUE_TYPE_SELECTION},
    {PRO_E_DSF_PLACEMENT, PRO_E_DSF_SEL_REF_MDL, kNone, 0, PRO_E_DSF_REF_MDL},
    {PRO_E_COMPONENT_CONSTRAINTS, PRO_E_DSF_PLACEMENT, kNone},
    {PRO_E_COMPONENT_CONSTRAINT, PRO_E_COMPONENT_CONSTRAINTS, kNone},
    {PRO_E_COMPONENT_CONSTR_TYPE, PRO_E_COMPONENT_CONSTRAINT, PRO_VALUE_TYPE_INT, PRO_ASM_FIX},
}};

struct FoundNode {
    const Element* element;
    int parent;
};

bool Fits(const MergeNode& node, const FoundNode& found) {
    const bool isPlaced =
        found.parent == node.parent || (node.otherParent != kNone && found.parent == node.otherParent);
    const auto& value = found.element->value;
    const int type = value ? value->type : kNone;
    return isPlaced && type == node.valueType && (type != PRO_VALUE_TYPE_INT || value->number == node.number);
}

// Every element by its identifier; false when one occurs twice.
bool Collect(Session& host, const void* handle, int parent, std::map<int, FoundNode>& nodes) {
    const Element* element = host.definitions.elements.Find(host.report, handle);
    if (element == nullptr || !nodes.try_emplace(element->id, FoundNode{element, parent}).second)
        return false;
    return std::ranges::all_of(element->children,
                               [&](const void* child) { return Collect(host, child, element->id, nodes); });
}

}  // namespace

std::optional<MergeRequest> ReadMergeTree(Session& host, ProElement tree) {
    std::map<int, FoundNode> nodes;
    std::string fault;
    if (tree == nullptr || !Collect(host, tree, kNone, nodes)) fault = "an element twice";
    if (nodes.size() != kNodes.size()) fault = std::to_string(nodes.size()) + " elements";
    for (const MergeNode& node : kNodes) {
        const auto found = nodes.find(node.id);
        if (found == nodes.end() || !Fits(node, found->second))
            fault = "element " + std::to_string(node.id) + " missing, misplaced or with a wrong value";
    }
    if (!fault.empty()) {
        host.report.Violation("is given a tree that is no merge: " + fault);
        return std::nullopt;
    }
    return MergeRequest{nodes.at(PRO_E_STD_FEATURE_NAME).element->value->text,
                        *nodes.at(PRO_E_DSF_SEL_REF_MDL).element->value->selection,
                        nodes.at(PRO_E_DSF_PLACEMENT).parent == PRO_E_DSF_SEL_REF_MDL};
}

}  // namespace sim
