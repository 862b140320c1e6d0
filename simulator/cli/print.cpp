#include "simulator/cli/print.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

#include "simulator/layout/picture.h"
#include "simulator/report/utf8.h"
#include "simulator/windows/plugin_heap.h"

namespace sim::cli {

namespace {

const char* AccessText(uiCmdAccessState state) {
    switch (state) {
        case ACCESS_AVAILABLE:
            return "available";
        case ACCESS_INVISIBLE:
            return "hidden";
        case ACCESS_REMOVE:
            return "removed";
        default:
            return "greyed";
    }
}

std::string Visible(const std::wstring& text) {
    std::string line = Utf8(text);
    for (std::size_t at = 0; (at = line.find_first_of("\t\n\r", at)) != std::string::npos; at += 2)
        line.replace(at, 1, line[at] == '\t' ? "\\t" : line[at] == '\n' ? "\\n" : "\\r");
    return line;
}

std::string StateText(const Feature& feature) {
    std::string text;
    if (feature.component == nullptr) text += "  missing";
    if (feature.status != 0) text += "  suppressed";
    if (feature.isHidden) text += "  hidden";
    if (!feature.isVisible) text += "  internal";
    return text;
}

// "  see-through 70 %"; empty for what hides what is behind it.
std::string SeeThroughText(const std::optional<Look>& look) {
    if (!look || look->transparency == 0) return {};
    return "  see-through " + std::to_string(std::lround(100 * look->transparency)) + " %";
}

const char* SubtypeText(ModelSubtype subtype) {
    switch (subtype) {
        case ModelSubtype::kSheetmetal:
            return "  sheet metal";
        case ModelSubtype::kSkeleton:
            return "  skeleton";
        case ModelSubtype::kMould:
            return "  mould";
        default:
            return "";
    }
}

std::string CellText(const CellValue& value) {
    char number[32];
    switch (value.kind) {
        case CellKind::kNumber:
            std::snprintf(number, sizeof number, "%.15g", value.number);
            return number;
        case CellKind::kTruth:
            return value.number == 0 ? "FALSE" : "TRUE";
        default:
            return Visible(value.text);
    }
}

struct TreePrint {
    const SimModel& top;
    int levels;
    bool withIds;
    std::vector<const SimModel*> above;
    std::vector<int> path;  // of component feature ids from the top down
};

// Of a component: its own look in this place, else that of its model.
std::string SeeThroughText(const Feature& feature, const TreePrint& print) {
    const auto own = print.top.occurrenceLooks.find(print.path);
    if (own != print.top.occurrenceLooks.end()) return SeeThroughText(own->second);
    return feature.component == nullptr ? "" : SeeThroughText(feature.component->look);
}

void PrintComponents(const SimModel& model, int level, TreePrint& print) {
    if (level > print.levels) return;
    print.above.push_back(&model);
    for (const Feature& feature : model.Features()) {
        if (feature.type != kComponentType) continue;
        const std::string id = print.withIds ? std::to_string(feature.id) + "  " : std::string();
        const std::string name =
            feature.component == nullptr ? Utf8(feature.missingName) : FileLabel(*feature.component);
        print.path.push_back(feature.id);
        std::printf("%*s%s%s%s%s\n", 2 * level, "", id.c_str(), name.c_str(), StateText(feature).c_str(),
                    SeeThroughText(feature, print).c_str());
        const bool contained = std::ranges::find(print.above, feature.component) != print.above.end();
        if (feature.component != nullptr && !contained) PrintComponents(*feature.component, level + 1, print);
        print.path.pop_back();
    }
    print.above.pop_back();
}

std::string ShownIn(const DrawingView& view) {
    if (view.model != nullptr) return FileLabel(*view.model);
    return view.missingModel.empty() ? "any model" : Utf8(UpperName(view.missingModel)) + "  missing";
}

// Empty for a view without.
std::string OwnScale(const DrawingView& view) {
    if (!view.scale) return {};
    char text[48];
    std::snprintf(text, sizeof text, "  own scale %g", *view.scale);
    return text;
}

// Each with the views on it.
void PrintSheets(const SimModel& model) {
    if (!model.Sheets().empty()) std::printf("sheets\n");
    int number = 0;
    for (const DrawingSheet& sheet : model.Sheets()) {
        ++number;
        std::printf("  %d  %s  scale %g%s%s%s\n", number, Utf8(sheet.size).c_str(), sheet.scale,
                    sheet.name.empty() ? "" : ("  " + Utf8(sheet.name)).c_str(),
                    sheet.format.empty() ? "" : ("  format " + Utf8(sheet.format)).c_str(),
                    number == model.CurrentSheet() && model.Sheets().size() > 1 ? "  (current)" : "");
        for (const DrawingView& view : model.Views()) {
            if (view.sheet != number) continue;
            std::printf("       %s%s%s%s\n", Utf8(view.name).c_str(), view.name.empty() ? "" : "  ",
                        ShownIn(view).c_str(), OwnScale(view).c_str());
        }
    }
}

// Of a model with a colour of its own.
void PrintColour(const SimModel& model) {
    if (!model.look || model.look->colour == Look().colour) return;
    const auto& [red, green, blue] = model.look->colour;
    std::printf("colour %ld,%ld,%ld\n", std::lround(255 * red), std::lround(255 * green),
                std::lround(255 * blue));
}

// Relations, and whatever is not as in a new model.
void PrintData(const SimModel& model) {
    for (const auto& [kind, title] : {std::pair(RelationKind::kOrdinary, "relations"),
                                      std::pair(RelationKind::kPost, "relations after regeneration")}) {
        if (!model.Relations(kind).exists) continue;
        std::printf("%s\n", title);
        for (const std::wstring& line : model.Relations(kind).lines)
            std::printf("  %s\n", Visible(line).c_str());
    }
    if (model.PrincipalUnits() != StandardUnitSystems()[kFirstUnitSystem])
        std::printf("units %s\n", Utf8(model.PrincipalUnits().name).c_str());
    if (!model.CurrentMaterial().empty()) std::printf("material %s\n", Utf8(model.CurrentMaterial()).c_str());
    if (!model.BendTable().empty()) std::printf("bend table %s\n", Utf8(model.BendTable()).c_str());
    PrintColour(model);
    if (!model.savedViews.empty()) std::printf("saved views\n ");
    for (const auto& [key, view] : model.savedViews) std::printf(" %s", Utf8(view.name).c_str());
    if (!model.savedViews.empty()) std::printf("\n");
    if (!model.Representations().empty()) std::printf("simplified representations\n");
    for (const Representation& representation : model.Representations())
        std::printf("  %s  %s %zu\n", Utf8(representation.name).c_str(),
                    representation.usual == RepAction::kInclude ? "leaves out" : "keeps only",
                    representation.items.size());
}

}  // namespace

std::string FileLabel(const SimModel& model) {
    std::wstring extension(ExtensionOf(model.Kind()));
    return Utf8(UpperName(model.Name() + L"." + extension));
}

void PrintMenu(Session& session) {
    std::size_t widest = 0;
    for (const MenuRow& row : session.screen.MenuRows()) widest = std::max(widest, row.command.size());
    int number = 0;
    for (const MenuRow& row : session.screen.MenuRows())
        std::printf("%2d  %-*s  %-9s  %s  |  %s\n", ++number, static_cast<int>(widest), row.command.c_str(),
                    AccessText(row.access), Utf8(row.label).c_str(), Utf8(row.help).c_str());
}

void PrintModel(const SimModel& model, int levels, bool withIds) {
    std::printf("%s%s%s%s\n", FileLabel(model).c_str(), SubtypeText(model.Subtype()),
                model.IsReadOnly() ? "  read-only" : "", SeeThroughText(model.look).c_str());
    if (!model.Parameters().empty()) std::printf("parameters\n");
    for (const ModelParameter& parameter : model.Parameters())
        std::printf("  %s = %s%s%s\n", Utf8(parameter.name).c_str(),
                    Utf8(model.Parameter(parameter.name)).c_str(),
                    parameter.relationDriven ? "  (relation)" : "", parameter.locked ? "  (locked)" : "");
    PrintData(model);
    PrintSheets(model);
    if (model.MfgAssembly() != nullptr) std::printf("assembly %s\n", FileLabel(*model.MfgAssembly()).c_str());
    if (model.Features().empty()) return;
    std::printf("components\n");
    TreePrint print{model, levels, withIds, {}, {}};
    PrintComponents(model, 1, print);
}

void PrintItems(const SimModel& model) {
    std::string items;
    for (const Feature& feature : model.Features())
        if (feature.type != kComponentType)
            items += "  feature " + std::to_string(feature.id) + "  type " + std::to_string(feature.type) +
                     (feature.name.empty() ? "" : "  " + Utf8(feature.name)) +
                     (feature.reference == nullptr ? "" : "  of " + FileLabel(*feature.reference)) + "\n";
    for (const auto& surface : model.Surfaces())
        items += "  surface " + std::to_string(surface->id) + SeeThroughText(surface->looks.front()) + "\n";
    for (const CoordinateSystem& system : model.CoordinateSystems())
        items += "  csys " + std::to_string(system.id) + "  " + Utf8(system.name) + "\n";
    for (std::size_t i = 0; i < model.Dimensions().size(); ++i)
        items += "  dimension " + std::to_string(i + 1) + "  " + Utf8(model.Dimensions()[i].symbol) + "\n";
    if (!items.empty()) std::printf("items\n%s", items.c_str());
}

void PrintExports(const std::vector<ExportedFile>& files) {
    for (const ExportedFile& file : files) {
        std::string sheets;
        for (const ExportedSheet& sheet : file.record.sheets) {
            sheets += (sheets.empty() ? "  " : ", ") + std::to_string(sheet.number) + " " + Utf8(sheet.size);
            if (!sheet.space.empty()) sheets += " " + sheet.space;
        }
        std::string options;
        for (const auto& [name, value] : file.record.options) options += "  " + name + "=" + value;
        std::printf("%s: %s of %s%s%s\n", Utf8(file.path.wstring()).c_str(), file.record.format.c_str(),
                    Utf8(file.record.model).c_str(), sheets.c_str(), options.c_str());
    }
    std::printf("%zu exported files\n", files.size());
}

void PrintSheet(const Sheet& sheet) {
    int columns = 0;
    for (int row = 1; row <= sheet.LastRow(); ++row) columns = std::max(columns, sheet.LastColumn(row));
    std::vector<std::vector<std::string>> lines;
    for (int row = 1; row <= sheet.LastRow(); ++row) {
        lines.emplace_back();
        for (int column = 1; column <= columns; ++column)
            lines.back().push_back(CellText(sheet.Value(row, column)));
    }
    AlignColumns(lines);
    for (const std::vector<std::string>& fields : lines) {
        std::string line;
        for (const std::string& field : fields) line += field + " | ";
        line.resize(line.size() - std::min<std::size_t>(line.size(), 2));
        std::printf("%s\n", line.substr(0, line.find_last_not_of(' ') + 1).c_str());
    }
}

void PrintTrace(const Report& report) {
    for (const CallRecord& call : report.Trace())
        std::printf("%s(%s) -> %d\n", call.site->name, call.arguments.c_str(), static_cast<int>(call.status));
}

void PrintProfile(const Report& report) {
    std::printf("host calls %lld\n", report.CallCount());
    for (const auto& [function, count] : report.CallCounts())
        std::printf("%10lld  %s\n", count, function.c_str());
    const PluginHeapFigures heap = PluginHeap();
    std::printf("time       %.3f ms in the plug-in, %.3f ms in the host\n", 1e3 * report.PluginSeconds(),
                1e3 * report.HostSeconds());
    std::printf("heap       %lld allocations, peak %lld bytes\n", heap.allocations, heap.peakBytes);
}

void PrintSeen(const User& user) {
    for (const std::wstring& line : user.messageArea) std::printf("message area   %s\n", Utf8(line).c_str());
    for (const ShownBox& box : user.boxes)
        std::printf("message box    [%s] %s\n", Utf8(box.caption).c_str(), Visible(box.text).c_str());
    for (const StartedProgram& program : user.started)
        std::printf("started        %s %s %s\n", Utf8(program.verb).c_str(), Utf8(program.file).c_str(),
                    Utf8(program.parameters).c_str());
    for (const std::wstring& macro : user.macros) std::printf("macro          %s\n", Visible(macro).c_str());
}

}  // namespace sim::cli
