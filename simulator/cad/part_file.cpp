#include "simulator/cad/part_file.h"

#include <string>

#include "simulator/cad/json_file.h"
#include "simulator/cad/json_node.h"
#include "simulator/report/utf8.h"

namespace sim {

namespace {

// Reads the keys that both kinds have, and leaves the others to `read`.
template <typename Read>
void ReadPartFile(const std::filesystem::path& file, std::string_view format, Read read) {
    const std::string label = Utf8(file.filename().wstring());
    const Json json = ReadJsonFile(file, label);
    const Node node(json, label);
    Entries root(node);
    root.Required("format", [&](const Node& text) {
        if (text.Text() != format) text.Fail("\"" + std::string(format) + "\"");
    });
    root.Required("version", [](const Node& version) { version.Integer(kFormatVersion, kFormatVersion); });
    read(root);
    root.Close();
}

}  // namespace

Material ReadMaterialFile(const std::filesystem::path& file, std::wstring_view name) {
    Material material{std::wstring(name), {}};
    ReadPartFile(file, "hostsim material", [&](Entries& root) {
        root.Optional("bendTable",
                      [&](const Node& table) { material.bendTable = table.WideText(kLongestName); });
    });
    return material;
}

void ReadBendTableFile(const std::filesystem::path& file) {
    ReadPartFile(file, "hostsim bend table", [](Entries&) {});
}

}  // namespace sim
