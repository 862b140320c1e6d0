#include "simulator/export/export_file.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <system_error>

#include <nlohmann/json.hpp>

#include "simulator/cad/folder_index.h"
#include "simulator/export/pdf_document.h"
#include "simulator/report/utf8.h"

namespace sim {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

namespace {

constexpr std::string_view kKind = "hostsim export";
constexpr int kVersion = 1;

Json ToJson(const ExportRecord& record) {
    Json root;
    root["kind"] = kKind;
    root["version"] = kVersion;
    root["format"] = record.format;
    root["model"] = Utf8(record.model);
    for (const ExportedSheet& sheet : record.sheets) {
        Json entry = {{"number", sheet.number}, {"size", Utf8(sheet.size)}};
        if (!sheet.space.empty()) entry["space"] = sheet.space;
        root["sheets"].push_back(std::move(entry));
    }
    for (const auto& [name, value] : record.options) root["options"][name] = value;
    return root;
}

// Throws what the library throws when an entry is missing or of another type.
ExportRecord FromJson(const Json& root) {
    ExportRecord record;
    record.format = root.at("format").get<std::string>();
    record.model = Wide(root.at("model").get<std::string>());
    for (const Json& entry : root.value("sheets", Json::array()))
        record.sheets.push_back({entry.at("number").get<int>(), Wide(entry.at("size").get<std::string>()),
                                 entry.value("space", std::string())});
    const Json options = root.value("options", Json::object());
    for (const auto& [name, value] : options.items()) record.options[name] = value.get<std::string>();
    return record;
}

}  // namespace

std::wstring ExportLabel(const SimModel& model) {
    return model.Name() + L"." + std::wstring(ExtensionOf(model.Kind()));
}

std::string ExportText(const ExportRecord& record) {
    return ToJson(record).dump(2) + "\n";
}

std::optional<ExportRecord> ReadExport(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (bytes.starts_with("%PDF")) {
        const auto record = PdfRemark(bytes);
        if (!record) return std::nullopt;
        bytes = *record;
    }
    // Most other files are sorted out without reading them as JSON.
    if (bytes.find(kKind) == std::string::npos) return std::nullopt;
    try {
        const Json root = Json::parse(bytes);
        if (root.at("kind") != kKind || root.at("version") != kVersion) return std::nullopt;
        return FromJson(root);
    } catch (const Json::exception&) {
        return std::nullopt;
    }
}

std::vector<ExportedFile> FindExports(const fs::path& folder) {
    std::vector<ExportedFile> found;
    std::error_code error;
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (!entry->is_regular_file(error)) continue;
        if (auto record = ReadExport(entry->path()))
            found.push_back({entry->path().lexically_relative(folder), std::move(*record)});
    }
    std::ranges::sort(found, {}, [](const ExportedFile& file) { return file.path.wstring(); });
    return found;
}

// ---- PDF

namespace {

struct Size {
    double width, height;  // mm
};

// Sheets lie on their long side, the smallest one stands.
Size SheetSize(std::wstring_view name) {
    constexpr std::pair<std::wstring_view, Size> kSizes[] = {
        {L"A0", {1189, 841}},   {L"A1", {841, 594}},     {L"A2", {594, 420}},     {L"A3", {420, 297}},
        {L"A4", {210, 297}},    {L"A", {279.4, 215.9}},  {L"B", {431.8, 279.4}},  {L"C", {558.8, 431.8}},
        {L"D", {863.6, 558.8}}, {L"E", {1117.6, 863.6}}, {L"F", {1016.0, 711.2}},
    };
    const std::wstring wanted = UpperName(name);
    for (const auto& [known, size] : kSizes)
        if (wanted == known) return size;
    return {420, 297};
}

// The three inks of a sheet in colour, in grey, or all black.
struct Inks {
    PdfColor frame, outline, centre;
};

Inks InksFor(const ExportRecord& record) {
    const auto depth = record.options.find("COLOR_DEPTH");
    if (depth != record.options.end() && depth->second == "2") return {};
    if (depth != record.options.end() && depth->second == "1")
        return {{0.2, 0.2, 0.2}, {0.35, 0.35, 0.35}, {0.6, 0.6, 0.6}};
    return {{0, 0, 0.5}, {0, 0.35, 0.15}, {0.8, 0.1, 0.1}};
}

constexpr double kMargin = 10;
constexpr double kBindingMargin = 25;
constexpr double kTitleWidth = 120;
constexpr double kTitleHeight = 40;

class SheetPage {
public:
    SheetPage(const SimModel& drawing, const ExportedSheet& sheet, const Inks& inks)
        : drawing_(drawing),
          sheet_(sheet),
          inks_(inks),
          size_(SheetSize(sheet.size)),
          page_(size_.width, size_.height) {}

