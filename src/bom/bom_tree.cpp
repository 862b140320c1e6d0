// The assembly as a tree of numbered items.
//
// The placements come depth first, each followed by all that is below it, so that at any time only one chain
// of parents is open. For each name the node that was entered last is remembered; when a parent is done its
// children give way to what was remembered before them. A name thus leads straight to its node under the open
// parent, if there is one.

#include "bom/bom_tree.h"

#include <cstddef>

namespace kv {

static constexpr unsigned int kNone = ~0U;
static constexpr wchar_t kRootCode[] = L"0";

// The node that a name leads to, with its parent beside it: most look-ups end there, and the nodes themselves
// are many and far apart.
struct KnownNode {
    unsigned int node = kNone;
    unsigned int parent = kNone;
};

// What a name led to before a child took it over.
struct HiddenNode {
    unsigned int name;
    KnownNode node;
};

struct OpenParent {
    unsigned int node;
    std::size_t children;  // where its children begin in the list of what they hide
};

struct TreeBuilder {
    std::vector<unsigned int> nameOf;  // by model
    std::vector<KnownNode> nodeOf;     // by name
    std::vector<BomNode> nodes;
    std::vector<OpenParent> open;    // the root first
    std::vector<HiddenNode> hidden;  // one for each child of an open parent
};

static void OpenNode(TreeBuilder& builder, unsigned int node);
static void CloseNode(TreeBuilder& builder);
static unsigned int AddChild(TreeBuilder& builder, unsigned int model);

std::vector<BomNode> LevelTree(std::span<const NamedModel> models, std::span<const PlacedModel> placed) {
    TreeBuilder builder;
    builder.nameOf = FirstOfSame(models, NameMatch::Exact, TypeMatch::Any);
    builder.nodeOf.resize(models.size());
    builder.nodes.reserve(placed.size() + 1);
    builder.nodes.push_back({static_cast<unsigned int>(models.size() - 1), 1, 0, 1, 0});
    OpenNode(builder, 0);

    for (const PlacedModel& placement : placed) {
        const auto level = static_cast<std::size_t>(placement.level);
        // Deeper than what is open: below an item that was entered before.
        if (level > builder.open.size()) continue;
        while (level < builder.open.size()) CloseNode(builder);
        const KnownNode known = builder.nodeOf[builder.nameOf[placement.index]];
        if (known.parent == builder.open.back().node)
            ++builder.nodes[known.node].count;
        else
            OpenNode(builder, AddChild(builder, placement.index));
    }
    return std::move(builder.nodes);
}

std::wstring ItemCode(std::span<const BomNode> tree, unsigned int node) {
    if (node == 0) return kRootCode;
    std::wstring code = std::to_wstring(tree[node].position);
    for (unsigned int parent = tree[node].parent; parent != 0; parent = tree[parent].parent)
        code.insert(0, std::to_wstring(tree[parent].position) + L".");
    return code;
}

static void OpenNode(TreeBuilder& builder, unsigned int node) {
    builder.open.push_back({node, builder.hidden.size()});
}

static void CloseNode(TreeBuilder& builder) {
    const std::size_t children = builder.open.back().children;
    for (; builder.hidden.size() > children; builder.hidden.pop_back())
        builder.nodeOf[builder.hidden.back().name] = builder.hidden.back().node;
    builder.open.pop_back();
}

// A node at the end of the list, under the innermost open parent. All below the earlier children is closed,
// so what is hidden there is what its own children hide.
static unsigned int AddChild(TreeBuilder& builder, unsigned int model) {
    const auto child = static_cast<unsigned int>(builder.nodes.size());
    const auto [parent, children] = builder.open.back();
    const auto position = static_cast<unsigned int>(builder.hidden.size() - children) + 1;
    builder.nodes.push_back({model, 1, parent, position, static_cast<int>(builder.open.size())});

    const unsigned int name = builder.nameOf[model];
    builder.hidden.push_back({name, builder.nodeOf[name]});
    builder.nodeOf[name] = {child, parent};
    return child;
}

}  // namespace kv
