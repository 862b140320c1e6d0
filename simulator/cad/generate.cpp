#include "simulator/cad/generate.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

namespace {

constexpr int kPlacementsPerModel = 10;
// A repeated sub-assembly repeats all that is in it: on average a model is met this often through repetition
// alone, the rest is filled up with single parts.
constexpr double kRepetition = 5;

SimModel& Created(ModelStore& store, const std::wstring& name, ModelKind kind, ModelSubtype subtype) {
    SimModel* model = store.Create(name, kind, subtype);
    if (model != nullptr) return *model;
    std::fputs("hostsim: a generated model name is taken\n", stderr);
    std::abort();
}

// An assembly being made, with how often a walk of the top assembly meets it.
struct GeneratedLevel {
    std::vector<SimModel*> assemblies;
    std::vector<int> met;
};

class Generator {
public:
    Generator(ModelStore& store, unsigned seed) : store_(store), random_(seed) {}

    SimModel& Make(int placements, int depth, std::wstring_view name) {
        depth = std::max(depth, 1);
        placements = std::max(placements, depth);
        MakeModels(std::max(placements / kPlacementsPerModel, depth), depth);
        SimModel& top = New(std::wstring(name), ModelKind::kAssembly, ModelSubtype::kDesignAssembly);
        tree_[0] = {{&top}, {1}};
        int left = placements;
        PlaceAssemblies(left);
        PlaceParts(left);
        return top;
    }

private:
    // Not the library's distribution: its numbers differ from one library to the other.
    std::size_t Below(std::size_t limit) { return random_() % limit; }

    SimModel& New(const std::wstring& name, ModelKind kind, ModelSubtype subtype) {
        return Created(store_, name, kind, subtype);
    }

    void MakeModels(int count, int depth) {
        tree_.resize(static_cast<std::size_t>(depth));
        const int assemblies = depth == 1 ? 0 : std::max(depth - 1, count / 4);
        for (int i = 0; i < assemblies; ++i) {
            GeneratedLevel& level = tree_[1 + static_cast<std::size_t>(i) % (tree_.size() - 1)];
            level.assemblies.push_back(&New(L"GEN_ASM_" + std::to_wstring(i + 1), ModelKind::kAssembly,
                                            ModelSubtype::kDesignAssembly));
            level.met.push_back(0);
        }
        for (int i = 0; i < std::max(count - assemblies, 1); ++i) {
            const bool isSheetmetal = Below(8) == 0;
            SimModel& part = New(L"GEN_PRT_" + std::to_wstring(i + 1), ModelKind::kPart,
                                 isSheetmetal ? ModelSubtype::kSheetmetal : ModelSubtype::kSolidPart);
            const auto length = [this] { return 5.0 + static_cast<double>(Below(2000)) / 10; };
            const double x = length(), y = length(), z = length();
            parts_.push_back(&part.AddBlock(x, y, z));
        }
    }

    // Every assembly of a level into one of the level above, and again as long as there is room for it.
    void PlaceAssemblies(int& left) {
        const double levels = static_cast<double>(tree_.size()) - 1;
        const double repeatOdds = levels > 0 ? std::min(std::pow(kRepetition, 1 / levels) - 1, 1.0) : 0;
        for (std::size_t depth = 1; depth < tree_.size(); ++depth) {
            for (std::size_t i = 0; i < tree_[depth].assemblies.size(); ++i) {
                const GeneratedLevel& above = tree_[depth - 1];
                // The first ones make a chain without repetition, so that the depth is reached in any case.
                std::size_t parent = i == 0 ? 0 : Below(above.assemblies.size());
                if (i > 0 && above.met[parent] > left / 4) parent = LeastMet(above);
                const bool isRepeated = i > 0 && static_cast<double>(Below(1000)) < repeatOdds * 1000;
                const int times = isRepeated && 2 * above.met[parent] <= left / 4 ? 2 : 1;
                for (int n = 0; n < times; ++n) Place(*above.assemblies[parent], *tree_[depth].assemblies[i]);
                tree_[depth].met[i] = times * above.met[parent];
                left -= tree_[depth].met[i];
            }
        }
    }

    static std::size_t LeastMet(const GeneratedLevel& level) {
        return static_cast<std::size_t>(std::ranges::min_element(level.met) - level.met.begin());
    }

    // Each part once as far as the placements reach, then parts at random; the last ones where they count one
    // each.
    void PlaceParts(int& left) {
        SimModel* deepest = tree_.back().assemblies[0];
        int deepestMet = tree_.back().met[0];
        for (std::size_t next = 0; left > 0; ++next) {
            SimModel& part = next < parts_.size() ? *parts_[next] : *parts_[Below(parts_.size())];
            // The first part closes the chain that makes the depth.
            SimModel* owner = deepest;
            int met = deepestMet;
            if (next > 0) {
                const GeneratedLevel& level = tree_[Below(tree_.size())];
                const std::size_t place = Below(level.assemblies.size());
                owner = level.assemblies[place];
                met = level.met[place];
            }
            if (met > left) {
                owner = tree_[0].assemblies[0];
                met = 1;
            }
            Place(*owner, part);
            left -= met;
        }
    }

    void Place(SimModel& owner, SimModel& component) {
        const auto shift = [this] { return static_cast<double>(Below(10000)) / 10; };
        const double x = shift(), y = shift(), z = shift();
        Placing how;
        how.placement = TranslationMatrix(x, y, z);
        // Now and then a quarter turn about z.
        if (Below(4) == 0)
            how.placement =
                Product({{{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}}, how.placement);
        owner.Place(component, how);
    }

    ModelStore& store_;
    std::mt19937 random_;
    std::vector<GeneratedLevel> tree_;  // by level; the top assembly alone is level 0
    std::vector<SimModel*> parts_;
};

}  // namespace

SimModel& GenerateAssembly(ModelStore& store, int placements, int depth, unsigned seed,
                           std::wstring_view name) {
    return Generator(store, seed).Make(placements, depth, name);
}

std::vector<SimModel*> GenerateDrawings(ModelStore& store, SimModel& assembly, int count, int sheets) {
    constexpr std::array<const wchar_t*, 5> kSizes = {L"A1", L"A3", L"A4", L"A2", L"A0"};
    std::vector<SimModel*> shown = {&assembly};
    for (SimModel* model : store.All())
        if (model->Name().starts_with(L"GEN_") && model != &assembly && model->Kind() != ModelKind::kDrawing)
            shown.push_back(model);
    std::vector<SimModel*> drawings;
    for (int i = 0; i < count; ++i) {
        const std::wstring number = std::to_wstring(i + 1);
        SimModel& drawing = Created(store, L"GEN_DRW_" + number, ModelKind::kDrawing, ModelSubtype::kNone);
        const auto index = static_cast<std::size_t>(i);
        for (int sheet = 0; sheet < sheets; ++sheet) {
            drawing.AddSheet(kSizes[(index + static_cast<std::size_t>(sheet)) % kSizes.size()]);
            drawing.AddView(*shown[index % shown.size()], sheet + 1);
        }
        drawing.SetParameter(L"DRAWING_NO", L"GEN-" + number);
        drawing.SetParameter(L"REVISION", i % 5);
        drawing.SetParameter(L"WEIGHT", 0.25 * (i + 1));
        drawing.SetParameter(L"RELEASED", i % 2 == 0);
        drawings.push_back(&drawing);
    }
    return drawings;
}

}  // namespace sim
