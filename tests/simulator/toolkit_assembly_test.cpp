// What the host lets a plug-in build in assemblies, and what it refuses.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <ProArray.h>
#include <ProAsmcomp.h>
#include <ProAsmcomppath.h>
#include <ProAssembly.h>
#include <ProElement.h>
#include <ProFeature.h>
#include <ProGeomitem.h>
#include <ProMdl.h>
#include <ProSelection.h>
#include <ProSolid.h>

#include "simulator/cad/model.h"
#include "support/host_test.h"

namespace {

using namespace sim;
using test::Solid;

ProMatrix kOrigin = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};

class Assembling : public test::HostTest {
protected:
    Assembling() { session.desk.Open(pump); }

    SimModel& pump = Assembly(L"PUMP").AddCoordinateSystem(L"A", TranslationMatrix(0, 0, 5));
    SimModel& bolt = Part(L"BOLT").AddCoordinateSystem(L"B", TranslationMatrix(1, 0, 0));
};

TEST_F(Assembling, CopiesAreFilesAtOnceAndOverlookWhatLiesThere) {
    test::Buffer<PRO_MDLNAME_SIZE> name(L"bolt-1");
    ProMdl copy = nullptr;
    ASSERT_EQ(ProMdlnameCopy(&bolt, name.text, &copy), PRO_TK_NO_ERROR);
    EXPECT_EQ(static_cast<SimModel*>(copy)->CoordinateSystems().size(), 1U);
    EXPECT_EQ(session.models.NewestFile(L"bolt-1", ModelKind::kPart, folder.Path()).version, 1);
    EXPECT_EQ(ProMdlnameCopy(&bolt, name.text, &copy), PRO_TK_BAD_INPUTS) << "taken in memory";
    session.models.Erase(*session.models.Find(L"bolt-1", ModelKind::kPart));
    EXPECT_EQ(ProMdlnameCopy(&bolt, name.text, nullptr), PRO_TK_NO_ERROR);
    EXPECT_EQ(session.models.NewestFile(L"bolt-1", ModelKind::kPart, folder.Path()).version, 2);
    EXPECT_EQ(session.models.Find(L"bolt-1", ModelKind::kPart), nullptr);
    for (const wchar_t* bad : {L"", L"a b", L"a/b", L"THIS_NAME_HAS_MORE_THAN_31_CHARS"})
        EXPECT_EQ(ProMdlnameCopy(&bolt, test::Buffer<PRO_MDLNAME_SIZE>(bad).text, &copy), PRO_TK_BAD_INPUTS);
}

