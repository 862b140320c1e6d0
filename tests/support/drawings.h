// Drawings, their templates and formats, for tests that make or scale them.

#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/host/sim_host.h"

namespace test {

inline constexpr std::string_view kTemplateViews =
    R"({"id":1,"sheet":1},{"id":2,"sheet":1,"type":"projection","parent":1})";

// Writes a template drawing with one sheet of this size, a parameter of this name, and views; version 1.
void WriteTemplate(const std::filesystem::path& folder, const std::string& name, const std::string& size,
                   std::string_view views = kTemplateViews);

// The folder of the plug-in's own template. It keeps what a test writes there.
std::filesystem::path TemplateFolder();

// Writes a format with one sheet of this size; version 1.
void WriteFormat(const std::filesystem::path& folder, const std::string& name, const std::string& size);

// The drawing of that name in memory; null: there is none.
sim::SimModel* DrawingOf(sim::SimHost& host, std::wstring_view name);

// Names of the files in a folder, in order.
std::vector<std::wstring> FilesIn(const std::filesystem::path& folder);

}  // namespace test