    PdfPage Draw() {
        page_.SetColor(inks_.frame);
        page_.SetWidth(0.25);
        page_.Rectangle(0.2, 0.2, size_.width - 0.4, size_.height - 0.4);
        page_.SetWidth(0.7);
        page_.Rectangle(kBindingMargin, kMargin, size_.width - kBindingMargin - kMargin,
                        size_.height - 2 * kMargin);
        DrawTitleBlock();
        DrawViews();
        return std::move(page_);
    }

private:
    void DrawTitleBlock() {
        const double x = size_.width - kMargin - kTitleWidth;
        const double y = kMargin;
        page_.Rectangle(x, y, kTitleWidth, kTitleHeight);
        page_.SetWidth(0.25);
        page_.Line(x, y + 12, x + kTitleWidth, y + 12);
        page_.Line(x, y + 26, x + kTitleWidth, y + 26);
        page_.SetColor({});
        page_.Text(x + 3, y + 30, 6, drawing_.Name());
        const DrawingSheet& sheet = drawing_.Sheets()[static_cast<std::size_t>(sheet_.number) - 1];
        const std::wstring number =
            std::to_wstring(sheet_.number) + L"/" + std::to_wstring(drawing_.Sheets().size());
        page_.Text(x + 3, y + 20, 3.5, sheet_.size + L"   " + number + L"   " + ScaleText(sheet.scale));
        page_.Text(x + 3, y + 14, 3.5, sheet.name);
        page_.Text(x + kTitleWidth / 2, y + 14, 3.5, sheet.format);
        DrawParameters(x, y);
    }

    static std::wstring ScaleText(double scale) {
        char text[32];
        if (scale < 1)
            std::snprintf(text, sizeof text, "1:%g", 1 / scale);
        else
            std::snprintf(text, sizeof text, "%g:1", scale);
        return Wide(text);
    }

    // The first four, in two columns.
    void DrawParameters(double x, double y) {
        std::size_t count = 0;
        for (const ModelParameter& parameter : drawing_.Parameters()) {
            if (count == 4) break;
            const double column = count % 2 == 0 ? 3 : kTitleWidth / 2;
            page_.Text(x + column, y + (count < 2 ? 7 : 2), 3.5,
                       parameter.name + L": " + drawing_.Parameter(parameter.name));
            ++count;
        }
    }

    // Side by side above the title block, each a box with its centre lines.
    void DrawViews() {
        std::vector<const DrawingView*> views;
        for (const DrawingView& view : drawing_.Views())
            if (view.sheet == sheet_.number) views.push_back(&view);
        const double left = kBindingMargin + 8;
        const double bottom = kMargin + kTitleHeight + 15;
        const double step =
            (size_.width - kMargin - 8 - left) / static_cast<double>(std::max<std::size_t>(views.size(), 1));
        const double height = size_.height - kMargin - 12 - bottom;
        for (std::size_t i = 0; i < views.size(); ++i)
            DrawView(*views[i], left + step * static_cast<double>(i), bottom, step - 8, height);
    }

    void DrawView(const DrawingView& view, double x, double y, double width, double height) {
        const double boxHeight = std::min(height, width * 0.75);
        const double boxY = y + (height - boxHeight) / 2;
        page_.SetColor(inks_.outline);
        page_.SetWidth(0.5);
        page_.Rectangle(x, boxY, width, boxHeight);
        page_.Rectangle(x + width * 0.2, boxY + boxHeight * 0.25, width * 0.6, boxHeight * 0.5);
        page_.SetColor(inks_.centre);
        page_.SetWidth(0.18);
        page_.Line(x - 3, boxY + boxHeight / 2, x + width + 3, boxY + boxHeight / 2);
        page_.Line(x + width / 2, boxY - 3, x + width / 2, boxY + boxHeight + 3);
        page_.SetColor({});
        const std::wstring model =
            view.model != nullptr ? ExportLabel(*view.model) : L"? " + view.missingModel;
        page_.Text(x, boxY - 8, 3.5, view.name);
        page_.Text(x, boxY - 13, 3, model);
    }

    const SimModel& drawing_;
    const ExportedSheet& sheet_;
    Inks inks_;
    Size size_;
    PdfPage page_;
};

}  // namespace

std::string ExportPdf(const ExportRecord& record, const SimModel& drawing) {
    PdfDocument document(drawing.Name(), ToJson(record).dump());
    const Inks inks = InksFor(record);
    for (const ExportedSheet& sheet : record.sheets) document.Add(SheetPage(drawing, sheet, inks).Draw());
    return document.Bytes();
}

}  // namespace sim
