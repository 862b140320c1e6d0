// Misuse that a real host would survive only by luck: each is done once here, and noticed.

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <ProArray.h>
#include <ProAsmcomp.h>
#include <ProAsmcomppath.h>
#include <ProMdl.h>
#include <ProMessage.h>
#include <ProParameter.h>
#include <ProSolid.h>
#include <ProUICheckbutton.h>
#include <ProUIRadiogroup.h>
#include <ProUITable.h>
#include <ProUtil.h>

#include <windows.h>

#include <commdlg.h>

#include "simulator/cad/model.h"
#include "simulator/host/sim_host.h"
#include "simulator/windows/import_table.h"
#include "support/host_test.h"
#include "support/toolkit_ui.h"

namespace {

using namespace sim;
using test::C;
using test::Name;
using test::Path;
using test::Solid;
using test::W;

using HostOutputs = test::HostTest;

constexpr wchar_t kSpoiled = 0xCDCD;

// ---- Outputs

TEST_F(HostOutputs, TextBuffersAreWrittenToTheirEnd) {
    SimModel& bolt = Part(L"BOLT");
    test::Buffer<PRO_MDLNAME_SIZE + 1> name;
    ASSERT_EQ(ProMdlMdlnameGet(&bolt, name.text), PRO_TK_NO_ERROR);
    EXPECT_STREQ(name.text, L"BOLT");
    EXPECT_EQ(name.text[5], kSpoiled);
    EXPECT_EQ(name.text[PRO_MDLNAME_SIZE - 1], kSpoiled);
    EXPECT_EQ(name.text[PRO_MDLNAME_SIZE], L'#') << "and no further";

    test::Buffer<PRO_PATH_SIZE + 1> path;
    ASSERT_EQ(ProDirectoryCurrentGet(path.text), PRO_TK_NO_ERROR);
    EXPECT_EQ(path.text[PRO_PATH_SIZE - 1], kSpoiled);
    EXPECT_EQ(path.text[PRO_PATH_SIZE], L'#');
}

TEST_F(HostOutputs, AreSpoiledByAFailure) {
    SimModel& bolt = Part(L"BOLT");
    Name longName(L"NO_SUCH_MODEL");
    ProMdl model = &bolt;
    test::Buffer<PRO_FAMILY_MDLNAME_SIZE> missing(L"MISSING");
    EXPECT_EQ(ProMdlnameRetrieve(missing.text, PRO_MDLFILE_PART, &model), PRO_TK_E_NOT_FOUND);
    EXPECT_NE(model, static_cast<ProMdl>(&bolt));
    EXPECT_EQ(ProMdlToModelitem(model, nullptr), PRO_TK_BAD_INPUTS);
    ProModelitem item = {};
    EXPECT_EQ(ProMdlToModelitem(model, &item), PRO_TK_INVALID_PTR);
    EXPECT_TRUE(Misuse("no model in memory")) << "a spoiled handle is recognised";
    EXPECT_NE(item.id, 0);

    // An injected fault spoils as well.
    session.report.Arm({"ProMdlMdlnameGet", 1, PRO_TK_BAD_INPUTS});
    test::Buffer<PRO_MDLNAME_SIZE> name;
    EXPECT_EQ(ProMdlMdlnameGet(&bolt, name.text), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(std::wstring_view(name.text), std::wstring(PRO_MDLNAME_SIZE - 1, kSpoiled));
    session.report.Arm({"ProArrayAlloc", 1, PRO_TK_OUT_OF_MEMORY});
    ProArray array = nullptr;
    EXPECT_EQ(ProArrayAlloc(1, 4, 1, &array), PRO_TK_OUT_OF_MEMORY);
    EXPECT_NE(array, nullptr);
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no array of the host's"));

    // What a call works on is no output, and a type has a value of its own for a failure.
    ASSERT_EQ(ProArrayAlloc(1, 4, 1, &array), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProArraySizeSet(&array, -1), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
    ProMdlType type = PRO_MDL_PART;
    EXPECT_EQ(ProMdlTypeGet(nullptr, &type), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(type, PRO_MDL_UNUSED);
    EXPECT_TRUE(Misuse("NULL, which is no model"));
}

TEST_F(HostOutputs, NoModelAndNoArrayAreMisuse) {
    EXPECT_EQ(ProMdlSave(nullptr), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("NULL, which is no model"));
    int size = 0;
    EXPECT_EQ(ProArraySizeGet(nullptr, &size), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("NULL, which is no array"));
    EXPECT_EQ(ProStringarrayFree(nullptr, 0), PRO_TK_GENERAL_ERROR);
    EXPECT_TRUE(Misuse("NULL, which is no list of 8-bit strings"));
}

// ---- Visits

ProError AddOneMore(ProFeature* feature, ProError, ProAppData) {
    static_cast<SimModel*>(feature->owner)->AddFeature(923);
    return PRO_TK_NO_ERROR;
}

ProError AddOneMoreSurface(ProSurface, ProError, ProAppData model) {
    static_cast<SimModel*>(model)->AddSurface({});
    return PRO_TK_NO_ERROR;
}

TEST_F(HostOutputs, VisitedItemsMustNotChangeMeanwhile) {
    SimModel& pump = Assembly(L"PUMP").AddFeature(923).AddFeature(923);
    EXPECT_EQ(ProSolidFeatVisit(Solid(pump), AddOneMore, nullptr, nullptr), PRO_TK_GENERAL_ERROR);
    EXPECT_TRUE(Misuse("items of PUMP were changed"));
    EXPECT_EQ(pump.Features().size(), 3U) << "the visit ends there";
    SimModel& bolt = Part(L"BOLT").AddSurface({});
    EXPECT_EQ(ProSolidSurfaceVisit(Solid(bolt), AddOneMoreSurface, nullptr, &bolt), PRO_TK_GENERAL_ERROR);
    EXPECT_TRUE(Misuse("items of BOLT were changed"));
}

// ---- Names and codes in dialogs

using DialogMisuse = test::ToolkitUi;

TEST_F(DialogMisuse, UnknownNamesAndColours) {
    ASSERT_EQ(ProUIDialogCreate(C("D"), C("D")), PRO_TK_NO_ERROR);
    const auto color = [](int code) {
        return ProUITableCellBackgroundColorSet(C("D"), C("List"), C("1"), C("num"), code);
    };
    for (const int known : {0, 17, 24, 26, 44, 255}) EXPECT_EQ(color(known), PRO_TK_NO_ERROR) << known;
    EXPECT_EQ(TakeViolations(), test::Lines{});
    for (const int unknown : {-1, 25, 45, 254, 256, 0xFF0000}) {
        EXPECT_EQ(color(unknown), PRO_TK_BAD_INPUTS) << unknown;
        EXPECT_EQ(TakeViolations().size(), 1U) << unknown;
    }

    char* none = C("none");
    EXPECT_EQ(ProUIRadiogroupSelectednamesSet(C("D"), C("Kind"), 1, &none), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(TakeViolations().size(), 1U);

    for (const char* component : {"Srot", "Sort]", "Sort.1", ""}) {
        EXPECT_EQ(ProUICheckbuttonSet(C("D"), C(component)), PRO_TK_GENERAL_ERROR);
        EXPECT_EQ(TakeViolations().size(), 1U) << component;
    }
    EXPECT_EQ(ProUICheckbuttonSet(C("D"), C("PDFCheck]")), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(TakeViolations(), test::Lines{}) << "the one name that is known to be in no layout";
    EXPECT_EQ(ProUIDialogDestroy(C("D")), PRO_TK_NO_ERROR);
}

// ---- What a plug-in leaves behind. The test plays the plug-in: it calls what the plug-in imports.

template <typename Function>
Function* Imported(const char* name) {
    const std::vector<void**> slots = ImportSlots(GetModuleHandleW(kPluginFile), name);
    return slots.empty() ? nullptr : reinterpret_cast<Function*>(*slots.front());
}

std::string OnlyProblem(SimHost& host) {
    const std::vector<std::string> problems = host.TakeProblems();
    EXPECT_EQ(problems.size(), 1U);
    return problems.empty() ? std::string() : problems.front();
}

void* leaked = nullptr;

int Leak(uiCmdCmdId, uiCmdValue*, void*) {
    leaked = Imported<void*(std::size_t)>("malloc")(40);
    return 0;
}

// Without OFN_NOCHANGEDIR.
int ChooseCarelessly(uiCmdCmdId, uiCmdValue*, void*) {
    wchar_t path[MAX_PATH] = {};
    OPENFILENAMEW request = {};
    request.lStructSize = sizeof request;
    request.lpstrFile = path;
    request.nMaxFile = MAX_PATH;
    return Imported<BOOL WINAPI(LPOPENFILENAMEW)>("GetSaveFileNameW")(&request) ? 0 : -1;
}

TEST(Leftovers, OfACommandAreProblems) {
    SimHost host;
    // The checked build has a heap of its own.
    if (Imported<void*(std::size_t)>("malloc") != nullptr) {
        host.State().screen.AddCommand("Leak")->action = Leak;
        host.Run("Leak");
        EXPECT_NE(OnlyProblem(host).find("heap has 1 blocks"), std::string::npos);
        Imported<void(void*)>("free")(leaked);
    }
    const auto before = std::filesystem::current_path();
    host.State().screen.AddCommand("Choose")->action = ChooseCarelessly;
    host.AnswerFile((host.WorkingDirectory() / "a.xlsx").wstring());
    host.Run("Choose");
    EXPECT_NE(OnlyProblem(host).find("the process's directory was left"), std::string::npos);
    EXPECT_EQ(std::filesystem::current_path(), before);
}

TEST(Surroundings, ProgramsMayNotStart) {
    SimHost host;
    const auto start =
        Imported<HINSTANCE WINAPI(HWND, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR, INT)>("ShellExecuteW");
    const auto run = Imported<UINT WINAPI(LPCSTR, UINT)>("WinExec");
    ASSERT_TRUE(start != nullptr && run != nullptr);
    const auto started = [&] {
        const auto answer =
            reinterpret_cast<std::uintptr_t>(start(nullptr, L"open", L"a", nullptr, nullptr, 0));
        return std::pair(answer > 32, run("a", 0) > 31);
    };
    EXPECT_EQ(started(), std::pair(true, true));
    host.State().user.programsFail = true;
    EXPECT_EQ(started(), std::pair(false, false));
    EXPECT_EQ(host.State().user.started.size(), 2U);
}

// A drawing of the model's name may lie in a folder that nobody thought of.
TEST_F(HostOutputs, ModelsAreFoundAlongTheSearchPath) {
    const std::filesystem::path library = folder.Path() / "library";
    std::filesystem::create_directories(library / "near");
    const char* file = R"({"format": "hostsim model", "version": 1, "name": "PUMP", "kind": "drawing"})";
    folder.Write("library/pump.drw.3", file);
    test::Buffer<PRO_FAMILY_MDLNAME_SIZE> name(L"PUMP");
    ProMdl drawing = nullptr;
    EXPECT_EQ(ProMdlnameRetrieve(name.text, PRO_MDLFILE_DRAWING, &drawing), PRO_TK_E_NOT_FOUND);
    session.models.searchPath = {library / "near", library};
    ASSERT_EQ(ProMdlnameRetrieve(name.text, PRO_MDLFILE_DRAWING, &drawing), PRO_TK_NO_ERROR);
    EXPECT_EQ(static_cast<SimModel*>(drawing)->directory, library);

    ASSERT_TRUE(session.models.Erase(*static_cast<SimModel*>(drawing)));
    folder.Write("pump.drw.1", file);
    ASSERT_EQ(ProMdlnameRetrieve(name.text, PRO_MDLFILE_DRAWING, &drawing), PRO_TK_NO_ERROR);
    EXPECT_EQ(static_cast<SimModel*>(drawing)->directory, folder.Path()) << "the working directory first";
}

TEST(Leftovers, ATimerMustNotOutliveThePlugin) {
    SimHost host;
    ASSERT_NE(Imported<UINT_PTR WINAPI(HWND, UINT_PTR, UINT, TIMERPROC)>("SetTimer")(nullptr, 0, 10, nullptr),
              0U);
    host.Terminate();
    EXPECT_NE(OnlyProblem(host).find("timer"), std::string::npos);
}

}  // namespace
