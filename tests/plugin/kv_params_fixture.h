// What the tests of KvParams share: playing its dialog, and finding the models that have a parameter.

#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"

namespace test {

// Names of models.
using Names = std::set<std::wstring>;

class KvParams : public testing::Test {
protected:
    // Opens the dialog over `top` and plays.
    void Use(sim::SimModel& top, const std::function<void(sim::SimDialog&)>& script) {
        host.Open(top, top.Kind() == sim::ModelKind::kManufacturing ? sim::HostMode::kMould
                                                                    : sim::HostMode::kAssembly);
        host.OnDialog("KvParams", script);
        EXPECT_EQ(host.Run("KvParams"), PRO_TK_NO_ERROR);
    }
    // Presses Add, Update or Delete for the string parameter MAT.
    void Edit(sim::SimModel& top, const std::string& button, std::wstring_view models = L"AsmAndPart",
              std::wstring_view excluded = L"") {
        Use(top, [&](sim::SimDialog& dialog) {
            dialog.Choose("TypeRadio", models).Choose("PtypeOption", L"字符串");
            dialog.Type("ParaName", L"MAT").Type("ParaValue", L"zinc").Type("InputKeyWords", excluded);
            dialog.Press(button);
        });
    }
    // Presses one of the two lower buttons; both write the parameter OUT.
    void Derive(sim::SimModel& top, const std::string& button, std::wstring_view models = L"AsmAndPart",
                std::wstring_view excluded = L"") {
        Use(top, [&](sim::SimDialog& dialog) {
            dialog.Choose("TypeRadio2", models).Type("InputKeyWords2", excluded);
            dialog.Type("outlinePname", L"OUT").Type("shSizePname", L"OUT").Check("KvOutlineOrder", ordered);
            dialog.Choose("KvOutlineNum", decimals).Press(button);
        });
    }
    // Puts text into a field whatever length the layout allows there.
    void Put(const std::string& field, std::wstring_view text) {
        host.State().screen.FindDialog("KvParams")->Find(field)->value = text;
    }
    // Names of the models in memory that have the parameter.
    Names Having(std::wstring_view parameter) {
        Names names;
        for (const sim::SimModel* model : host.State().models.All())
            if (model->HasParameter(parameter)) names.insert(model->Name());
        return names;
    }
    void Forget(std::wstring_view parameter) {
        for (sim::SimModel* model : host.State().models.All()) model->RemoveParameter(parameter);
    }
    sim::SimModel& Block(std::wstring_view name, double x, double y, double z) {
        return host.AddPart(name).AddBlock(x, y, z);
    }

    sim::SimHost host;
    bool ordered = false;
    std::wstring decimals = L"2";
};

}  // namespace test
