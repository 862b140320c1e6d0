// NewPart, NewAsm, NewSmt: a new component from the host's template.

#include <string>

#include <gtest/gtest.h>

#include "plugin/assembly_fixture.h"
#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/reports.h"

namespace {

using sim::IdentityMatrix;
using sim::ModelKind;
using sim::SimHost;
using sim::SimModel;
using sim::TranslationMatrix;
using test::ChangeSetting;
using test::HasFile;
using test::InMemory;
using test::LayFile;
using test::LayPart;
using test::Messages;
using test::Texts;

constexpr wchar_t kNoAssemblyForNew[] = L"\t当前激活元件不是组件/制造,无法进行新建装配操作\t";
constexpr wchar_t kNoSystemInAssembly[] = L"\t当前组件无坐标系,无法缺省装配新零件\t";
constexpr wchar_t kNewNameTooLong[] = L"新建模型名称长度不能超过32位";

// The three commands, with what each has for itself.
struct Kind {
    const char* command;
    const wchar_t* option;
    const wchar_t* setting;
    ModelKind kind;
    sim::ModelSubtype subtype;
    const wchar_t* noTemplate;
    const wchar_t* noSystem;
};

const Kind kKinds[] = {
    {"NewPart", test::kPartTemplate, L"PrtAssembly", ModelKind::kPart, sim::ModelSubtype::kSolidPart,
     L"\t零件模板加载失败，请确认template_solidpart选项是否配置正确\t",
     L"\t零件模板无坐标系,无法缺省装配新零件\t"},
    {"NewAsm", test::kAssemblyTemplate, L"AsmAssembly", ModelKind::kAssembly,
     sim::ModelSubtype::kDesignAssembly, L"\t组件模板加载失败，请确认template_designasm选项是否配置正确\t",
     L"\t组件模板无坐标系,无法缺省装配新零件\t"},
    {"NewSmt", test::kSheetmetalTemplate, L"SmtAssembly", ModelKind::kPart, sim::ModelSubtype::kSheetmetal,
     L"\t钣金件模板加载失败，请确认template_sheetmetalpart选项是否配置正确\t",
     L"\t钣金件模板无坐标系,无法缺省装配新零件\t"},
};

class NewComponent : public testing::TestWithParam<Kind> {
protected:
    // The template, with a coordinate system unless told otherwise.
    void UseTemplate(bool withSystem = true) {
        SimModel& model = *host.State().models.Create(L"START", GetParam().kind, GetParam().subtype);
        if (withSystem) model.AddCoordinateSystem(L"CSYS", TranslationMatrix(1, 0, 0));
        model.SetParameter(L"FROM_TEMPLATE", 1);
        test::UseTemplate(host, model, GetParam().option);
    }
    void Constrain(const wchar_t* value) {
        ChangeSetting(L"KvConfig.ini", GetParam().setting, L"value", value);
    }
    SimModel* Made(const std::wstring& name) { return InMemory(host, name, GetParam().kind); }
    std::wstring LastLine() { return host.State().user.messageArea.back(); }

