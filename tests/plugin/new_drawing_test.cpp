// NewDraw and KvNewDrw: drawings made from templates.

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/drawings.h"
#include "support/plugin_home.h"

namespace {

namespace fs = std::filesystem;
using sim::Fault;
using sim::HostSetup;
using sim::ModelKind;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using test::ChangeSetting;
using test::DrawingOf;
using test::Messages;
using test::Texts;
using test::Whole;

constexpr wchar_t kCommon[] = L"KvConfig.ini";
constexpr wchar_t kOneOnly[] = L"\t当前模式只能选择1个元件\t";
constexpr wchar_t kNotConfigured[] = L"\t当前所选模板未配置，请在 柯凡设置 功能中配置后再试。\t";

// A part with a format to choose and a template for every way to make its drawing.
class NewDrawing : public testing::Test {
protected:
    explicit NewDrawing(const HostSetup& setup = {}) : host(setup) {
        test::RestoreSettings();
        test::WriteTemplate(test::TemplateFolder(), "kv", "A4");
        host.Open(bolt);
    }
    ~NewDrawing() override {
        // None of them may have come among the templates.
        EXPECT_EQ(test::FilesIn(test::TemplateFolder()), (Texts{L"README.md", L"kv.drw.1"}));
    }

    void ChooseFormat(const fs::path& folder) {
        test::WriteFormat(folder, "frame", "A2");
        host.AnswerFile((folder / "frame.frm.1").wstring());
    }
    // The template for parts of this size, in the folder.
    fs::path Configure(const fs::path& folder, const std::string& name, const wchar_t* section) {
        test::WriteTemplate(folder, name, "A1");
        fs::path file = folder / (name + ".drw");
        ChangeSetting(kCommon, section, L"path", file.wstring());
        return file;
    }
    void CreateBySize(const wchar_t* size) {
        host.OnDialog("KvNewDrw", [size](SimDialog& dialog) {
            dialog.Choose("RadioSize", size).Choose("RadioType", L"prt").Press("KvCreateDrw");
        });
        host.Select({Whole(bolt)});
        EXPECT_EQ(host.Run("KvNewDrw"), PRO_TK_NO_ERROR);
    }
    // KvNewDrw is a command of assemblies.
    void OpenPump() { host.Open(host.AddAssembly(L"PUMP").Place(bolt)); }