TEST_F(Assembling, TakesNoAssemblyIntoItself) {
    SimModel& sub = Assembly(L"SUB").Place(pump);
    ProAsmcomp component = {};
    for (SimModel* model : {&pump, &sub})
        EXPECT_EQ(ProAsmcompAssemble(Solid(pump), Solid(*model), kOrigin, &component), PRO_TK_GENERAL_ERROR);
    ProMatrix stretched = {{2, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    EXPECT_EQ(ProAsmcompAssemble(Solid(pump), Solid(bolt), stretched, &component), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("more than turn and shift"));
    EXPECT_TRUE(pump.Features().empty());
}

TEST_F(Assembling, SelectionsNeedThePathOfTheirItem) {
    ProAsmcomp component = {};
    ASSERT_EQ(ProAsmcompAssemble(nullptr, Solid(bolt), kOrigin, &component), PRO_TK_NO_ERROR);
    ProModelitem part = {PRO_PART, PRO_VALUE_UNUSED, &bolt};
    ProModelitem assembly = {PRO_ASSEMBLY, PRO_VALUE_UNUSED, &pump};
    ProAsmcomppath path = {};
    ASSERT_EQ(ProAsmcomppathInit(Solid(pump), nullptr, 0, &path), PRO_TK_NO_ERROR);
    ProSelection selection = nullptr;
    EXPECT_EQ(ProSelectionAlloc(nullptr, &assembly, &selection), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("without a path"));
    EXPECT_EQ(ProSelectionAlloc(&path, &part, &selection), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("is given a path to PUMP"));

    ASSERT_EQ(ProSelectionAlloc(&path, &assembly, &selection), PRO_TK_NO_ERROR);
    ProSelection copy = nullptr;
    ASSERT_EQ(ProSelectionCopy(selection, &copy), PRO_TK_NO_ERROR);
    EXPECT_EQ(session.report.OpenCount(Account::kSelection), 2U);
    ProSelection stale = selection;
    EXPECT_EQ(ProSelectionFree(&selection), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProSelectionFree(&stale), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("selection"));
    ProAsmcomppath found = {};
    EXPECT_EQ(ProSelectionAsmcomppathGet(copy, &found), PRO_TK_NO_ERROR);
    EXPECT_EQ(found.table_num, 0);
    EXPECT_EQ(ProSelectionFree(&copy), PRO_TK_NO_ERROR);
}

ProError TakeSystem(ProCsys system, ProError, ProAppData found) {
    *static_cast<ProCsys*>(found) = system;
    return PRO_TK_NO_ERROR;
}

// A selection of a solid's last coordinate system.
ProSelection SystemOf(SimModel& model, bool withPath) {
    ProCsys system = nullptr;
    ProGeomitem item = {};
    ProAsmcomppath path = {};
    ProSelection selection = nullptr;
    EXPECT_EQ(ProSolidCsysVisit(Solid(model), TakeSystem, nullptr, &system), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProCsysToGeomitem(Solid(model), system, &item), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProAsmcomppathInit(Solid(model), nullptr, 0, &path), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProSelectionAlloc(withPath ? &path : nullptr, &item, &selection), PRO_TK_NO_ERROR);
    return selection;
}

TEST_F(Assembling, ConstraintsAreWholeOrRefused) {
    ProAsmcomp component = {};
    ASSERT_EQ(ProAsmcompAssemble(Solid(pump), Solid(bolt), kOrigin, &component), PRO_TK_NO_ERROR);
    ProSelection target = SystemOf(pump, true);
    ProSelection own = SystemOf(bolt, false);
    ProAsmcompconstraint constraint = nullptr;
    ASSERT_EQ(ProAsmcompconstraintAlloc(&constraint), PRO_TK_NO_ERROR);
    ProArray array = nullptr;
    ASSERT_EQ(ProArrayAlloc(0, sizeof constraint, 1, &array), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProArrayObjectAdd(&array, -1, 1, &constraint), PRO_TK_NO_ERROR);
    auto* constraints = static_cast<ProAsmcompconstraint*>(array);

    EXPECT_EQ(ProAsmcompConstraintsSet(nullptr, &component, constraints), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("does not tie")) << "nothing is set";
    EXPECT_EQ(ProAsmcompConstraintsSet(nullptr, &component, &constraint), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("")) << "one constraint is no array";
    EXPECT_EQ(ProAsmcompconstraintTypeSet(constraint, PRO_ASM_CSYS), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProAsmcompconstraintAsmreferenceSet(constraint, own, PRO_DATUM_SIDE_YELLOW), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProAsmcompconstraintCompreferenceSet(constraint, target, PRO_DATUM_SIDE_YELLOW),
              PRO_TK_NO_ERROR);
    EXPECT_EQ(ProAsmcompConstraintsSet(nullptr, &component, constraints), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("does not tie")) << "the references are the wrong way round";
    EXPECT_EQ(ProAsmcompconstraintAsmreferenceSet(constraint, target, PRO_DATUM_SIDE_YELLOW),
              PRO_TK_NO_ERROR);
    EXPECT_EQ(ProAsmcompconstraintCompreferenceSet(constraint, own, PRO_DATUM_SIDE_YELLOW), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProAsmcompConstraintsSet(nullptr, &component, constraints), PRO_TK_NO_ERROR);
    EXPECT_EQ(pump.Features()[0].placement, TranslationMatrix(-1, 0, 5));

    EXPECT_EQ(ProAsmcompconstraintArrayFree(constraints), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProAsmcompconstraintFree(constraint), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("constraint")) << "it went with the array";
    EXPECT_EQ(ProSelectionFree(&target), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProSelectionFree(&own), PRO_TK_NO_ERROR);
}

// ---- Element trees

ProElement Added(ProElement parent, int id) {
    ProElement element = nullptr;
    EXPECT_EQ(ProElementAlloc(id, &element), PRO_TK_NO_ERROR);
    if (parent != nullptr) {
        EXPECT_EQ(ProElemtreeElementAdd(parent, nullptr, element), PRO_TK_NO_ERROR);
    }
    return element;
}

ProElement WithValue(ProElement element, ProValueData data) {
    ProValue value = nullptr;
    EXPECT_EQ(ProValueAlloc(&value), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProValueDataSet(value, &data), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProElementValueSet(element, value), PRO_TK_NO_ERROR);
    return element;
}

ProValueData Number(int number) {
    ProValueData data = {};
    data.type = PRO_VALUE_TYPE_INT;
    data.v.i = number;
    return data;
}

// How a tree is spoilt.
enum class Fault { kNone, kType, kMissing, kTwice, kMisplaced, kKind };

ProElement MergeTree(ProSelection part, Fault fault) {
    ProElement root = Added(nullptr, 386);
    WithValue(Added(root, 387), Number(fault == Fault::kType ? 1237 : 1238));
    ProValueData name = Number(1);
    wchar_t text[] = L"NAME";
    if (fault != Fault::kKind) {
        name.type = PRO_VALUE_TYPE_WSTRING;
        name.v.w = text;
    }
    WithValue(Added(root, 1964), name);
    if (fault != Fault::kMissing) WithValue(Added(root, 3386), Number(0));
    if (fault == Fault::kTwice) WithValue(Added(root, 3386), Number(0));
    ProElement model = Added(root, 3388);
    WithValue(Added(model, 3389), Number(0));
    ProValueData selection = {};
    selection.type = PRO_VALUE_TYPE_SELECTION;
    selection.v.r = part;
    ProElement selected = WithValue(Added(model, 3390), selection);
    ProElement constraints = Added(Added(fault == Fault::kMisplaced ? root : selected, 3391), 605);
    WithValue(Added(Added(constraints, 606), 607), Number(13));
    return root;
}

TEST_F(Assembling, MergesFollowTheTreeElementByElement) {
    SimModel& nut = Part(L"NUT");
    pump.Place(bolt).Place(nut);
    ProModelitem item = {PRO_PART, PRO_VALUE_UNUSED, &bolt};
    ProIdTable ids = {pump.Features()[0].id};
    ProAsmcomppath path = {};
    ASSERT_EQ(ProAsmcomppathInit(Solid(pump), ids, 1, &path), PRO_TK_NO_ERROR);
    ProModelitem target = {PRO_PART, PRO_VALUE_UNUSED, &nut};
    ProSelection part = nullptr;
    ProSelection into = nullptr;
    ASSERT_EQ(ProSelectionAlloc(&path, &item, &part), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProSelectionAlloc(nullptr, &target, &into), PRO_TK_NO_ERROR);
    ProFeature feature = {};
    ProErrorlist errors = {};
    for (const Fault fault :
         {Fault::kType, Fault::kMissing, Fault::kTwice, Fault::kMisplaced, Fault::kKind}) {
        ProElement tree = MergeTree(part, fault);
        EXPECT_EQ(ProFeatureCreate(into, tree, nullptr, 0, &feature, &errors), PRO_TK_BAD_INPUTS);
        EXPECT_TRUE(Misuse("no merge")) << static_cast<int>(fault);
        EXPECT_EQ(ProElementFree(&tree), PRO_TK_NO_ERROR);
    }
    ProElement tree = MergeTree(part, Fault::kNone);
    EXPECT_EQ(ProFeatureCreate(into, tree, nullptr, 0, &feature, &errors), PRO_TK_NO_ERROR);
    ASSERT_EQ(nut.Features().size(), 1U);
    EXPECT_EQ(nut.Features()[0].reference, &bolt);
    EXPECT_EQ(nut.Features()[0].name, L"NAME");
    // Each refusal of the documents alone.
    for (bool Strictness::*refusal : {&Strictness::mergeNeedsPath, &Strictness::mergeNeedsPlacementBeside}) {
        session.strict.*refusal = true;
        EXPECT_EQ(ProFeatureCreate(into, tree, nullptr, 0, &feature, &errors), PRO_TK_GENERAL_ERROR);
        session.strict.*refusal = false;
    }
    ProElement child = Added(tree, 1);
    EXPECT_EQ(ProElementFree(&child), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("belongs to a tree"));
    EXPECT_EQ(ProElementFree(&tree), PRO_TK_NO_ERROR);
    ProValue forgotten = nullptr;
    EXPECT_EQ(ProValueAlloc(&forgotten), PRO_TK_NO_ERROR);
    EXPECT_EQ(session.report.OpenCount(Account::kElement), 1U)
        << "a value without an element is the caller's";
    EXPECT_EQ(ProValueFree(forgotten), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProSelectionFree(&part), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProSelectionFree(&into), PRO_TK_NO_ERROR);
}

TEST_F(Assembling, FilesKeepConstraintsAndReferences) {
    pump.Place(bolt);
    pump.Constrain(*pump.FindFeature(pump.Features()[0].id),
                   {{PRO_ASM_CSYS, pump.CoordinateSystems()[0].id, bolt.CoordinateSystems()[0].id}});
    bolt.AddMerge(Part(L"NUT").AddBlock(1, 2, 3), L"合并1", TranslationMatrix(0, 0, 9));
    ASSERT_EQ(session.models.Save(pump), PRO_TK_NO_ERROR);
    session.models.current = nullptr;
    for (const wchar_t* name : {L"PUMP", L"BOLT", L"NUT"})
        for (const ModelKind kind : {ModelKind::kAssembly, ModelKind::kPart})
            if (SimModel* model = session.models.Find(name, kind)) session.models.Erase(*model);
    SimModel* read = nullptr;
    ASSERT_EQ(session.models.Retrieve(L"PUMP", ModelKind::kAssembly, read), PRO_TK_NO_ERROR);
    const Feature& component = read->Features()[0];
    ASSERT_EQ(component.constraints.size(), 1U);
    EXPECT_EQ(component.constraints[0].componentItem, component.component->CoordinateSystems()[0].id);
    const Feature& merge = component.component->Features()[0];
    EXPECT_EQ(merge.name, L"合并1");
    EXPECT_EQ(merge.reference, session.models.Find(L"NUT", ModelKind::kPart));
    EXPECT_EQ(component.component->Surfaces().back()->box.maximum.z, 12);
}

TEST_F(Assembling, TheActivatedModelLastsAsLongAsItsWindow) {
    ProMdl active = nullptr;
    pump.Place(bolt);
    session.desk.Activate(bolt);
    EXPECT_EQ(ProMdlActiveGet(&active), PRO_TK_NO_ERROR);
    EXPECT_EQ(active, static_cast<ProMdl>(&bolt));
    session.desk.Open(Assembly(L"OTHER"));
    EXPECT_EQ(ProMdlActiveGet(&active), PRO_TK_NO_ERROR);
    EXPECT_EQ(static_cast<SimModel*>(active)->Name(), L"OTHER");
}

}  // namespace
