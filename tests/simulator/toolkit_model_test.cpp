// The host's model functions, called as a plug-in calls them: statuses, ownership, and what counts as misuse.

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <vector>

#include <ProArray.h>
#include <ProAsmcomp.h>
#include <ProAsmcomppath.h>
#include <ProDrawing.h>
#include <ProFeature.h>
#include <ProMdl.h>
#include <ProMfg.h>
#include <ProMode.h>
#include <ProModelitem.h>
#include <ProParameter.h>
#include <ProSelbuffer.h>
#include <ProSolid.h>
#include <ProSurface.h>
#include <ProUtil.h>
#include <ProWindows.h>
#include <gtest/gtest.h>

#include "simulator/report/utf8.h"
#include "simulator/session/session.h"
#include "support/temp_directory.h"

namespace {

namespace fs = std::filesystem;
using namespace sim;
using test::TempDirectory;

// A host with an empty workspace. Every violation has to be expected with Misuse, and nothing may stay open.
class HostTest : public testing::Test {
protected:
    ~HostTest() override {
        for (const std::string& violation : session.report.Violations()) ADD_FAILURE() << violation;
        for (const std::string& item : session.report.OpenItems()) ADD_FAILURE() << "left open: " << item;
        for (const std::string& problem : session.user.problems) ADD_FAILURE() << problem;
    }

    // True when the calls since the last check were exactly one violation, with this in its text.
    testing::AssertionResult Misuse(const std::string& text) {
        const std::vector<std::string> violations = session.report.Violations();
        session.report.ClearViolations();
        if (violations.size() == 1 && violations[0].find(text) != std::string::npos)
            return testing::AssertionSuccess();
        testing::AssertionResult result = testing::AssertionFailure();
        result << violations.size() << " violations";
        for (const std::string& violation : violations) result << "; " << violation;
        return result;
    }

    SimModel& New(const wchar_t* name, ModelKind kind, ModelSubtype subtype = ModelSubtype::kNone) {
        return *session.models.Create(name, kind, subtype);
    }
    SimModel& Part(const wchar_t* name) { return New(name, ModelKind::kPart); }
    SimModel& Assembly(const wchar_t* name) { return New(name, ModelKind::kAssembly); }

