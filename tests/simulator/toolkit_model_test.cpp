// The host's model functions, called as a plug-in calls them: statuses, ownership, and what counts as misuse.

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <string>
#include <vector>

#include <ProArray.h>
#include <ProAsmcomp.h>
#include <ProAsmcomppath.h>
#include <ProDrawing.h>
#include <ProFeature.h>
#include <ProMdl.h>
#include <ProSolid.h>
#include <ProSurface.h>
#include <ProUtil.h>
#include <gtest/gtest.h>

#include "simulator/report/utf8.h"
#include "support/host_test.h"

namespace {

namespace fs = std::filesystem;
using namespace sim;
using test::Buffer;
using test::Name;
using test::Path;
using test::Solid;

// ---- Models

using HostModels = test::HostTest;

TEST_F(HostModels, NamesFillNoMoreThanTheirBuffers) {
    folder.Write(
        "abcdefghijabcdefghijabcdefghij12.prt.1",
        R"({"format": "hostsim model", "version": 1, "name": "ABCDEFGHIJABCDEFGHIJABCDEFGHIJ12", "kind": "part"})");
    SimModel& fits = Part(L"零件567890123456789012345678901");
    wchar_t name[PRO_MDLNAME_SIZE] = {};
    std::fill_n(name, PRO_NAME_SIZE + 1, L'#');
    ASSERT_EQ(ProMdlNameGet(&fits, name), PRO_TK_NO_ERROR);
    EXPECT_EQ(Utf8(name), Utf8(fits.Name()));
    EXPECT_EQ(name[PRO_NAME_SIZE], L'#');

    ProMdl longer = nullptr;
    Buffer<PRO_FAMILY_MDLNAME_SIZE> longName(L"ABCDEFGHIJABCDEFGHIJABCDEFGHIJ12");
    ASSERT_EQ(ProMdlnameRetrieve(longName.text, PRO_MDLFILE_PART, &longer), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProMdlNameGet(longer, name), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(name[PRO_NAME_SIZE], L'#');
    ASSERT_EQ(ProMdlMdlnameGet(longer, name), PRO_TK_NO_ERROR);
    EXPECT_EQ(Utf8(name), "ABCDEFGHIJABCDEFGHIJABCDEFGHIJ12");
    EXPECT_EQ(ProMdlMdlnameGet(longer, nullptr), PRO_TK_BAD_INPUTS);
}

TEST_F(HostModels, RefuseHandlesOfNoModel) {
    SimModel& part = Part(L"BOLT");
    SimModel& drawing = New(L"BOLT", ModelKind::kDrawing);
    ProMdlType type = PRO_MDL_PART;
    EXPECT_EQ(ProMdlTypeGet(nullptr, &type), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("NULL, which is no model"));
    EXPECT_EQ(type, PRO_MDL_UNUSED);
    EXPECT_EQ(ProMdlTypeGet(&type, &type), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no model in memory"));
    EXPECT_EQ(ProSolidRegenerate(Solid(drawing), PRO_REGEN_NO_FLAGS), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("neither a part nor an assembly"));
    int sheets = 0;
    EXPECT_EQ(ProDrawingSheetsCount(reinterpret_cast<ProDrawing>(&part), &sheets), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("of another type"));
    ProMdlsubtype subtype = PROMDLSTYPE_PART_SOLID;
    EXPECT_EQ(ProMdlSubtypeGet(&drawing, &subtype), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(subtype, PROMDLSTYPE_NONE);
    SimModel& sheet = New(L"SHEET", ModelKind::kPart, ModelSubtype::kSheetmetal);
    EXPECT_EQ(ProMdlSubtypeGet(&sheet, &subtype), PRO_TK_NO_ERROR);
    EXPECT_EQ(subtype, PROMDLSTYPE_PART_SHEETMETAL);
}

TEST_F(HostModels, ErasedModelsGoWhenTheCommandHasReturned) {
    session.strict.eraseWaits = true;
    SimModel& bolt = Part(L"BOLT");
    SimModel& pump = Assembly(L"PUMP").Place(bolt);
    session.desk.Open(pump);
    session.desk.selected = {{&pump, 0, 0, {}}, {&bolt, 0, 0, {}}};
    EXPECT_EQ(ProMdlErase(&bolt), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProMdlErase(&pump), PRO_TK_NO_ERROR);
    ProMdl current = nullptr;
    EXPECT_EQ(ProMdlCurrentGet(&current), PRO_TK_NO_ERROR);
    wchar_t name[PRO_NAME_SIZE];
    EXPECT_EQ(ProMdlNameGet(current, name), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("after it was erased"));
    session.desk.EndCommand();
    EXPECT_TRUE(session.models.All().empty());
    EXPECT_TRUE(session.desk.selected.empty());
    EXPECT_EQ(ProMdlCurrentGet(&current), PRO_TK_BAD_CONTEXT);
    EXPECT_EQ(ProMdlNameGet(&bolt, name), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no model in memory"));
}

TEST_F(HostModels, ComeFromFiles) {
    SimModel& drawing = New(L"泵", ModelKind::kDrawing).AddSheet(L"A3").AddSheet(L"A4");
    ASSERT_EQ(ProMdlSave(&drawing), PRO_TK_NO_ERROR);
    ASSERT_TRUE(session.models.Erase(drawing));
    folder.Write("bad.prt.1", "{");

    ProMdl model = nullptr;
    const auto retrieve = [&model](std::wstring_view name, ProMdlfileType type) {
        return ProMdlnameRetrieve(Buffer<PRO_FAMILY_MDLNAME_SIZE>(name).text, type, &model);
    };
    EXPECT_EQ(retrieve(L"泵", PRO_MDLFILE_PART), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(retrieve(L"bad", PRO_MDLFILE_PART), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(retrieve(L"", PRO_MDLFILE_PART), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(retrieve(L"泵", PRO_MDLFILE_UNUSED), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(retrieve(std::wstring(PRO_FAMILY_MDLNAME_SIZE, L'X'), PRO_MDLFILE_PART), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("does not end within 362"));
    ASSERT_EQ(retrieve(L"泵", PRO_MDLFILE_DRAWING), PRO_TK_NO_ERROR);

    int sheets = 0;
    const auto sheeted = static_cast<ProDrawing>(model);
    ASSERT_EQ(ProDrawingSheetsCount(sheeted, &sheets), PRO_TK_NO_ERROR);
    EXPECT_EQ(sheets, 2);
    Name size;
    ProMatrix matrix;
    EXPECT_EQ(ProDrawingSheetTrfGet(sheeted, 2, size.text, matrix), PRO_TK_NO_ERROR);
    EXPECT_EQ(Utf8(size.text), "A4");
    for (const int sheet : {0, 3})
        EXPECT_EQ(ProDrawingSheetTrfGet(sheeted, sheet, size.text, matrix), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProDrawingSheetTrfGet(sheeted, 1, size.text, nullptr), PRO_TK_BAD_INPUTS);

    Path directory;
    ASSERT_EQ(ProMdlDirectoryPathGet(model, directory.text), PRO_TK_NO_ERROR);
    EXPECT_EQ(Utf8(directory.text), Utf8(folder.Path().wstring() + L"\\"));
    Buffer<PRO_MDLEXTENSION_SIZE> extension;
    EXPECT_EQ(ProMdlExtensionGet(model, extension.text), PRO_TK_NO_ERROR);
    EXPECT_EQ(Utf8(extension.text), "drw");
    session.strict.newModelHasExtension = false;
    EXPECT_EQ(ProMdlExtensionGet(&Part(L"NEW"), extension.text), PRO_TK_E_NOT_FOUND);

    ProMdl loaded = nullptr;
    EXPECT_EQ(ProMdlFiletypeLoad(Path(L"泵.drw").text, PRO_MDLFILE_UNUSED, PRO_B_FALSE, &loaded),
              PRO_TK_NO_ERROR);
    EXPECT_EQ(loaded, model);
    EXPECT_EQ(ProMdlFiletypeLoad(Path(L"泵").text, PRO_MDLFILE_UNUSED, PRO_B_FALSE, &loaded),
              PRO_TK_BAD_INPUTS);
}

// ---- Visits

using HostVisits = test::HostTest;

struct Visited {
    std::vector<int> ids;
    std::vector<ProError> statuses;
    int stopAt = 0;
};

ProError Record(ProFeature* feature, ProError status, ProAppData data) {
    auto& visited = *static_cast<Visited*>(data);
    visited.ids.push_back(feature->id);
    visited.statuses.push_back(status);
    return feature->id == visited.stopAt ? PRO_TK_ABORT : PRO_TK_NO_ERROR;
}

// Leaves out feature 2 and hands its own word on for feature 3.
ProError Choose(ProFeature* feature, ProAppData) {
    if (feature->id == 2) return PRO_TK_CONTINUE;
    return feature->id == 3 ? PRO_TK_E_BUSY : PRO_TK_NO_ERROR;
}

ProError SkipAll(ProFeature*, ProAppData) {
    return PRO_TK_CONTINUE;
}

// Counts all components below, by visiting again from inside the visit.
ProError CountBelow(ProFeature* feature, ProError, ProAppData data) {
    ++*static_cast<int*>(data);
    ProMdl model = nullptr;
    if (ProAsmcompMdlGet(feature, &model) != PRO_TK_NO_ERROR) return PRO_TK_NO_ERROR;
    const ProError status = ProSolidFeatVisit(static_cast<ProSolid>(model), CountBelow, nullptr, data);
    return status == PRO_TK_E_NOT_FOUND ? PRO_TK_NO_ERROR : status;
}

TEST_F(HostVisits, FilterAndActionDecide) {
    SimModel& bolt = Part(L"BOLT");
    SimModel& pump = Assembly(L"PUMP").Place(bolt, 2).AddFeature(923).PlaceMissing(L"GONE");
    Visited visited;
    EXPECT_EQ(ProSolidFeatVisit(Solid(pump), Record, Choose, &visited), PRO_TK_NO_ERROR);
    EXPECT_EQ(visited.ids, (std::vector<int>{1, 3, 4}));
    EXPECT_EQ(visited.statuses, (std::vector<ProError>{PRO_TK_NO_ERROR, PRO_TK_E_BUSY, PRO_TK_NO_ERROR}));
    visited = {.ids = {}, .statuses = {}, .stopAt = 2};
    EXPECT_EQ(ProSolidFeatVisit(Solid(pump), Record, nullptr, &visited), PRO_TK_ABORT);
    EXPECT_EQ(visited.ids, (std::vector<int>{1, 2}));
    EXPECT_EQ(ProSolidFeatVisit(Solid(pump), Record, SkipAll, &visited), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(ProSolidFeatVisit(Solid(bolt), Record, nullptr, &visited), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(ProSolidFeatVisit(Solid(pump), nullptr, nullptr, &visited), PRO_TK_BAD_INPUTS);

    int count = 0;
    EXPECT_EQ(ProSolidFeatVisit(Solid(Assembly(L"TOP").Place(pump, 3)), CountBelow, nullptr, &count),
              PRO_TK_NO_ERROR);
    EXPECT_EQ(count, 3 * (1 + 4));
}

TEST_F(HostVisits, FeaturesTellWhatTheyAre) {
    SimModel& bolt = Part(L"BOLT");
    SimModel& pump = Assembly(L"PUMP");
    pump.Place(bolt, {.status = 1, .statusFlags = 130, .isVisible = false})
        .AddFeature(923)
        .PlaceMissing(L"GONE");
    const auto feature = [&pump](int id) { return ProFeature{PRO_FEATURE, id, &pump}; };
    ProFeature component = feature(1), datum = feature(2), missing = feature(3), stale = feature(4), empty{};
    ProFeattype type = 0;
    ProFeatStatus status{};
    unsigned flags = 0;
    ProBoolean visible = PRO_B_TRUE;
    ProMdl model = nullptr;
    EXPECT_EQ(ProFeatureTypeGet(&component, &type), PRO_TK_NO_ERROR);
    EXPECT_EQ(type, PRO_FEAT_COMPONENT);
    EXPECT_EQ(ProFeatureStatusGet(&component, &status), PRO_TK_NO_ERROR);
    EXPECT_EQ(status, PRO_FEAT_INACTIVE);
    EXPECT_EQ(ProFeatureStatusflagsGet(&component, &flags), PRO_TK_NO_ERROR);
    EXPECT_EQ(flags, 130u);
    EXPECT_EQ(ProFeatureVisibilityGet(&component, &visible), PRO_TK_NO_ERROR);
    EXPECT_EQ(visible, PRO_B_FALSE);
    EXPECT_EQ(ProAsmcompMdlGet(&component, &model), PRO_TK_NO_ERROR);
    EXPECT_EQ(model, &bolt);
    EXPECT_EQ(ProAsmcompMdlGet(&datum, &model), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProAsmcompMdlGet(&missing, &model), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(ProFeatureStatusGet(&missing, &status), PRO_TK_NO_ERROR);
    EXPECT_EQ(status, PRO_FEAT_SUPPRESSED);
    EXPECT_EQ(ProFeatureTypeGet(&stale, &type), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("feature 4, which PUMP does not have"));
    EXPECT_EQ(ProFeatureTypeGet(&empty, &type), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no feature"));
}

struct Corners {
    std::vector<std::array<double, 3>> maxima;
    ProSurface last = nullptr;
};

ProError ReadSurface(ProSurface surface, ProError, ProAppData data) {
    auto& corners = *static_cast<Corners*>(data);
    ProGeomitemdata* record = nullptr;
    const ProError status = ProSurfaceDataGet(surface, &record);
    if (status != PRO_TK_NO_ERROR) return status;
    const double* corner = record->data.p_surface_data->xyz_max;
    corners.maxima.push_back({corner[0], corner[1], corner[2]});
    corners.last = surface;
    return ProGeomitemdataFree(&record);
}

TEST_F(HostVisits, SurfacesGiveTheirBoxes) {
    SimModel& block = Part(L"BLOCK").AddBlock(1, 2, 3);
    Corners corners;
    EXPECT_EQ(ProSolidSurfaceVisit(Solid(block), ReadSurface, nullptr, &corners), PRO_TK_NO_ERROR);
    EXPECT_EQ(corners.maxima.size(), 6u);
    EXPECT_EQ(std::ranges::max(corners.maxima), (std::array<double, 3>{1, 2, 3}));
    EXPECT_EQ(ProSolidSurfaceVisit(Solid(Part(L"EMPTY")), ReadSurface, nullptr, &corners),
              PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(ProSolidSurfaceVisit(Solid(Assembly(L"PUMP")), ReadSurface, nullptr, &corners),
              PRO_TK_E_NOT_FOUND);
    ProGeomitemdata* record = nullptr;
    ASSERT_EQ(ProSurfaceDataGet(corners.last, &record), PRO_TK_NO_ERROR);
    EXPECT_EQ(session.report.OpenCount(Account::kGeometryData), 1u);
    EXPECT_EQ(ProGeomitemdataFree(&record), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProGeomitemdataFree(&record), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("was freed"));
    block.SetBodyCount(2);
    EXPECT_EQ(ProSolidSurfaceVisit(Solid(block), ReadSurface, nullptr, &corners),
              PRO_TK_MULTIBODY_UNSUPPORTED);
    session.models.Erase(block);
    EXPECT_EQ(ProSurfaceDataGet(corners.last, &record), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no surface in memory"));
}

TEST_F(HostVisits, PathsPlaceTheirMember) {
    // The pin stands at (1, 0, 0) in the arm, the arm turned by a quarter about z and shifted in the machine.
    SimModel& pin = Part(L"PIN");
    SimModel& arm = Assembly(L"ARM").Place(pin).Place(pin, {.placement = TranslationMatrix(1, 0, 0)});
    const Matrix turned = {{{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {100, 0, 5, 1}}};
    SimModel& machine = Assembly(L"MACHINE").AddFeature(923).Place(arm, {.placement = turned});

    ProIdTable ids = {2, 2};
    ProAsmcomppath path;
    ProMatrix matrix;
    ASSERT_EQ(ProAsmcomppathInit(Solid(machine), ids, 2, &path), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProAsmcomppathTrfGet(&path, PRO_B_TRUE, matrix), PRO_TK_NO_ERROR);
    ProVector point = {2, 0, 0};
    ASSERT_EQ(ProPntTrfEval(point, matrix, point), PRO_TK_NO_ERROR);
    EXPECT_EQ((std::array<double, 3>{point[0], point[1], point[2]}), (std::array<double, 3>{100, 3, 5}));
    ASSERT_EQ(ProAsmcomppathTrfGet(&path, PRO_B_FALSE, matrix), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProPntTrfEval(point, matrix, point), PRO_TK_NO_ERROR);
    EXPECT_EQ((std::array<double, 3>{point[0], point[1], point[2]}), (std::array<double, 3>{2, 0, 0}));

    ASSERT_EQ(ProAsmcomppathInit(Solid(machine), ids, 0, &path), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProAsmcomppathTrfGet(&path, PRO_B_TRUE, matrix), PRO_TK_NO_ERROR);
    EXPECT_EQ(matrix[3][0], 0.0);
    for (const int size : {3, -1, PRO_MAX_ASSEM_LEVEL + 1})
        EXPECT_EQ(ProAsmcomppathInit(Solid(machine), ids, size, &path), PRO_TK_BAD_INPUTS);
    ids[0] = 1;
    EXPECT_EQ(ProAsmcomppathInit(Solid(machine), ids, 1, &path), PRO_TK_BAD_INPUTS);
}

}  // namespace
