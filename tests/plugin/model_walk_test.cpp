// The walk through an assembly against a plain one that visits every placement.

#include <algorithm>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

#include "model/model_walk.h"
#include "support/host_test.h"

namespace {

using sim::ModelKind;
using sim::SimModel;

// A placement: its model, its level, and the number of its component.
using Placement = std::tuple<const void*, int, int>;

void WalkPlainly(const SimModel& assembly, std::vector<const SimModel*>& path, std::vector<Placement>& all) {
    const int level = static_cast<int>(path.size()) + 1;
    path.push_back(&assembly);
    for (const sim::Feature& feature : assembly.Features()) {
        all.emplace_back(feature.component, level, feature.id);
        const bool isOnPath = std::ranges::find(path, feature.component) != path.end();
        const bool goesOn = feature.component->Kind() == ModelKind::kAssembly && !isOnPath;
        if (goesOn && level < PRO_MAX_ASSEM_LEVEL) WalkPlainly(*feature.component, path, all);
    }
    path.pop_back();
}

class ModelWalk : public test::HostTest {
protected:
    // Gives how many placements there are.
    std::size_t Compare(SimModel& top) {
        std::vector<const SimModel*> path;
        std::vector<Placement> plain;
        WalkPlainly(top, path, plain);
        kv::WalkResult walk;
        EXPECT_EQ(kv::ModelWalk(&top, kv::CollectAllComponents, walk, kv::FeatureList::Made),
                  PRO_TK_NO_ERROR);
        const std::span<ProAsmcomp> components = kv::Items(walk.components);
        EXPECT_EQ(components.size(), walk.models.size());
        std::vector<Placement> found;
        for (std::size_t i = 0; i < std::min(components.size(), walk.models.size()); ++i)
            found.emplace_back(walk.models[i].model, walk.models[i].level, components[i].id);
        EXPECT_EQ(found, plain);
        return plain.size();
    }
    std::vector<SimModel*> Assemblies(int count, const std::wstring& name) {
        std::vector<SimModel*> made;
        for (int i = 0; i < count; ++i) made.push_back(&Assembly((name + std::to_wstring(i)).c_str()));
        return made;
    }
};

// Assemblies that share others, contain themselves, or contain each other.
TEST_F(ModelWalk, FindsWhatAPlainWalkFinds) {
    std::mt19937 random(7);
    SimModel& bolt = Part(L"BOLT");
    for (int tree = 0; tree < 60; ++tree) {
        SCOPED_TRACE(tree);
        const std::vector<SimModel*> made = Assemblies(7, L"T" + std::to_wstring(tree) + L"_");
        for (SimModel* assembly : made)
            for (unsigned int i = random() % 3; i > 0; --i)
                assembly->Place(random() % 4 == 0 ? bolt : *made[random() % made.size()]);
        for (SimModel* top : made) Compare(*top);
    }
}

// Chains longer than the deepest level, with shortcuts: one assembly is met above and below the cut.
TEST_F(ModelWalk, CutsEveryPathAtItsOwnDeepestLevel) {
    std::mt19937 random(11);
    SimModel& bolt = Part(L"BOLT");
    std::size_t placements = 0;
    for (int tree = 0; tree < 40; ++tree) {
        SCOPED_TRACE(tree);
        const std::vector<SimModel*> made = Assemblies(30, L"C" + std::to_wstring(tree) + L"_");
        const std::size_t cuts[] = {random() % 27, random() % 27, random() % 27};
        for (std::size_t i = 0; i + 1 < made.size(); ++i) {
            const bool hasShortcut = std::ranges::find(cuts, i) != std::end(cuts);
            SimModel& further = *made[i + 1 + random() % (made.size() - i - 1)];
            if (hasShortcut && random() % 2 == 0) made[i]->Place(further);
            made[i]->Place(*made[i + 1]);
            if (hasShortcut) made[i]->Place(further).Place(bolt);
        }
        placements += Compare(*made[0]);
    }
    EXPECT_GT(placements, 1000u);
}

}  // namespace