    TempDirectory folder;
    Session session{folder.Path(), folder.Path()};
};

ProSolid Solid(SimModel& model) {
    return reinterpret_cast<ProSolid>(&model);
}

// A plug-in's text input in its full buffer.
template <std::size_t size>
struct Buffer {
    explicit Buffer(std::wstring_view content = {}) {
        std::ranges::fill(text, L'#');
        if (content.size() < size) text[content.size()] = L'\0';
        std::ranges::copy(content.substr(0, size), text);
    }
    wchar_t text[size];
};
using Name = Buffer<PRO_NAME_SIZE>;
using Path = Buffer<PRO_PATH_SIZE>;

// ---- Arrays and strings

using HostArrays = HostTest;

std::vector<int> Items(ProArray array) {
    int size = -1;
    EXPECT_EQ(ProArraySizeGet(array, &size), PRO_TK_NO_ERROR);
    return {static_cast<int*>(array), static_cast<int*>(array) + size};
}

TEST_F(HostArrays, GrowByMoving) {
    ProArray array = nullptr;
    ASSERT_EQ(ProArrayAlloc(0, sizeof(int), 1, &array), PRO_TK_NO_ERROR);
    int one = 1, two = 2, more[] = {7, 8};
    ASSERT_EQ(ProArrayObjectAdd(&array, -1, 1, &two), PRO_TK_NO_ERROR);
    const int* before = static_cast<int*>(array);
    const ProArray stale = array;
    ASSERT_EQ(ProArrayObjectAdd(&array, 0, 1, &one), PRO_TK_NO_ERROR);
    EXPECT_NE(array, stale);
    EXPECT_NE(*before, 2);  // the old place no longer holds the old element
    ASSERT_EQ(ProArrayObjectAdd(&array, 1, 2, more), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProArrayObjectAdd(&array, -1, 1, static_cast<int*>(array) + 1), PRO_TK_NO_ERROR);
    EXPECT_EQ(Items(array), (std::vector<int>{1, 7, 8, 2, 7}));
    ASSERT_EQ(ProArraySizeSet(&array, 2), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProArraySizeSet(&array, 3), PRO_TK_NO_ERROR);
    EXPECT_EQ(Items(array), (std::vector<int>{1, 7, 0}));

    int size = 0;
    EXPECT_EQ(ProArraySizeGet(stale, &size), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("has moved since"));
    EXPECT_EQ(ProArrayObjectAdd(&array, 4, 1, &one), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProArrayObjectAdd(&array, -1, 0, &one), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProArraySizeSet(&array, -1), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProArrayAlloc(-1, 4, 1, &array), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProArrayAlloc(1, 0, 1, &array), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProArrayAlloc(1 << 30, 1 << 10, 1, &array), PRO_TK_OUT_OF_MEMORY);
}

TEST_F(HostArrays, HoldManyElementsAddedOneByOne) {
    ProArray array = nullptr;
    ASSERT_EQ(ProArrayAlloc(0, sizeof(int), 1, &array), PRO_TK_NO_ERROR);
    for (int i = 0; i < 200000; ++i) ASSERT_EQ(ProArrayObjectAdd(&array, -1, 1, &i), PRO_TK_NO_ERROR);
    const std::vector<int> items = Items(array);
    ASSERT_EQ(items.size(), 200000u);
    for (int i = 0; i < 200000; ++i) ASSERT_EQ(items[static_cast<std::size_t>(i)], i);
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
}

TEST_F(HostArrays, RefuseMisuse) {
    ProArray array = nullptr, none = nullptr;
    ASSERT_EQ(ProArrayAlloc(2, sizeof(int), 1, &array), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProArrayFree(nullptr), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProArrayFree(&none), PRO_TK_BAD_INPUTS);
    static_cast<int*>(array)[0] = 5;
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
    EXPECT_NE(static_cast<int*>(array)[0], 5);
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("was freed"));

