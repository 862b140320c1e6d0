// Saved views and simplified representations: what files keep of them, and what the host says to misuse.

#include <string>
#include <vector>

#include <ProSimprep.h>
#include <ProSolid.h>
#include <ProView.h>
#include <gtest/gtest.h>

#include "simulator/cad/model_store.h"
#include "support/host_test.h"

namespace {

using sim::RepAction;
using sim::Representation;
using sim::SimModel;

class Representations : public test::HostTest {};

TEST_F(Representations, AndViewsAreGivenBackByFiles) {
    {
        sim::ModelStore store(folder.Path());
        SimModel& bolt = *store.Create(L"BOLT", sim::ModelKind::kPart);
        SimModel& pump = *store.Create(L"PUMP", sim::ModelKind::kAssembly);
        pump.Place(bolt, 2).savedViews[L"KV_TOP"] = {L"KV_TOP", sim::TranslationMatrix(1, 2, 3)};
        pump.AddRepresentation({0, L"小", RepAction::kExclude, {{{2}, RepAction::kInclude}}});
        ASSERT_EQ(store.Save(pump), PRO_TK_NO_ERROR);
    }
    SimModel* pump = nullptr;
    ASSERT_EQ(session.models.Retrieve(L"PUMP", sim::ModelKind::kAssembly, pump), PRO_TK_NO_ERROR);
    EXPECT_EQ(pump->savedViews.at(L"KV_TOP").orientation, sim::TranslationMatrix(1, 2, 3));
    const Representation* read = pump->FindRepresentation(L"小");
    ASSERT_NE(read, nullptr);
    EXPECT_FALSE(pump->IsLeftOut({1})) << "the master is active";
    pump->ActivateRepresentation(read->id);
    EXPECT_TRUE(pump->IsLeftOut({1}));
    EXPECT_FALSE(pump->IsLeftOut({2}));
}

TEST_F(Representations, NeedDataThatLeadSomewhereAndAreFreed) {
    SimModel& pump = Assembly(L"PUMP").Place(Part(L"BOLT"));
    test::Name name(L"ONE");
    ProSimprepdata* data = nullptr;
    ProSimprepAction action = {};
    ProSimprepitem item = {};
    ProSimprep rep = {};
    ProIdTable ids = {7};
    ASSERT_EQ(ProSimprepdataAlloc(name.text, PRO_B_FALSE, PRO_SIMPREP_INCLUDE, &data), PRO_TK_NO_ERROR);
    EXPECT_EQ(session.report.OpenItems().size(), 1u);
    ASSERT_EQ(ProSimprepActionInit(PRO_SIMPREP_EXCLUDE, nullptr, &action), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProSimprepdataitemInit(ids, 1, PRO_VALUE_UNUSED, &action, &item), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProSimprepdataitemAdd(data, &item), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProSimprepCreate(test::Solid(pump), data, &rep), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no component of PUMP"));
    ProSimprepdata* stale = data;
    ASSERT_EQ(ProSimprepdataFree(&data), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProSimprepdataFree(&stale), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("was freed"));
}

// Whoever forgets to leave them out measures them.
TEST_F(Representations, BoxesHoldDatumsUnlessTheyAreExcluded) {
    SimModel& bolt =
        Part(L"BOLT").AddBlock(1, 2, 3).AddCoordinateSystem(L"FAR", sim::TranslationMatrix(9, 0, 0));
    Pro3dPnt corners[2] = {};
    ASSERT_EQ(ProSolidOutlineCompute(test::Solid(bolt), nullptr, nullptr, 0, corners), PRO_TK_NO_ERROR);
    EXPECT_EQ(corners[1][0], 9);
    ProSolidOutlExclTypes systems[] = {PRO_OUTL_EXC_DATUM_CSYS};
    ASSERT_EQ(ProSolidOutlineCompute(test::Solid(bolt), nullptr, systems, 1, corners), PRO_TK_NO_ERROR);
    EXPECT_EQ(corners[1][0], 1);
}

TEST_F(Representations, ViewsOfModelsInNoWindowCannotBeStored) {
    SimModel& bolt = Part(L"BOLT");
    ProView view = nullptr;
    test::Buffer<PRO_LINE_SIZE> name(L"KV_TOP");
    EXPECT_EQ(ProViewStore(&bolt, name.text, &view), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("which the current window does not show"));
}

}  // namespace
