// The rules of the bill of materials against a slow count that follows the assembly itself.

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "bom/bom_columns.h"
#include "bom/bom_tree.h"
#include "model/model_count.h"

namespace {

using kv::BomNode;
using kv::ModelCount;
using kv::NamedModel;
using kv::NameMatch;
using kv::PlacedModel;

constexpr int kDeepest = 25;

// An assembly as its designer sees it: components by model; those left out never reach the lists.
struct Component {
    unsigned int model;
    bool leftOut = false;
};
struct Design {
    std::vector<NamedModel> models;  // the last is the top assembly
    std::vector<std::vector<Component>> below;
};

// Few names for many models, so that part and assembly, and names that differ in letter case only, meet.
Design RandomDesign(std::mt19937& random) {
    const auto roll = [&random](int sides) {
        return static_cast<int>(random() % static_cast<unsigned>(sides));
    };
    const std::vector<std::wstring> names = {L"BOLT", L"Bolt", L"NUT", L"SUB", L"sub", L"UNIT", L"护罩"};
    Design design;
    const int count = 4 + roll(12);
    for (int i = 0; i < count; ++i) {
        const bool isAssembly = i > 2 && roll(2) == 0;
        const std::wstring name =
            roll(3) == 0 ? L"M" + std::to_wstring(i) : names[static_cast<std::size_t>(roll(7))];
        design.models.push_back({nullptr, isAssembly ? PRO_MDL_ASSEMBLY : PRO_MDL_PART, name});
        design.below.emplace_back();
        for (int c = isAssembly ? 1 + roll(4) : 0; c > 0; --c)
            design.below.back().push_back({static_cast<unsigned int>(roll(i)), roll(6) == 0});
    }
    design.models.back() = {nullptr, PRO_MDL_ASSEMBLY, L"TOP"};
    design.below.back() = {
        {0}, {static_cast<unsigned int>(count - 2)}, {1}, {static_cast<unsigned int>(count - 2)}};
    return design;
}

// A chain of assemblies with a bolt and a repeated nut on each level.
Design DeepDesign() {
    Design design;
    design.models = {{nullptr, PRO_MDL_PART, L"BOLT"}, {nullptr, PRO_MDL_PART, L"NUT"}};
    design.below.resize(2);
    for (unsigned int level = kDeepest; level > 0; --level) {
        const auto next = static_cast<unsigned int>(design.models.size());
        design.models.push_back({nullptr, PRO_MDL_ASSEMBLY, L"LEVEL" + std::to_wstring(level - 1)});
        design.below.push_back({{0}, {1}, {1}});
        if (level < kDeepest) design.below.back().push_back({next - 1});
    }
    return design;
}

void Place(const Design& design, unsigned int assembly, int level, std::vector<PlacedModel>& placed) {
    for (const Component& component : design.below[assembly]) {
        if (component.leftOut) continue;
        placed.push_back({nullptr, design.models[component.model].type, level, component.model});
        Place(design, component.model, level + 1, placed);
    }
}

std::vector<PlacedModel> Placements(const Design& design) {
    std::vector<PlacedModel> placed;
    Place(design, static_cast<unsigned int>(design.models.size() - 1), 1, placed);
    return placed;
}

struct SlowNode {
    std::wstring name;
    std::wstring code;
    int level;
    int count;
    ProMdlType type;
    std::vector<SlowNode> children;
};

void Grow(const Design& design, unsigned int assembly, SlowNode& parent) {
    for (const Component& component : design.below[assembly]) {
        if (component.leftOut) continue;
        const NamedModel& model = design.models[component.model];
        const auto known = std::find_if(parent.children.begin(), parent.children.end(),
                                        [&](const SlowNode& child) { return child.name == model.name; });
        if (known != parent.children.end()) {
            ++known->count;
            continue;
        }
        std::wstring code = parent.code + L"." + std::to_wstring(parent.children.size() + 1);
        if (code.starts_with(L"0.")) code.erase(0, 2);
        parent.children.push_back({model.name, code, parent.level + 1, 1, model.type, {}});
        Grow(design, component.model, parent.children.back());
    }
}

using Line = std::wstring;

Line LineOf(const std::wstring& name, ProMdlType type, int level, const std::wstring& code, int count) {
    return std::to_wstring(level) + L" " + code + L" " + name + L" " + std::to_wstring(type) + L" x" +
           std::to_wstring(count);
}

void List(const SlowNode& node, std::vector<Line>& lines) {
    lines.push_back(LineOf(node.name, node.type, node.level, node.code, node.count));
    for (const SlowNode& child : node.children) List(child, lines);
}

std::vector<Line> TreeLines(const Design& design) {
    const std::vector<BomNode> tree = kv::LevelTree(design.models, Placements(design));
    std::vector<Line> lines;
    for (unsigned int i = 0; i < tree.size(); ++i) {
        const NamedModel& model = design.models[tree[i].model];
        lines.push_back(LineOf(model.name, model.type, tree[i].level, kv::ItemCode(tree, i),
                               static_cast<int>(tree[i].count)));
    }
    return lines;
}

// How often `wanted` is met below an assembly, by the multiples of each sub-assembly.
int SlowCount(const Design& design, unsigned int assembly, const NamedModel& wanted) {
    int count = 0;
    for (const Component& component : design.below[assembly]) {
        if (component.leftOut) continue;
        const NamedModel& model = design.models[component.model];
        count += model.name == wanted.name && model.type == wanted.type ? 1 : 0;
        count += SlowCount(design, component.model, wanted);
    }
    return count;
}

void ExpectSameAsSlowCount(const Design& design) {
    const auto top = static_cast<unsigned int>(design.models.size() - 1);
    SlowNode root = {design.models[top].name, L"0", 0, 1, PRO_MDL_ASSEMBLY, {}};
    Grow(design, top, root);
    std::vector<Line> expected;
    List(root, expected);
    EXPECT_EQ(TreeLines(design), expected);

    const std::vector<PlacedModel> placed = Placements(design);
    const std::vector<ModelCount> counts = kv::CountModels(design.models, placed, NameMatch::Exact);
    unsigned int total = 0;
    auto met = placed.begin();
    for (const ModelCount& entry : counts) {
        // Each entry is met for the first time behind all earlier ones.
        const NamedModel& counted = design.models[entry.model];
        met = std::find_if(met, placed.end(), [&](const PlacedModel& placement) {
            const NamedModel& model = design.models[placement.index];
            return model.name == counted.name && model.type == counted.type;
        });
        ASSERT_NE(met, placed.end());
        EXPECT_EQ(entry.count, static_cast<unsigned int>(SlowCount(design, top, design.models[entry.model])));
        total += entry.count;
    }
    EXPECT_EQ(total, placed.size());
}

TEST(BomRules, CountAndNumberAsASlowCountDoes) {
    for (unsigned int seed = 1; seed <= 400 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        ExpectSameAsSlowCount(RandomDesign(random));
    }
    ExpectSameAsSlowCount(DeepDesign());
}

// Worked out by hand: a repeated sub-assembly, the same part again on several levels and after it, and an
// assembly that has the name of a part beside it.
TEST(BomRules, NumberItemsUnderEachParent) {
    Design design;
    design.models = {{nullptr, PRO_MDL_PART, L"BOLT"},
                     {nullptr, PRO_MDL_PART, L"SUB"},
                     {nullptr, PRO_MDL_ASSEMBLY, L"INNER"},
                     {nullptr, PRO_MDL_ASSEMBLY, L"SUB"},
                     {nullptr, PRO_MDL_ASSEMBLY, L"TOP"}};
    design.below = {{}, {}, {{0}, {0}}, {{0}, {2}, {0}}, {{3}, {0}, {3}, {1}, {2}, {0}}};
    EXPECT_EQ(
        TreeLines(design),
        (std::vector<Line>{L"0 0 TOP 1 x1", L"1 1 SUB 1 x3", L"2 1.1 BOLT 2 x2", L"2 1.2 INNER 1 x1",
                           L"3 1.2.1 BOLT 2 x2", L"1 2 BOLT 2 x2", L"1 3 INNER 1 x1", L"2 3.1 BOLT 2 x2"}));

    const auto counts = kv::CountModels(design.models, Placements(design), NameMatch::Exact);
    std::vector<std::pair<unsigned int, unsigned int>> pairs;
    for (const ModelCount& entry : counts) pairs.emplace_back(entry.model, entry.count);
    EXPECT_EQ(pairs, (std::vector<std::pair<unsigned int, unsigned int>>{{3, 2}, {0, 12}, {2, 3}, {1, 1}}));
}

TEST(BomRules, NamesMeetByTheirRule) {
    Design design;
    design.models = {{nullptr, PRO_MDL_PART, L"bolt"},     {nullptr, PRO_MDL_PART, L"BOLT"},
                     {nullptr, PRO_MDL_ASSEMBLY, L"BOLT"}, {nullptr, PRO_MDL_PART, L""},
                     {nullptr, PRO_MDL_PART, L""},         {nullptr, PRO_MDL_ASSEMBLY, L"TOP"}};
    design.below = {{}, {}, {}, {}, {}, {{0}, {1}, {2}, {3}, {4}, {3}, {1}}};
    const std::vector<PlacedModel> placed = Placements(design);
    const auto text = [&](NameMatch rule) {
        std::string all;
        for (const ModelCount& entry : kv::CountModels(design.models, placed, rule))
            all += std::to_string(entry.model) + "x" + std::to_string(entry.count) + " ";
        return all;
    };
    EXPECT_EQ(text(NameMatch::Exact), "0x1 1x2 2x1 3x2 4x1 ");
    EXPECT_EQ(text(NameMatch::AnyCase), "0x3 2x1 3x2 4x1 ") << "the type still tells them apart";
}

}  // namespace