    int foreign[4] = {};
    ProArray wrong = foreign;
    EXPECT_EQ(ProArrayFree(&wrong), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no array of the host's"));

    ASSERT_EQ(ProArrayAlloc(2, sizeof(int), 1, &array), PRO_TK_NO_ERROR);
    static_cast<int*>(array)[2] = 1;
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
    EXPECT_TRUE(Misuse("written outside its elements"));

    ASSERT_EQ(ProArrayAlloc(1, sizeof(int), 1, &array), PRO_TK_NO_ERROR);
    EXPECT_EQ(session.report.OpenItems().size(), 1u);
    EXPECT_EQ(ProSelectionarrayFree(static_cast<ProSelection*>(array)), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("array for selection array"));
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
}

TEST_F(HostArrays, StringsGoBackTheWayTheyCame) {
    wchar_t* wide = NewHostString(session.memory, L"螺栓");
    char* text = NewHostText(session.memory, "bolt");
    char** list = NewHostTextArray(session.memory, {"a", "", "bolt"});
    EXPECT_STREQ(list[2], "bolt");
    EXPECT_STREQ(list[1], "");
    EXPECT_EQ(session.report.OpenItems().size(), 3u);
    EXPECT_EQ(ProWstringFree(reinterpret_cast<wchar_t*>(text)), PRO_TK_GENERAL_ERROR);
    EXPECT_TRUE(Misuse("8-bit string for wide string"));
    EXPECT_EQ(ProStringFree(list[0]), PRO_TK_GENERAL_ERROR);
    EXPECT_TRUE(Misuse("no 8-bit string of the host's"));
    EXPECT_EQ(ProStringarrayFree(list, 2), PRO_TK_NO_ERROR);
    EXPECT_TRUE(Misuse("frees 2 of 3 strings"));
    EXPECT_EQ(ProStringarrayFree(list, 3), PRO_TK_GENERAL_ERROR);
    EXPECT_TRUE(Misuse("was freed"));
    EXPECT_EQ(ProWstringFree(wide), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProStringFree(text), PRO_TK_NO_ERROR);
    EXPECT_EQ(NewHostStringArray(session.memory, {}), nullptr);
}

// ---- Models

using HostModels = HostTest;

TEST_F(HostModels, NamesFillNoMoreThanTheirBuffers) {
    folder.Write("abcdefghijabcdefghijabcdefghij12.prt.1",
                 R"({"format": "hostsim model", "version": 1, "name": "", "kind": "part"})");
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
    EXPECT_EQ(Utf8(name), Utf8(fits.Name()));
    ASSERT_EQ(ProMdlMdlnameGet(longer, name), PRO_TK_NO_ERROR);
    EXPECT_EQ(Utf8(name), "ABCDEFGHIJABCDEFGHIJABCDEFGHIJ12");
    EXPECT_EQ(ProMdlMdlnameGet(longer, nullptr), PRO_TK_BAD_INPUTS);
}

TEST_F(HostModels, RefuseHandlesOfNoModel) {
    SimModel& part = Part(L"BOLT");
    SimModel& drawing = New(L"BOLT", ModelKind::kDrawing);
    ProMdlType type = PRO_MDL_PART;
    EXPECT_EQ(ProMdlTypeGet(nullptr, &type), PRO_TK_BAD_INPUTS);
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
    session.desk.ApplyPending();
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
        model = nullptr;
        return ProMdlnameRetrieve(Buffer<PRO_FAMILY_MDLNAME_SIZE>(name).text, type, &model);
    };
    EXPECT_EQ(retrieve(L"泵", PRO_MDLFILE_PART), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(retrieve(L"bad", PRO_MDLFILE_PART), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(retrieve(L"", PRO_MDLFILE_PART), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(retrieve(L"泵", PRO_MDLFILE_UNUSED), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(model, nullptr);
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

using HostVisits = HostTest;

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

// ---- Parameters

class HostParameters : public HostTest {
protected:
    ProError Create(SimModel& model, std::wstring_view name, const ProParamvalue& value) {
        ProModelitem item;
        EXPECT_EQ(ProMdlToModelitem(&model, &item), PRO_TK_NO_ERROR);
        ProParamvalue copy = value;
        return ProParameterWithUnitsCreate(&item, Name(name).text, &copy, nullptr, &parameter);
    }
    ProError Set(SimModel& model, std::wstring_view name, const ProParamvalue& value) {
        const ProError status = Find(model, name);
        ProParamvalue copy = value;
        return status == PRO_TK_NO_ERROR ? ProParameterValueWithUnitsSet(&parameter, &copy, nullptr) : status;
    }
    ProError Find(SimModel& model, std::wstring_view name) {
        ProModelitem item;
        EXPECT_EQ(ProMdlToModelitem(&model, &item), PRO_TK_NO_ERROR);
        return ProParameterInit(&item, Name(name).text, &parameter);
    }
    static ProParamvalue Integer(int number) {
        ProParamvalue value;
        EXPECT_EQ(ProParamvalueSet(&value, &number, PRO_PARAM_INTEGER), PRO_TK_NO_ERROR);
        return value;
    }
    static ProError Text(std::wstring text, ProParamvalue& value) {
        return ProParamvalueSet(&value, text.data(), PRO_PARAM_STRING);
    }

    ProParameter parameter{};
};

TEST_F(HostParameters, AreCreatedSetAndDeleted) {
    SimModel& bolt = Part(L"BOLT");
    EXPECT_EQ(Find(bolt, L"数量"), PRO_TK_E_NOT_FOUND);
    ASSERT_EQ(Create(bolt, L"数量", Integer(4)), PRO_TK_NO_ERROR);
    EXPECT_EQ(Create(bolt, L"Material", Integer(1)), PRO_TK_NO_ERROR);
    EXPECT_EQ(Create(bolt, L"MATERIAL", Integer(2)), PRO_TK_E_FOUND);
    EXPECT_EQ(Set(bolt, L"material", Integer(3)), PRO_TK_NO_ERROR);
    EXPECT_EQ(Utf8(bolt.Parameter(L"MATERIAL")), "3");
    ASSERT_EQ(Find(bolt, L"数量"), PRO_TK_NO_ERROR);
    ProParamvalue value;
    ProUnititem unit;
    ASSERT_EQ(ProParameterValueWithUnitsGet(&parameter, &value, &unit), PRO_TK_NO_ERROR);
    EXPECT_EQ(value.type, PRO_PARAM_INTEGER);
    EXPECT_EQ(value.value.i_val, 4);
    EXPECT_EQ(unit.name[0], L'\0');
    EXPECT_EQ(ProParameterDelete(&parameter), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProParameterDelete(&parameter), PRO_TK_GENERAL_ERROR);
    EXPECT_TRUE(bolt.HasParameter(L"Material"));
    for (const wchar_t* name : {L"A B", L"A+B", L"A.B"})
        EXPECT_EQ(Create(bolt, name, Integer(1)), PRO_TK_INVALID_NAME);
    EXPECT_EQ(Create(bolt, L"", Integer(1)), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(Create(bolt, std::wstring(31, L'X'), Integer(1)), PRO_TK_NO_ERROR);
    EXPECT_EQ(Create(bolt, std::wstring(32, L'X'), Integer(1)), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("does not end within 32"));
    ProParameter empty{};
    EXPECT_EQ(ProParameterDelete(&empty), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no host function has filled"));
}

TEST_F(HostParameters, HoldTextsOfAtMostEightyCharacters) {
    SimModel& bolt = Part(L"BOLT");
    ProParamvalue value;
    ASSERT_EQ(Text(std::wstring(80, L'钢'), value), PRO_TK_NO_ERROR);
    ASSERT_EQ(Create(bolt, L"TEXT", value), PRO_TK_NO_ERROR);
    EXPECT_EQ(bolt.Parameter(L"TEXT"), std::wstring(80, L'钢'));
    ASSERT_EQ(ProMdlSave(&bolt), PRO_TK_NO_ERROR);
    EXPECT_EQ(Text(std::wstring(81, L'钢'), value), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("does not end within 81"));
    // A value that was filled without ending its text.
    std::ranges::fill(value.value.s_val, L'x');
    EXPECT_EQ(Set(bolt, L"TEXT", value), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("does not end within 81"));
    EXPECT_EQ(bolt.Parameter(L"TEXT"), std::wstring(80, L'钢'));
}

TEST_F(HostParameters, RefuseWhatTheirModelDoesNotAllow) {
    SimModel& bolt = Part(L"BOLT");
    bolt.SetParameter(L"FREE", 1)
        .SetParameter(L"DRIVEN", 1)
        .DriveByRelation(L"DRIVEN")
        .SetParameter(L"LOCKED", 1)
        .LockParameter(L"LOCKED");
    ProParamvalue text;
    ASSERT_EQ(Text(L"one", text), PRO_TK_NO_ERROR);
    for (const wchar_t* name : {L"DRIVEN", L"LOCKED"}) {
        EXPECT_EQ(Set(bolt, name, Integer(2)), PRO_TK_GENERAL_ERROR) << Utf8(name);
        EXPECT_EQ(Create(bolt, name, Integer(2)), PRO_TK_E_FOUND) << Utf8(name);
        ASSERT_EQ(Find(bolt, name), PRO_TK_NO_ERROR);
        EXPECT_EQ(ProParameterDelete(&parameter), PRO_TK_GENERAL_ERROR) << Utf8(name);
        EXPECT_EQ(Utf8(bolt.Parameter(name)), "1");
    }
    EXPECT_EQ(Set(bolt, L"FREE", text), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(Utf8(bolt.Parameter(L"FREE")), "1");
    session.strict.typeChangeRefused = false;
    EXPECT_EQ(Set(bolt, L"FREE", text), PRO_TK_NO_ERROR);
    EXPECT_EQ(Utf8(bolt.Parameter(L"FREE")), "one");

    bolt.SetReadOnly();
    EXPECT_EQ(Create(bolt, L"NEW", Integer(2)), PRO_TK_CANT_MODIFY);
    EXPECT_EQ(Set(bolt, L"FREE", text), PRO_TK_CANT_MODIFY);
    ASSERT_EQ(Find(bolt, L"FREE"), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProParameterDelete(&parameter), PRO_TK_CANT_MODIFY);
    EXPECT_EQ(ProSolidRegenerate(Solid(bolt), PRO_REGEN_NO_FLAGS), PRO_TK_CANT_MODIFY);
    EXPECT_EQ(bolt.Regenerations(), 0);
    ProParamvalue truth;
    const short two = 2;
    ASSERT_EQ(ProParamvalueSet(&truth, &two, PRO_PARAM_BOOLEAN), PRO_TK_NO_ERROR);
    EXPECT_EQ(Create(Part(L"NUT"), L"TRUTH", truth), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("neither 0 nor 1"));
    ProModelitem unfilled{PRO_ASSEMBLY, -1, &bolt};
    EXPECT_EQ(ProParameterInit(&unfilled, Name(L"FREE").text, &parameter), PRO_TK_BAD_CONTEXT);
}

// ---- Selection, windows, directories

using HostDesk = HostTest;

TEST_F(HostDesk, SelectionsBelongToTheirArray) {
    SimModel& bolt = Part(L"BOLT");
    SimModel& pump = Assembly(L"PUMP").Place(bolt);
    ProSelection* array = nullptr;
    EXPECT_EQ(ProSelbufferSelectionsGet(&array), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(array, nullptr);
    session.desk.selected = {{&bolt, 0, 0, {1}}, {&pump, PRO_FEATURE, 1, {}}};
    ASSERT_EQ(ProSelbufferSelectionsGet(&array), PRO_TK_NO_ERROR);
    int size = 0;
    EXPECT_EQ(ProArraySizeGet(array, &size), PRO_TK_NO_ERROR);
    ASSERT_EQ(size, 2);
    ProModelitem item;
    ASSERT_EQ(ProSelectionModelitemGet(array[0], &item), PRO_TK_NO_ERROR);
    EXPECT_EQ(item.type, PRO_PART);
    ProMdl owner = nullptr;
    EXPECT_EQ(ProModelitemMdlGet(&item, &owner), PRO_TK_NO_ERROR);
    EXPECT_EQ(owner, &bolt);
    ASSERT_EQ(ProSelectionModelitemGet(array[1], &item), PRO_TK_NO_ERROR);
    EXPECT_EQ(item.type, PRO_FEATURE);
    EXPECT_EQ(item.id, 1);
    EXPECT_EQ(item.owner, &pump);

    ProArray wrongFree = array;
    EXPECT_EQ(ProArrayFree(&wrongFree), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("selection array for array"));
    const ProSelection first = array[0];
    EXPECT_EQ(ProSelectionarrayFree(array), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProSelectionModelitemGet(first, &item), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no longer"));
    session.desk.canAccessSelection = false;
    EXPECT_EQ(ProSelbufferSelectionsGet(&array), PRO_TK_CANT_ACCESS);
}

TEST_F(HostDesk, PicksLastUntilTheNextSelection) {
    SimModel& bolt = Part(L"BOLT");
    SimModel& nut = Part(L"NUT");
    char option[] = "prt_or_asm,feature";
    ProSelection* picked = nullptr;
    int count = -1;
    const auto select = [&](int limit) {
        return ProSelect(option, limit, nullptr, nullptr, nullptr, nullptr, &picked, &count);
    };
    session.user.picks = {{false, {{&bolt, 0, 0, {}}}}, {false, {{&nut, 0, 0, {}}}}, {false, {}}, {true, {}}};
    ASSERT_EQ(select(1), PRO_TK_NO_ERROR);
    ASSERT_EQ(count, 1);
    const ProSelection first = picked[0];
    ProSelection* const firstArray = picked;
    ASSERT_EQ(select(1), PRO_TK_NO_ERROR);
    EXPECT_EQ(firstArray, picked);  // the same memory, overwritten
    ProModelitem item;
    EXPECT_EQ(ProSelectionModelitemGet(picked[0], &item), PRO_TK_NO_ERROR);
    EXPECT_EQ(item.owner, &nut);
    EXPECT_EQ(ProSelectionModelitemGet(first, &item), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no longer"));
    ProArray notMine = picked;
    EXPECT_EQ(ProArrayFree(&notMine), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no array of the host's"));
    EXPECT_EQ(select(-1), PRO_TK_NO_ERROR);  // Done without a pick
    EXPECT_EQ(count, 0);
    EXPECT_EQ(picked, nullptr);
    EXPECT_EQ(select(-1), PRO_TK_USER_ABORT);
    char unknown[] = "part,teapot";
    EXPECT_EQ(ProSelect(unknown, 1, nullptr, nullptr, nullptr, nullptr, &picked, &count), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("teapot"));
    // What a person cannot do: nobody answers, or with too many items of which one is not allowed.
    EXPECT_EQ(select(1), PRO_TK_USER_ABORT);
    session.user.picks = {{false, {{&bolt, PRO_SURFACE, 1, {}}, {&bolt, 0, 0, {}}, {&nut, 0, 0, {}}}}};
    EXPECT_EQ(select(1), PRO_TK_NO_ERROR);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(session.user.problems.size(), 3u);
    session.user.problems.clear();
}

TEST_F(HostDesk, WindowsActivateWhenTheCommandHasReturned) {
    SimModel& pump = Assembly(L"PUMP");
    SimModel& drawing = New(L"PUMP", ModelKind::kDrawing);
    session.desk.Open(pump);
    ProMode mode{};
    EXPECT_EQ(ProModeCurrentGet(&mode), PRO_TK_NO_ERROR);
    EXPECT_EQ(mode, PRO_MODE_ASSEMBLY);
    EXPECT_EQ(ProTreetoolRefresh(&drawing), PRO_TK_E_NOT_FOUND);
    int base = -1, window = -1, again = -1, now = -1;
    ASSERT_EQ(ProWindowCurrentGet(&base), PRO_TK_NO_ERROR);
    Buffer<PRO_MDLNAME_SIZE> name(L"pump");
    ASSERT_EQ(ProObjectwindowMdlnameCreate(name.text, PRO_DRAWING, &window), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProObjectwindowMdlnameCreate(name.text, PRO_DRAWING, &again), PRO_TK_NO_ERROR);
    EXPECT_EQ(window, again);
    EXPECT_NE(window, base);
    ASSERT_EQ(ProMdlDisplay(&drawing), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProWindowActivate(window), PRO_TK_NO_ERROR);
    ProMdl current = nullptr;
    EXPECT_EQ(ProMdlCurrentGet(&current), PRO_TK_NO_ERROR);
    EXPECT_EQ(current, &pump);
    session.desk.ApplyPending();
    EXPECT_EQ(ProMdlCurrentGet(&current), PRO_TK_NO_ERROR);
    EXPECT_EQ(current, &drawing);
    EXPECT_EQ(ProWindowCurrentGet(&now), PRO_TK_NO_ERROR);
    EXPECT_EQ(now, window);
    EXPECT_EQ(ProModeCurrentGet(&mode), PRO_TK_NO_ERROR);
    EXPECT_EQ(mode, PRO_MODE_DRAWING);
    EXPECT_EQ(ProTreetoolRefresh(&pump), PRO_TK_NO_ERROR);
    EXPECT_EQ(pump.TreeRefreshes(), 1);

    EXPECT_EQ(ProObjectwindowMdlnameCreate(name.text, PRO_PART, &window), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProObjectwindowMdlnameCreate(name.text, PRO_FEATURE, &window), PRO_TK_INVALID_TYPE);
    EXPECT_EQ(ProWindowActivate(9), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProWindowRepaint(PRO_VALUE_UNUSED), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProWindowRepaint(9), PRO_TK_BAD_INPUTS);
}

TEST_F(HostDesk, ManufacturingModelsGiveTheirAssembly) {
    SimModel& pump = Assembly(L"PUMP");
    SimModel& mould = New(L"MOULD", ModelKind::kManufacturing, ModelSubtype::kMould);
    ProAssembly assembly = nullptr;
    const auto handle = reinterpret_cast<ProMfg>(&mould);
    EXPECT_EQ(ProMfgAssemGet(handle, &assembly), PRO_TK_E_NOT_FOUND);
    mould.SetMfgAssembly(pump);
    EXPECT_EQ(ProMfgAssemGet(handle, &assembly), PRO_TK_NO_ERROR);
    EXPECT_EQ(static_cast<void*>(assembly), &pump);
    session.desk.Open(mould);
    EXPECT_EQ(ProTreetoolRefresh(&pump), PRO_TK_NO_ERROR);
}

TEST_F(HostDesk, FoldersAndFilesAreChosen) {
    fs::create_directory(folder / L"备份");
    folder.Write("a.frm.2", "");
    Path path;
    ASSERT_EQ(ProDirectoryCurrentGet(path.text), PRO_TK_NO_ERROR);
    EXPECT_EQ(Utf8(path.text), Utf8(folder.Path().wstring() + L"\\"));
    session.user.folders = {L"备份", std::nullopt, L"gone"};
    Name label(L"请选择");
    ASSERT_EQ(ProDirectoryChoose(label.text, nullptr, nullptr, nullptr, path.text), PRO_TK_NO_ERROR);
    EXPECT_EQ(Utf8(path.text), Utf8((folder / L"备份").wstring()));
    EXPECT_EQ(Utf8(session.user.questions.back()), "请选择");
    EXPECT_EQ(ProDirectoryChange(path.text), PRO_TK_NO_ERROR);
    EXPECT_EQ(session.models.WorkingDirectory(), folder / L"备份");
    EXPECT_EQ(ProDirectoryChange(Path(L"nowhere").text), PRO_TK_INVALID_DIR);
    EXPECT_EQ(ProDirectoryChange(nullptr), PRO_TK_INVALID_NAME);
    EXPECT_EQ(ProDirectoryChoose(nullptr, nullptr, nullptr, nullptr, path.text), PRO_TK_USER_ABORT);
    EXPECT_EQ(ProDirectoryChoose(nullptr, nullptr, nullptr, nullptr, path.text), PRO_TK_USER_ABORT);
    EXPECT_EQ(ProDirectoryChoose(Name(std::wstring(32, L'x')).text, nullptr, nullptr, nullptr, path.text),
              PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("does not end within 32"));

    session.user.files = {L"a.frm.2", L"a.frm.2"};
    Buffer<PRO_LINE_SIZE> formats(L"*.drw,*.frm"), drawings(L"*.drw");
    Path start(folder.Path().wstring());
    const auto choose = [&](wchar_t* masks) {
        return ProFileMdlnameOpen(nullptr, masks, nullptr, nullptr, start.text, nullptr, path.text);
    };
    ASSERT_EQ(choose(formats.text), PRO_TK_NO_ERROR);
    EXPECT_EQ(Utf8(path.text), Utf8((folder / "a.frm.2").wstring()));
    EXPECT_EQ(choose(drawings.text), PRO_TK_USER_ABORT);
    EXPECT_EQ(choose(drawings.text), PRO_TK_USER_ABORT);
    EXPECT_EQ(session.user.problems.size(),
              3u);  // a folder and a file that are not there, and no answer at all
    session.user.problems.clear();

    session.configOptions[L"PRO_FORMAT_DIR"] = {L"C:\\formats", L"D:\\图框"};
    ProPath* values = nullptr;
    EXPECT_EQ(ProConfigoptArrayGet(Name(L"unset_option").text, &values), PRO_TK_E_NOT_FOUND);
    ASSERT_EQ(ProConfigoptArrayGet(Name(L"pro_format_dir").text, &values), PRO_TK_NO_ERROR);
    int count = 0;
    EXPECT_EQ(ProArraySizeGet(values, &count), PRO_TK_NO_ERROR);
    ASSERT_EQ(count, 2);
    EXPECT_EQ(Utf8(values[1]), "D:\\图框");
    ProArray array = values;
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
}

}  // namespace
