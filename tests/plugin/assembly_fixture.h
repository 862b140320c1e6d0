// What the tests of the commands that build assemblies share.

#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "simulator/cad/model_file.h"
#include "simulator/host/sim_host.h"
#include "support/arrange.h"

namespace test {

inline constexpr wchar_t kPartTemplate[] = L"TEMPLATE_SOLIDPART";
inline constexpr wchar_t kAssemblyTemplate[] = L"TEMPLATE_DESIGNASM";
inline constexpr wchar_t kSheetmetalTemplate[] = L"TEMPLATE_SHEETMETALPART";

// Makes a model the template that a configuration option names: a file in a folder of its own.
inline void UseTemplate(sim::SimHost& host, sim::SimModel& model, const wchar_t* option) {
    model.directory = MakeFolder(host, "templates");
    const std::wstring extension(sim::ExtensionOf(model.Kind()));
    host.State().configOptions[option] = {(model.directory / (model.Name() + L"." + extension)).wstring()};
    host.Store(model);
}

// A part template with a coordinate system.
inline void UsePartTemplate(sim::SimHost& host) {
    UseTemplate(host, host.AddPart(L"START_PART").AddCoordinateSystem(L"PRT_CSYS_DEF"), kPartTemplate);
}

// Lays a file of that name into the working directory, as somebody else's model of any length of name.
inline void LayFile(sim::SimHost& host, const std::wstring& name, std::string_view text) {
    std::ofstream(host.WorkingDirectory() / name, std::ios::binary) << text;
}

inline void LayPart(sim::SimHost& host, const std::wstring& name) {
    const sim::SimModel part(name, sim::ModelKind::kPart, sim::ModelSubtype::kNone);
    LayFile(host, sim::LowerName(name) + L".prt.1", sim::ModelFileText(part));
}

inline bool HasFile(const sim::SimHost& host, const std::wstring& name) {
    return std::filesystem::exists(host.WorkingDirectory() / name);
}

inline sim::SimModel* InMemory(sim::SimHost& host, std::wstring_view name,
                               sim::ModelKind kind = sim::ModelKind::kPart) {
    return host.State().models.Find(name, kind);
}

}  // namespace test