    SimHost host;
    SimModel& bolt = host.AddPart(L"BOLT");
};

class NewDrawingAsDocumented : public NewDrawing {
protected:
    static HostSetup Documented() {
        HostSetup setup;
        setup.asDocumented = true;
        return setup;
    }
    NewDrawingAsDocumented() : NewDrawing(Documented()) {}
};

// ---- NewDraw

TEST_F(NewDrawing, IsMadeFromTheOwnTemplateWithTheChosenFormat) {
    ChooseFormat(test::MakeFolder(host, L"图框"));
    EXPECT_EQ(host.Run("NewDraw"), PRO_TK_NO_ERROR);
    SimModel* drawing = DrawingOf(host, L"BOLT");
    ASSERT_NE(drawing, nullptr);
    EXPECT_EQ(host.State().models.current, drawing);
    EXPECT_EQ(drawing->Parameter(L"TEMPLATE"), L"kv");
    EXPECT_EQ(drawing->ShownModels(), std::vector<SimModel*>{&bolt});
    EXPECT_EQ(drawing->Sheets().at(0).format, L"frame");
    EXPECT_EQ(drawing->Sheets().at(0).size, L"A2");
    // Where the user works, also with a host that keeps the folder of the creation.
    EXPECT_EQ(drawing->directory, host.WorkingDirectory());
    // In memory the template would be taken for the drawing of a part named KV.
    EXPECT_EQ(DrawingOf(host, L"KV"), nullptr);
    EXPECT_EQ(Messages(host), Texts{});
    EXPECT_EQ(host.State().user.questions, Texts{L"请选择工程图模板"});
}

TEST_F(NewDrawingAsDocumented, IsMadeInTheSameWay) {
    ChooseFormat(test::MakeFolder(host, "formats"));
    host.Run("NewDraw");
    ASSERT_NE(DrawingOf(host, L"BOLT"), nullptr);
    EXPECT_EQ(DrawingOf(host, L"BOLT")->directory, host.WorkingDirectory());
    EXPECT_EQ(DrawingOf(host, L"BOLT")->Sheets().at(0).format, L"frame");
}

// The template's folder is then the only place, and some hosts save the drawing there.
TEST_F(NewDrawing, TellsWhereItWillBeSavedWhenThatIsBesideTheTemplate) {
    host.State().strict.templateFromMemory = false;
    ChooseFormat(host.WorkingDirectory());
    const fs::path before = host.WorkingDirectory();
    EXPECT_EQ(host.Run("NewDraw"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.WorkingDirectory(), before);
    ASSERT_NE(DrawingOf(host, L"BOLT"), nullptr);
    ASSERT_EQ(Messages(host).size(), 1u);
    EXPECT_NE(host.LastMessage().find(test::PathText(test::TemplateFolder())), std::wstring::npos);

    host.State().strict.newDrawingJoinsModel = true;
    SimModel& nut = host.AddPart(L"NUT");
    host.Open(nut);
    ChooseFormat(host.WorkingDirectory());
    host.Run("NewDraw");
    EXPECT_EQ(DrawingOf(host, L"NUT")->directory, before);
    EXPECT_EQ(Messages(host).size(), 1u);
}

TEST_F(NewDrawing, KeepsApartADrawingThatIsNamedLikeTheTemplate) {
    test::WriteTemplate(host.WorkingDirectory(), "kv", "A0");
    ChooseFormat(host.WorkingDirectory());
    host.Run("NewDraw");
    ASSERT_NE(DrawingOf(host, L"BOLT"), nullptr);
    // It was made in the template's folder, where there is no doubt, and the user is told.
    EXPECT_EQ(DrawingOf(host, L"BOLT")->Sheets().at(0).size, L"A2");
    EXPECT_EQ(Messages(host).size(), 1u);
    EXPECT_EQ(test::FilesIn(host.WorkingDirectory()), (Texts{L"frame.frm.1", L"kv.drw.1"}));
}

TEST_F(NewDrawing, IsNotMadeWithoutAFormat) {
    host.AnswerFile(std::nullopt);
    EXPECT_EQ(host.Run("NewDraw"), PRO_TK_USER_ABORT);
    EXPECT_EQ(DrawingOf(host, L"BOLT"), nullptr);
    EXPECT_EQ(Messages(host), Texts{});
}

TEST_F(NewDrawing, StaysWithoutAFormatThatCannotBeAdded) {
    const fs::path file = host.WorkingDirectory() / "frame.frm.1";
    test::WriteBytes(file, "{");
    host.AnswerFile(file.wstring());
    EXPECT_NE(host.Run("NewDraw"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.State().models.current, DrawingOf(host, L"BOLT"));
    EXPECT_EQ(Messages(host), Texts{L"\t图框未能加入新工程图：\t\n" + file.wstring()});
}

TEST_F(NewDrawing, ShowsWhatTheCreationAnswers) {
    struct Case {
        ProError status;
        const wchar_t* text;
    };
    const Case cases[] = {
        {PRO_TK_E_FOUND, L"PRO_TK_E_FOUND"},
        {PRO_TK_E_NOT_FOUND, L"PRO_TK_E_NOT_FOUND"},
        {PRO_TK_NO_PERMISSION, L"PRO_TK_NO_PERMISSION"},
        {PRO_TK_GENERAL_ERROR, nullptr},
    };
    Texts expected;
    for (const Case& one : cases) {
        ChooseFormat(host.WorkingDirectory());
        host.State().report.Arm(Fault{"ProDrawingFromTmpltCreate", 0, one.status});
        EXPECT_EQ(host.Run("NewDraw"), one.status);
        host.State().report.DisarmAll();
        if (one.text != nullptr) expected.emplace_back(one.text);
        EXPECT_EQ(Messages(host), expected);
    }
    EXPECT_EQ(DrawingOf(host, L"BOLT"), nullptr);
}

// The list of errors that comes with it is freed: the host looks for what is left open.
TEST_F(NewDrawing, TellsOfADrawingThatWasMadeWithErrors) {
    test::WriteTemplate(test::TemplateFolder(), "kv", "A4", R"({"id":1,"sheet":1,"type":"projection"})");
    ChooseFormat(host.WorkingDirectory());
    EXPECT_EQ(host.Run("NewDraw"), PRO_TK_DWGCREATE_ERRORS);
    EXPECT_EQ(Messages(host), Texts{L"PRO_TK_DWGCREATE_ERRORS"});
    EXPECT_NE(DrawingOf(host, L"BOLT"), nullptr);
}

// ---- What both do first

TEST_F(NewDrawing, OpensTheDrawingThatThereIs) {
    OpenPump();
    host.AddDrawingFile(L"BOLT", {L"A4"});
    for (const char* command : {"NewDraw", "KvNewDrw"}) {
        SCOPED_TRACE(command);
        host.Open(*host.State().models.Find(L"PUMP", ModelKind::kAssembly));
        host.Select({Whole(bolt)});
        EXPECT_EQ(host.Run(command), PRO_TK_NO_ERROR);
        EXPECT_EQ(host.State().models.current, DrawingOf(host, L"BOLT"));
        EXPECT_NE(host.State().user.messageArea.back().find(test::PathText(host.WorkingDirectory())),
                  std::wstring::npos);
    }
    EXPECT_EQ(test::FilesIn(host.WorkingDirectory()), Texts{L"bolt.drw.1"});
    EXPECT_EQ(Messages(host), Texts{});
}

TEST_F(NewDrawing, IsRefusedForSeveralModels) {
    OpenPump();
    SimModel& pump = *host.State().models.Find(L"PUMP", ModelKind::kAssembly);
    for (const char* command : {"NewDraw", "KvNewDrw"}) {
        host.Select({Whole(bolt), Whole(pump)});
        host.Run(command);
    }
    EXPECT_EQ(Messages(host), (Texts{kOneOnly, kOneOnly}));
}

TEST_F(NewDrawing, IsOfTheAssemblyOfAManufacturingModel) {
    SimModel& mould = host.AddAssembly(L"MOULD");
    host.Open(host.AddManufacturing(L"CAVITY", mould));
    ChooseFormat(host.WorkingDirectory());
    host.Run("NewDraw");
    ASSERT_NE(DrawingOf(host, L"MOULD"), nullptr);
    EXPECT_EQ(DrawingOf(host, L"MOULD")->ShownModels(), std::vector<SimModel*>{&mould});
}

TEST_F(NewDrawing, IsOfTheModelThatAPickedItemBelongsTo) {
    OpenPump();
    ChooseFormat(host.WorkingDirectory());
    host.Select({test::ItemOf(bolt, 5, 1)});
    host.Run("NewDraw");
    EXPECT_NE(DrawingOf(host, L"BOLT"), nullptr);
}

TEST_F(NewDrawing, RefusesANameThatNoDrawingCanHave) {
    const std::string name(32, 'x');
    test::WriteBytes(host.WorkingDirectory() / (name + ".prt.1"),
                     R"({"format":"hostsim model","version":1,"kind":"part","name":")" + name + "\"}");
    host.Open(*host.Retrieve(std::wstring(name.begin(), name.end()), ModelKind::kPart));
    EXPECT_EQ(host.Run("NewDraw"), PRO_TK_LINE_TOO_LONG);
    ASSERT_EQ(Messages(host).size(), 1u);
    EXPECT_NE(host.LastMessage().find(L"31"), std::wstring::npos);
}

// ---- KvNewDrw

TEST_F(NewDrawing, OfASizeIsMadeFromTheConfiguredTemplate) {
    OpenPump();
    const fs::path folder = test::MakeFolder(host, "A folder with a path longer than a name");
    Configure(folder, "size_a4h", L"A4HPrtpath");
    CreateBySize(L"A4H");
    SimModel* drawing = DrawingOf(host, L"BOLT");
    ASSERT_NE(drawing, nullptr);
    EXPECT_EQ(host.State().models.current, drawing);
    EXPECT_EQ(drawing->Parameter(L"TEMPLATE"), L"size_a4h");
    EXPECT_EQ(drawing->Sheets().at(0).size, L"A1");
    EXPECT_EQ(drawing->directory, host.WorkingDirectory());
    EXPECT_EQ(DrawingOf(host, L"SIZE_A4H"), nullptr);
    EXPECT_EQ(Messages(host), Texts{});
}

TEST_F(NewDrawingAsDocumented, OfASizeIsMadeToo) {
    OpenPump();
    Configure(test::MakeFolder(host, "templates"), "size_a0", L"A0Prtpath");
    CreateBySize(L"A0");
    ASSERT_NE(DrawingOf(host, L"BOLT"), nullptr);
    EXPECT_EQ(DrawingOf(host, L"BOLT")->directory, host.WorkingDirectory());
}

TEST_F(NewDrawing, DialogStartsAtTheModelAndTellsTheTemplate) {
    OpenPump();
    const fs::path file = Configure(test::MakeFolder(host, "templates"), "size_a3", L"A3Asmpath");
    ChangeSetting(kCommon, L"A2Asmpath", L"path", L"C:\\nowhere\\a2.drw");
    host.OnDialog("KvNewDrw", [&file](SimDialog& dialog) {
        EXPECT_EQ(dialog.Chosen("RadioType"), "asm");
        EXPECT_EQ(dialog.Chosen("RadioSize"), "A3");
        EXPECT_EQ(dialog.Text("TemplateFile"), file.wstring());
        EXPECT_EQ(dialog.Text("TemplateState"), L"文件存在");
        dialog.Choose("RadioSize", L"A2");
        EXPECT_EQ(dialog.Text("TemplateFile"), L"C:\\nowhere\\a2.drw");
        EXPECT_EQ(dialog.Text("TemplateState"), L"文件不存在");
        dialog.Press("KvCreateDrw").Choose("RadioType", L"prt");
        EXPECT_EQ(dialog.Text("TemplateState"), L"未配置");
        dialog.Press("KvCreateDrw");
        EXPECT_TRUE(dialog.IsOpen());
        dialog.Choose("RadioType", L"asm").Choose("RadioSize", L"A3").Press("KvCreateDrw");
        EXPECT_FALSE(dialog.IsOpen());
    });
    EXPECT_EQ(host.Run("KvNewDrw"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Messages(host),
              (Texts{L"当前模板无法检索，请检查模板设置是否正确。\nC:\\nowhere\\a2.drw", kNotConfigured}));
    EXPECT_NE(DrawingOf(host, L"PUMP"), nullptr);
}

// A template that the user has open is the user's.
TEST_F(NewDrawing, LeavesAnOpenTemplateInMemory) {
    OpenPump();
    const fs::path file = Configure(test::MakeFolder(host, "templates"), "size_a3", L"A3Prtpath");
    SimModel* open = nullptr;
    ASSERT_EQ(host.State().models.Load(file, ModelKind::kDrawing, open), PRO_TK_NO_ERROR);
    CreateBySize(L"A3");
    EXPECT_NE(DrawingOf(host, L"BOLT"), nullptr);
    EXPECT_EQ(DrawingOf(host, L"SIZE_A3"), open);
}

}  // namespace
