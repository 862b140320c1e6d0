// The host's functions on the selection, the windows, and the choice of folders and files.

#include <filesystem>
#include <string>
#include <vector>

#include <ProArray.h>
#include <ProMdl.h>
#include <ProMfg.h>
#include <ProMode.h>
#include <ProModelitem.h>
#include <ProSelbuffer.h>
#include <ProUtil.h>
#include <ProWindows.h>
#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "simulator/report/utf8.h"
#include "support/host_test.h"

namespace {

namespace fs = std::filesystem;
using namespace sim;
using test::Buffer;
using test::Name;
using test::Path;

using HostDesk = test::HostTest;

TEST_F(HostDesk, SelectionsBelongToTheirArray) {
    SimModel& bolt = Part(L"BOLT");
    SimModel& pump = Assembly(L"PUMP").Place(bolt);
    ProSelection* array = nullptr;
    EXPECT_EQ(ProSelbufferSelectionsGet(&array), PRO_TK_E_NOT_FOUND);
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
    session.desk.EndCommand();
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

// A command that exports from the bolt's window, and goes back or forgets to.
int UseBoltWindow(bool goesBack) {
    int before = -1, window = -1;
    EXPECT_EQ(ProWindowCurrentGet(&before), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProObjectwindowMdlnameCreate(Buffer<PRO_MDLNAME_SIZE>(L"BOLT").text, PRO_PART, &window),
              PRO_TK_NO_ERROR);
    EXPECT_EQ(ProWindowCurrentSet(window), PRO_TK_NO_ERROR);
    if (!goesBack) return PRO_TK_NO_ERROR;
    EXPECT_EQ(ProWindowCurrentSet(before), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProWindowDelete(window), PRO_TK_NO_ERROR);
    return PRO_TK_NO_ERROR;
}

TEST(HostWindows, ACommandThatLeavesOneCurrentIsNamed) {
    HostSetup setup;
    setup.initialize = false;
    SimHost host(setup);
    host.AddPart(L"BOLT");
    host.Open(host.AddAssembly(L"PUMP"));
    Interface& screen = host.State().screen;
    screen.AddCommand("Stray")->action = [](uiCmdCmdId, uiCmdValue*, void*) { return UseBoltWindow(false); };
    screen.AddCommand("Tidy")->action = [](uiCmdCmdId, uiCmdValue*, void*) { return UseBoltWindow(true); };

    EXPECT_EQ(host.Run("Tidy"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.TakeProblems(), std::vector<std::string>{});
    EXPECT_EQ(host.Run("Stray"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.TakeProblems(), (std::vector<std::string>{"the window of BOLT was left current",
                                                             "the window of BOLT was left open"}));
    EXPECT_EQ(host.State().models.current->Name(), L"PUMP");
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
