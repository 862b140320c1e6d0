// Merge features, from an element tree.

#include "assembly/merge_feature.h"

#include <algorithm>
#include <array>
#include <iterator>

#include <ProAsmcomp.h>
#include <ProElement.h>
#include <ProFeatType.h>
#include <ProFeature.h>
#include <ProValue.h>

#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

static constexpr ProElemId kRoot = 0;

enum class ElementContent { None, Number, Name, Part };
using enum ElementContent;

struct MergeElement {
    ProElemId id;
    ProElemId parent;
    ElementContent content;
    int number;
};

// A parent stands before its children.
// clang-format off
static constexpr MergeElement kMergeTree[] = {
    // element                     parent                       content  number
    {PRO_E_FEATURE_TREE,           kRoot,                       None,    0},
    {PRO_E_FEATURE_TYPE,           PRO_E_FEATURE_TREE,          Number,  PRO_FEAT_GEN_MERGE},
    {PRO_E_STD_FEATURE_NAME,       PRO_E_FEATURE_TREE,          Name,    0},
    {PRO_E_GMRG_FEAT_TYPE,         PRO_E_FEATURE_TREE,          Number,  0},  // a merge, no inheritance
    {PRO_E_DSF_REF_MDL,            PRO_E_FEATURE_TREE,          None,    0},
    {PRO_E_DSF_EXT_LOCAL_TYPE,     PRO_E_DSF_REF_MDL,           Number,  0},  // placed where it stands
    {PRO_E_DSF_SEL_REF_MDL,        PRO_E_DSF_REF_MDL,           Part,    0},
    {PRO_E_DSF_PLACEMENT,          PRO_E_DSF_SEL_REF_MDL,       None,    0},
    {PRO_E_COMPONENT_CONSTRAINTS,  PRO_E_DSF_PLACEMENT,         None,    0},
    {PRO_E_COMPONENT_CONSTRAINT,   PRO_E_COMPONENT_CONSTRAINTS, None,    0},
    {PRO_E_COMPONENT_CONSTR_TYPE,  PRO_E_COMPONENT_CONSTRAINT,  Number,  PRO_ASM_FIX},
};
// clang-format on

static void ValueFree(ProValue* value) {
    ProValueFree(*value);
}

using ElementHandle = HostHandle<ProElement, ProElementFree>;
using ValueHandle = HostHandle<ProValue, ValueFree>;

// What differs from one merge to the next.
struct MergeContent {
    ProSelection part;
    const std::wstring& name;
    MergeNesting nesting;
};

static ProError TreeBuild(const MergeContent& content, ElementHandle& tree);
static ProError ElementMake(const MergeElement& row, const MergeContent& content, ElementHandle& element);
static ProValueData ValueOf(const MergeElement& row, const MergeContent& content);
static ProElemId ParentOf(const MergeElement& row, MergeNesting nesting);

ProError MergeFeatureCreate(ProSelection target, ProSelection part, const std::wstring& name,
                            MergeNesting nesting) {
    ElementHandle tree;
    const ProError status = TreeBuild({part, name, nesting}, tree);
    if (Failed(status)) return status;
    ProFeature feature = {};
    ProErrorlist errors = {};
    return ProFeatureCreate(target, tree.Get(), nullptr, 0, &feature, &errors);
}

// An element belongs to the tree once it was added; until then it is freed by itself.
static ProError TreeBuild(const MergeContent& content, ElementHandle& tree) {
    std::array<ProElement, std::size(kMergeTree)> made = {};
    for (std::size_t i = 0; i < made.size(); ++i) {
        const MergeElement& row = kMergeTree[i];
        ElementHandle element;
        ProError status = ElementMake(row, content, element);
        if (Failed(status)) return status;
        made[i] = element.Get();
        if (row.parent == kRoot) {
            tree.Reset(element.Release());
            continue;
        }
        const ProElemId parentId = ParentOf(row, content.nesting);
        const auto* parent = std::ranges::find(kMergeTree, parentId, &MergeElement::id);
        status = ProElemtreeElementAdd(made[static_cast<std::size_t>(parent - kMergeTree)], nullptr, made[i]);
        if (Failed(status)) return status;
        (void)element.Release();
    }
    return PRO_TK_NO_ERROR;
}

static ProError ElementMake(const MergeElement& row, const MergeContent& content, ElementHandle& element) {
    ProError status = element.Received(ProElementAlloc(row.id, element.Receive()));
    if (Failed(status) || row.content == None) return status;

    ValueHandle value;
    ProValueData data = ValueOf(row, content);
    status = value.Received(ProValueAlloc(value.Receive()));
    if (!Failed(status)) status = ProValueDataSet(value.Get(), &data);
    if (!Failed(status)) status = ProElementValueSet(element.Get(), value.Get());
    // Nothing says whose a value is once an element has it: a lost one is better than one freed twice.
    if (!Failed(status)) (void)value.Release();
    return status;
}

static ProValueData ValueOf(const MergeElement& row, const MergeContent& content) {
    ProValueData data = {};
    if (row.content == Name) {
        data.type = PRO_VALUE_TYPE_WSTRING;
        data.v.w = HostText(content.name.c_str());
    } else if (row.content == Part) {
        data.type = PRO_VALUE_TYPE_SELECTION;
        data.v.r = content.part;
    } else {
        data.type = PRO_VALUE_TYPE_INT;
        data.v.i = row.number;
    }
    return data;
}

static ProElemId ParentOf(const MergeElement& row, MergeNesting nesting) {
    const bool isMoved = row.id == PRO_E_DSF_PLACEMENT && nesting == MergeNesting::BesideSelection;
    return isMoved ? PRO_E_DSF_REF_MDL : row.parent;
}

}  // namespace kv
