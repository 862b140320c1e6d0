#include "support/drawings.h"

#include <algorithm>
#include <vector>

#include "support/plugin_home.h"

namespace test {

namespace fs = std::filesystem;

namespace {

void WriteModel(const fs::path& file, const std::string& kind, const std::string& name,
                const std::string& content) {
    fs::create_directories(file.parent_path());
    WriteBytes(file, R"({"format":"hostsim model","version":1,"kind":")" + kind + R"(","name":")" + name +
                         R"(",)" + content + "}");
}

}  // namespace

void WriteTemplate(const fs::path& folder, const std::string& name, const std::string& size,
                   std::string_view views) {
    WriteModel(folder / (name + ".drw.1"), "drawing", name,
               R"("parameters":[{"name":"TEMPLATE","type":"string","value":")" + name +
                   R"("}],"sheets":[{"size":")" + size + R"("}],"views":[)" + std::string(views) + "]");
}

fs::path TemplateFolder() {
    return PluginHome() / "tp";
}

void WriteFormat(const fs::path& folder, const std::string& name, const std::string& size) {
    WriteModel(folder / (name + ".frm.1"), "format", name, R"("sheets":[{"size":")" + size + R"("}])");
}

sim::SimModel* DrawingOf(sim::SimHost& host, std::wstring_view name) {
    return host.State().models.Find(name, sim::ModelKind::kDrawing);
}

std::vector<std::wstring> FilesIn(const fs::path& folder) {
    std::vector<std::wstring> names;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        if (entry.is_regular_file()) names.push_back(entry.path().filename().wstring());
    std::ranges::sort(names);
    return names;
}

}  // namespace test
