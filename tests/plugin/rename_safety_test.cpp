// A rename that is ended anywhere, and renames of any tree: what lies on disk always finds what it names, or
// the reverse table leads back to that.

#include <algorithm>
#include <filesystem>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "simulator/report/utf8.h"
#include "support/arrange.h"
#include "support/rename_check.h"
#include "support/temp_directory.h"

namespace {

namespace fs = std::filesystem;
using sim::HostSetup;
using sim::ModelKind;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using test::MissingIn;
using Missing = std::set<std::wstring>;

// ---- The process ends

// TOP { SUB { ARM { BOLT } BOLT } ARM } with drawings of all but ARM; that of TOP shows BOLT as well.
void ArrangeTree(SimHost& host) {
    SimModel& top = host.AddAssembly(L"TOP");
    SimModel& sub = host.AddAssembly(L"SUB");
    SimModel& arm = host.AddAssembly(L"ARM");
    SimModel& bolt = host.AddPart(L"BOLT");
    arm.Place(bolt);
    sub.Place(arm).Place(bolt);
    top.Place(sub).Place(arm);
    EXPECT_EQ(host.State().models.Save(top), PRO_TK_NO_ERROR);
    host.AddDrawingFile(L"BOLT", {L"A4"}, {&bolt});
    host.AddDrawingFile(L"SUB", {L"A4"}, {&sub});
    host.AddDrawingFile(L"TOP", {L"A4"}, {&top, &bolt});
    host.Open(top);
}

// Opens the top assembly, by whichever name it has now, and takes the last rename back.
void Heal(const fs::path& workspace, const fs::path& data) {
    HostSetup setup;
    setup.workspace = workspace;
    setup.localData = data;
    SimHost host(setup);
    host.State().models.renameTakesOldFiles = true;
    const bool hasOld = test::HasModelFile(workspace, L"top.asm");
    SimModel* top = host.Retrieve(hasOld ? L"TOP" : L"TOP2", ModelKind::kAssembly);
    ASSERT_NE(top, nullptr);
    host.Open(*top);
    host.OnDialog("KvRename", [](SimDialog& dialog) { dialog.Press("KvUndoRename"); });
    host.Run("KvRename");
}

// A copy of all that is on disk after each host call is what a process that ends there leaves behind.
void EndAfterEachCall(bool takesOldFiles) {
    test::TempDirectory snapshots;
    test::TempDirectory workspace;
    test::TempDirectory data;
    int count = 0;
    bool copied = true;
    {
        HostSetup setup;
        setup.workspace = workspace.Path();
        setup.localData = data.Path();
        SimHost host(setup);
        host.State().models.renameTakesOldFiles = takesOldFiles;
        ArrangeTree(host);
        host.OnDialog("KvRename", [&](SimDialog& dialog) {
            const wchar_t* const names[] = {L"TOP2", L"SUB2", L"ARM2", L"BOLT2"};
            for (int i = 0; i < 4; ++i) dialog.Type("input" + std::to_string(i + 1), names[i]);
            host.State().report.onCallEnded = [&] {
                const fs::path place = snapshots / std::to_string(count++);
                std::error_code error;
                fs::create_directories(place, error);
                fs::copy(workspace.Path(), place / "models", fs::copy_options::recursive, error);
                fs::copy(data.Path(), place / "data", fs::copy_options::recursive, error);
                copied = copied && !error;
            };
            dialog.Press("StartRename");
            host.State().report.onCallEnded = nullptr;
        });
        host.Run("KvRename");
        EXPECT_EQ(host.LastMessage(), L"\t批量重命名操作已完成\t");
    }
    ASSERT_TRUE(copied);
    ASSERT_GT(count, 40);
    int healed = 0;
    for (int i = 0; i < count; ++i) {
        const fs::path place = snapshots / std::to_string(i);
        if (MissingIn(place / "models").empty()) continue;
        ++healed;
        Heal(place / "models", place / "data");
        EXPECT_EQ(MissingIn(place / "models"), Missing()) << "ended after call " << i;
        for (const wchar_t* model :
             {L"top.asm", L"sub.asm", L"arm.asm", L"bolt.prt", L"bolt.drw", L"sub.drw"})
            EXPECT_TRUE(test::HasModelFile(place / "models", model))
                << "ended after call " << i << sim::Utf8(model);
        if (testing::Test::HasFailure()) return;
    }
    // With the old files in place nothing ever goes missing.
    EXPECT_EQ(healed > 0, takesOldFiles);
}

TEST(RenameEnded, AnywhereLosesNothingWhileOldFilesStay) {
    EndAfterEachCall(false);
}

TEST(RenameEnded, AnywhereCanBeTakenBackWhereOldFilesGo) {
    EndAfterEachCall(true);
}

// ---- Any tree, any table

struct RandomTree {
    std::vector<SimModel*> models;  // the top first
    std::map<const SimModel*, std::vector<const SimModel*>> below;
};

RandomTree MakeTree(SimHost& host, std::mt19937& random) {
    const auto pick = [&random](std::size_t below) {
        return std::uniform_int_distribution<std::size_t>(0, below - 1)(random);
    };
    RandomTree tree;
    const std::size_t assemblies = 2 + pick(4);
    const std::size_t parts = 2 + pick(4);
    for (std::size_t i = 0; i < assemblies; ++i)
        tree.models.push_back(&host.AddAssembly(L"ASM" + std::to_wstring(i)));
    for (std::size_t i = 0; i < parts; ++i) tree.models.push_back(&host.AddPart(L"PRT" + std::to_wstring(i)));
    for (std::size_t i = 1; i < tree.models.size(); ++i) {
        // Above every model stands one with a lower number; shared ones stand in several.
        const std::size_t owners = 1 + pick(2);
        for (std::size_t owner = 0; owner < owners; ++owner) {
            SimModel& above = *tree.models[pick(std::min(i, assemblies))];
            above.Place(*tree.models[i], static_cast<int>(1 + pick(2)));
        }
    }
    for (SimModel* model : tree.models)
        for (const sim::Feature& feature : model->Features()) tree.below[model].push_back(feature.component);
    EXPECT_EQ(host.State().models.Save(*tree.models.front()), PRO_TK_NO_ERROR);
    for (SimModel* model : tree.models)
        if (pick(2) == 0)
            host.AddDrawingFile(model->Name(), {L"A4"}, {model, tree.models[pick(tree.models.size())]});
    host.Open(*tree.models.front());
    return tree;
}

std::vector<std::wstring> NamesOf(const RandomTree& tree) {
    std::vector<std::wstring> names;
    for (const SimModel* model : tree.models) names.push_back(model->Name());
    return names;
}

// The new names by the old ones of the same type; what the rules make of them is worked out here anew.
struct Wishes {
    std::map<std::wstring, std::wstring> names;
    bool isGood = true;
};

Wishes MakeWishes(const RandomTree& tree, std::mt19937& random) {
    const auto pick = [&random](std::size_t below) {
        return std::uniform_int_distribution<std::size_t>(0, below - 1)(random);
    };
    Wishes wishes;
    std::set<std::wstring> taken;
    for (const std::wstring& name : NamesOf(tree)) taken.insert(name);
    const bool isWild = pick(2) == 0;
    for (std::size_t i = 0; i < tree.models.size(); ++i) {
        if (pick(3) == 0) continue;
        std::wstring wish = L"NEW" + std::to_wstring(i);
        // A name of another model: a swap or a chain; a name twice; one too many characters.
        if (isWild && pick(4) == 0) wish = tree.models[pick(tree.models.size())]->Name();
        if (isWild && pick(6) == 0) wish = L"NEW1";
        if (isWild && pick(9) == 0) wish = std::wstring(33, L'N');
        wishes.names[tree.models[i]->Name()] = wish;
    }
    std::set<std::wstring> used;
    for (const SimModel* model : tree.models) {
        const auto wish = wishes.names.find(model->Name());
        if (wish == wishes.names.end() || wish->second == model->Name()) continue;
        // Names of parts and assemblies do not meet.
        const std::wstring key = wish->second + (model->Kind() == ModelKind::kPart ? L".p" : L".a");
        const bool isOther = std::ranges::any_of(tree.models, [&](const SimModel* other) {
            return other->Kind() == model->Kind() && other->Name() == wish->second;
        });
        if (isOther || wish->second.size() > 32 || !used.insert(key).second) wishes.isGood = false;
    }
    return wishes;
}

void RenameRandomTree(unsigned seed) {
    std::mt19937 random(seed);
    SimHost host;
    host.State().models.renameTakesOldFiles = seed % 2 == 0;
    const RandomTree tree = MakeTree(host, random);
    const std::vector<std::wstring> before = NamesOf(tree);
    const Wishes wishes = MakeWishes(tree, random);
    host.OnDialog("KvRename", [&](SimDialog& dialog) {
        for (const std::string& row : dialog.Rows("mdl_list")) {
            const auto wish = wishes.names.find(dialog.Cell("mdl_list", row, "old_name"));
            if (wish != wishes.names.end()) dialog.Type("input" + row, wish->second);
        }
        dialog.Press("KvDropUnchanged").Press("StartRename");
    });
    host.Run("KvRename");

    for (std::size_t i = 0; i < before.size(); ++i) {
        const auto wish = wishes.names.find(before[i]);
        const bool changes = wishes.isGood && wish != wishes.names.end();
        EXPECT_EQ(tree.models[i]->Name(), changes ? wish->second : before[i]);
    }
    for (const SimModel* model : tree.models) {
        std::vector<const SimModel*> below;
        for (const sim::Feature& feature : model->Features()) below.push_back(feature.component);
        const auto was = tree.below.find(model);
        EXPECT_EQ(below, was == tree.below.end() ? std::vector<const SimModel*>() : was->second);
    }
    EXPECT_EQ(MissingIn(host.WorkingDirectory()), Missing());
}

TEST(RenameAnyTree, IsDoneByTheRulesOrNotAtAll) {
    for (unsigned seed = 1; seed <= 60; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RenameRandomTree(seed);
        if (HasFailure()) return;
    }
}

}  // namespace