    SimHost host;
};

INSTANTIATE_TEST_SUITE_P(Commands, NewComponent, testing::ValuesIn(kKinds),
                         [](const auto& kind) { return kind.param.command; });

TEST_P(NewComponent, GetsTheNextFreeNameAndSitsOnTheFirstSystem) {
    UseTemplate();
    Constrain(L" 1 ");
    SimModel& pump = host.AddAssembly(L"PUMP_00")
                         .AddCoordinateSystem(L"ASM_DEF_CSYS", TranslationMatrix(0, 0, 5))
                         .AddCoordinateSystem(L"OTHER", TranslationMatrix(9, 9, 9));
    // One name is taken on disk, one in memory; a model of another type takes none.
    host.Store(*host.State().models.Create(L"PUMP-1", GetParam().kind));
    host.State().models.Create(L"PUMP-2", GetParam().kind);
    const bool isPart = GetParam().kind == ModelKind::kPart;
    host.State().models.Create(L"PUMP-3", isPart ? ModelKind::kAssembly : ModelKind::kPart);
    host.Open(pump);

    EXPECT_EQ(host.Run(GetParam().command), PRO_TK_NO_ERROR);
    ASSERT_EQ(pump.Features().size(), 1U);
    const sim::Feature& component = pump.Features()[0];
    ASSERT_EQ(component.component, Made(L"PUMP-3"));
    EXPECT_EQ(component.component->Subtype(), GetParam().subtype);
    EXPECT_TRUE(component.component->HasParameter(L"FROM_TEMPLATE"));
    EXPECT_FALSE(component.component->IsModified()) << "it is saved";
    ASSERT_EQ(component.constraints.size(), 1U);
    EXPECT_EQ(component.constraints[0].type, 6);
    EXPECT_EQ(component.placement, TranslationMatrix(-1, 0, 5));
    EXPECT_EQ(pump.TreeRefreshes(), 1);
    EXPECT_EQ(Messages(host), Texts());
    EXPECT_NE(LastLine().find(L"PUMP-3"), std::wstring::npos);
    EXPECT_EQ(host.Calls("ProMdlnameRetrieve"), 3) << "one a candidate";
    EXPECT_EQ(test::LastReport(host).Count(L"失败"), 0U);
}

TEST_P(NewComponent, StaysUnconstrainedUnlessTheSettingSaysSo) {
    UseTemplate(false);
    SimModel& pump = host.AddAssembly(L"PUMP");
    host.Open(host.AddManufacturing(L"MFG", pump));
    int number = 0;
    for (const wchar_t* value : {L"0", L"yes", L"", L"11"}) {
        Constrain(value);
        EXPECT_EQ(host.Run(GetParam().command), PRO_TK_NO_ERROR);
        ASSERT_EQ(pump.Features().size(), static_cast<std::size_t>(++number));
        const sim::Feature& component = pump.Features().back();
        EXPECT_EQ(component.component, Made(L"PUMP-" + std::to_wstring(number)))
            << "the assembly gives the name";
        EXPECT_EQ(component.placement, IdentityMatrix());
        EXPECT_TRUE(component.constraints.empty());
    }
    EXPECT_EQ(pump.TreeRefreshes(), 0);
    EXPECT_EQ(Messages(host), Texts());
}

TEST_P(NewComponent, TellsWhichModelHasNoSystemAndLeavesTheComponent) {
    UseTemplate(false);
    Constrain(L"1");
    SimModel& pump = host.AddAssembly(L"PUMP");
    host.Open(pump);
    host.Run(GetParam().command);
    EXPECT_EQ(Messages(host), Texts{kNoSystemInAssembly}) << "the assembly's is looked for first";
    pump.AddCoordinateSystem(L"ASM_DEF_CSYS");
    host.Run(GetParam().command);
    EXPECT_EQ(host.LastMessage(), GetParam().noSystem);
    EXPECT_EQ(pump.Features().size(), 2U) << "placed, but not tied";
    EXPECT_TRUE(pump.Features()[1].constraints.empty());
    EXPECT_EQ(test::LastReport(host).Reason(L"PUMP-2"), L"没有坐标系");
}

TEST_P(NewComponent, NeedsATemplateAndAnAssembly) {
    SimModel& bolt = host.AddPart(L"BOLT");
    host.Open(bolt, sim::HostMode::kAssembly);
    EXPECT_NE(host.Run(GetParam().command), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.LastMessage(), GetParam().noTemplate) << "the option comes first";

    // Without a model of that name both are wrong: the order tells them apart.
    auto& options = host.State().configOptions[GetParam().option];
    const bool loadsFirst = std::string(GetParam().command) == "NewAsm";
    for (const wchar_t* file : {L"C:\\missing\\start", L"", L"damaged"}) {
        for (const wchar_t* extension : {L".prt.1", L".asm.1"})
            LayFile(host, L"damaged" + std::wstring(extension), "{");
        options = {file};
        host.Run(GetParam().command);
        EXPECT_EQ(host.LastMessage(), loadsFirst ? GetParam().noTemplate : kNoAssemblyForNew);
        host.Open(host.State().models.Find(L"PUMP", ModelKind::kAssembly) != nullptr
                      ? *InMemory(host, L"PUMP", ModelKind::kAssembly)
                      : host.AddAssembly(L"PUMP"));
        host.Run(GetParam().command);
        EXPECT_EQ(host.LastMessage(), GetParam().noTemplate);
        host.Open(bolt, sim::HostMode::kAssembly);
    }

    UseTemplate();
    host.Run(GetParam().command);
    EXPECT_EQ(host.LastMessage(), kNoAssemblyForNew);
    host.State().report.Arm({"ProMdlActiveGet", 1, PRO_TK_BAD_CONTEXT});
    host.Open(*InMemory(host, L"PUMP", ModelKind::kAssembly));
    host.Run(GetParam().command);
    EXPECT_EQ(host.LastMessage(), kNoAssemblyForNew) << "no active model is no assembly";
    EXPECT_EQ(Messages(host).size(), 9U);
}

class NewPart : public testing::Test {
protected:
    NewPart() { test::UsePartTemplate(host); }

    void RunIn(SimModel& assembly) {
        host.Open(assembly);
        host.Run("NewPart");
    }

    SimHost host;
};

TEST_F(NewPart, StopsAtNamesThatAreTooLong) {
    const std::wstring base29(29, L'A');
    RunIn(host.AddAssembly(base29).AddCoordinateSystem(L"ASM_DEF_CSYS"));
    EXPECT_NE(InMemory(host, base29 + L"-1"), nullptr) << "31 characters are a name";

    // 32 characters are the host's to judge.
    const std::wstring base30(30, L'B');
    SimModel& pump = host.AddAssembly(base30);
    RunIn(pump);
    EXPECT_EQ(host.LastMessage(), L"新建模型名称“" + base30 + L"-1”非法，请修改后再试！");
    for (int n = 1; n <= 9; ++n) LayPart(host, base30 + L"-" + std::to_wstring(n));
    RunIn(pump);
    EXPECT_EQ(host.LastMessage(), kNewNameTooLong);
    EXPECT_TRUE(pump.Features().empty());
    EXPECT_EQ(Messages(host).size(), 2U);
}

TEST_F(NewPart, TakesNoNameThatCannotBeLookedUp) {
    SimModel& pump = host.AddAssembly(L"PUMP").AddCoordinateSystem(L"ASM_DEF_CSYS");
    LayFile(host, L"pump-1.prt.1", "damaged");
    RunIn(pump);
    ASSERT_EQ(pump.Features().size(), 1U);
    EXPECT_EQ(pump.Features()[0].component, InMemory(host, L"PUMP-2"));
    EXPECT_FALSE(HasFile(host, L"pump-1.prt.2"));

    host.State().report.Arm({"ProMdlnameRetrieve", 0, PRO_TK_NO_PERMISSION});
    RunIn(pump);
    EXPECT_EQ(host.LastMessage(), L"\t新模型“PUMP-100”创建失败：没有权限\t") << "and it ends";
    EXPECT_EQ(pump.Features().size(), 1U);
}

TEST_F(NewPart, KeepsQuietAboutLaterFailuresButRecordsThem) {
    const struct {
        const char* function;
        const wchar_t* assembly;
        const wchar_t* line;
    } kCases[] = {
        {"ProMdlSave", L"PUMP_A", L"PUMP_A-1：已创建并约束装配（有步骤失败，见报告）"},
        {"ProAsmcompAssemble", L"PUMP_B", L"PUMP_B-1：已创建，未装配（有步骤失败，见报告）"},
        {"ProAsmcompConstraintsSet", L"PUMP_C", L"PUMP_C-1：已创建并装配，未约束（有步骤失败，见报告）"},
    };
    for (const auto& [function, assembly, line] : kCases) {
        host.State().report.Arm({function, 1, PRO_TK_NO_PERMISSION});
        RunIn(host.AddAssembly(assembly).AddCoordinateSystem(L"ASM_DEF_CSYS"));
        EXPECT_EQ(test::LastReport(host).Reason(assembly + std::wstring(L"-1")), L"没有权限") << function;
        EXPECT_NE(host.State().user.messageArea.back().find(line), std::wstring::npos) << function;
    }
    EXPECT_EQ(Messages(host), Texts());
}

TEST_F(NewPart, TellsThatNoCopyCouldBeMade) {
    SimModel& pump = host.AddAssembly(L"PUMP").AddCoordinateSystem(L"ASM_DEF_CSYS");
    host.State().report.Arm({"ProMdlnameCopy", 1, PRO_TK_NO_PERMISSION});
    RunIn(pump);
    EXPECT_EQ(Messages(host), Texts{L"\t新模型“PUMP-1”创建失败：没有权限\t"});
    EXPECT_TRUE(pump.Features().empty());
    EXPECT_FALSE(HasFile(host, L"pump-1.prt.1"));
}

// On a host that wants the path from the top assembly as well as on one that does not.
TEST(NewPartInActivated, SitsOnTheSystemOfTheActivatedAssembly) {
    for (const bool asDocumented : {false, true}) {
        sim::HostSetup setup;
        setup.asDocumented = asDocumented;
        SimHost host(setup);
        test::UsePartTemplate(host);
        SimModel& pump = host.AddAssembly(L"PUMP").AddCoordinateSystem(L"TOP");
        SimModel& frame = host.AddAssembly(L"FRAME");
        SimModel& sub = host.AddAssembly(L"SUB").AddCoordinateSystem(L"SUB", TranslationMatrix(0, 7, 0));
        pump.Place(host.AddPart(L"BOLT")).Place(frame.Place(host.AddPart(L"NUT")).Place(sub));
        host.Open(pump);
        host.Activate(sub);
        EXPECT_EQ(host.Run("NewPart"), PRO_TK_NO_ERROR);
        ASSERT_EQ(sub.Features().size(), 1U);
        EXPECT_EQ(sub.Features()[0].component, InMemory(host, L"SUB-1"));
        EXPECT_EQ(sub.Features()[0].placement, TranslationMatrix(0, 7, 0));
        EXPECT_EQ(Messages(host), Texts());
    }
}

}  // namespace
