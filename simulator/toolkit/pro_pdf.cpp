#include <ProPDF.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <string>

#include <windows.h>

#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/export_call.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace fs = std::filesystem;

namespace {

enum class ValueKind { kNone, kNumber, kTruth, kText };

struct PdfOption {
    const char* name = "";
    ValueKind kind = ValueKind::kNone;
    int least = 0;
    int most = 0;
};

constexpr int kMany = 1000;

// By option number.
constexpr std::array<PdfOption, 30> kPdfOptions = {{
    {"FONT_STROKE", ValueKind::kNumber, 0, 2},
    {"COLOR_DEPTH", ValueKind::kNumber, 0, 2},
    {"HIDDENLINE_MODE", ValueKind::kNumber, 0, kMany},
    {"SEARCHABLE_TEXT", ValueKind::kTruth, 0, 1},
    {"RASTER_DPI", ValueKind::kNumber, 100, 600},
    {"LAUNCH_VIEWER", ValueKind::kTruth, 0, 1},
    {"LAYER_MODE", ValueKind::kNumber, 0, kMany},
    {"PARAM_MODE", ValueKind::kNumber, 0, kMany},
    {"HYPERLINKS", ValueKind::kTruth, 0, 1},
    {"BOOKMARK_ZONES", ValueKind::kTruth, 0, 1},
    {"BOOKMARK_VIEWS", ValueKind::kTruth, 0, 1},
    {"BOOKMARK_SHEETS", ValueKind::kTruth, 0, 1},
    {"BOOKMARK_FLAG_NOTES", ValueKind::kTruth, 0, 1},
    {"TITLE", ValueKind::kText, 0, 0},
    {"AUTHOR", ValueKind::kText, 0, 0},
    {"SUBJECT", ValueKind::kText, 0, 0},
    {"KEYWORDS", ValueKind::kText, 0, 0},
    {"PASSWORD_TO_OPEN", ValueKind::kText, 0, 0},
    {"MASTER_PASSWORD", ValueKind::kText, 0, 0},
    {"RESTRICT_OPERATIONS", ValueKind::kTruth, 0, 1},
    {"ALLOW_PRINTING", ValueKind::kTruth, 0, 1},
    {"ALLOW_PRINTING_MODE", ValueKind::kNumber, 0, kMany},
    {"ALLOW_MODE", ValueKind::kNumber, 0, kMany},
    {"ALLOW_COPYING", ValueKind::kTruth, 0, 1},
    {"ALLOW_ACCESSIBILITY", ValueKind::kTruth, 0, 1},
    {"PENTABLE", ValueKind::kTruth, 0, 1},
    {"LINECAP", ValueKind::kNumber, 0, 2},
    {"LINEJOIN", ValueKind::kNumber, 0, 2},
    {"SHEETS", ValueKind::kNumber, 0, 1},
    {"SHEETS", ValueKind::kNumber, 0, 1},  // as the documents have it: SHEET_RANGE, a text
}};

ProError SetOption(Session& host, ProPDFOptions options, int type, int value, ValueKind kind) {
    PdfOptions* set = host.exportOptions.pdf.Find(host.report, options);
    if (set == nullptr) return PRO_TK_BAD_INPUTS;
    const bool isKnown = type >= 0 && static_cast<std::size_t>(type) < kPdfOptions.size() &&
                         kPdfOptions[static_cast<std::size_t>(type)].kind != ValueKind::kNone;
    if (!isKnown) {
        host.report.Violation("there is no PDF option " + std::to_string(type));
        return PRO_TK_BAD_INPUTS;
    }
    const PdfOption& option = kPdfOptions[static_cast<std::size_t>(type)];
    if (type == PRO_PDFOPT_SHEET_RANGE && host.strict.pdfSheetRangeIsText) return PRO_TK_INVALID_TYPE;
    if (option.kind != kind) {
        host.report.Violation("the PDF option " + std::string(option.name) + " has values of another kind");
        return PRO_TK_INVALID_TYPE;
    }
    if (value < option.least || value > option.most) {
        host.report.Violation("the PDF option " + std::string(option.name) + " does not take " +
                              std::to_string(value));
        return PRO_TK_BAD_INPUTS;
    }
    (*set)[type] = value;
    return PRO_TK_NO_ERROR;
}

// The host writes names in ASCII only. The folder that it works in may be called anything.
bool IsAsciiBelow(const fs::path& folder, std::wstring_view file) {
    const std::wstring start = UpperName(folder.wstring());
    if (UpperName(file.substr(0, start.size())) == start)
        file.remove_prefix(std::min(start.size(), file.size()));
    return std::ranges::all_of(file, [](wchar_t c) { return c < 0x80; });
}

// What both exports check before they start.
ProError CheckPdf(Session& host, ProMdl model, const wchar_t* output, const SimModel*& drawing,
                  fs::path& file) {
    const auto text = TextInput(host, output, PRO_PATH_SIZE);
    SimModel* found = FindModel(host, model);
    if (!text || text->empty() || found == nullptr || !IsWholePath(host, *text)) return PRO_TK_BAD_INPUTS;
    if (found->Kind() != ModelKind::kDrawing) return PRO_TK_INVALID_TYPE;
    file = fs::path(*text);
    if (UpperName(file.extension().wstring()) != L".PDF") {
        host.report.Violation("is given \"" + Utf8(*text) + "\", which has not the extension of a PDF file");
        return PRO_TK_BAD_INPUTS;
    }
    if (host.desk.ModelIn(host.desk.CurrentWindow()) != found) return PRO_TK_NOT_DISPLAYED;
    if (!IsAsciiBelow(host.models.WorkingDirectory(), *text)) return PRO_TK_BAD_INPUTS;
    drawing = found;
    return drawing->Sheets().empty() ? PRO_TK_GENERAL_ERROR : PRO_TK_NO_ERROR;
}

ProError WritePdf(Session& host, const SimModel& drawing, const fs::path& file, bool allSheets,
                  std::map<std::string, std::string> options) {
    ExportRecord record{"PDF", ExportLabel(drawing), {}, std::move(options)};
    const int first = allSheets ? 1 : drawing.CurrentSheet();
    const int last = allSheets ? static_cast<int>(drawing.Sheets().size()) : first;
    for (int sheet = first; sheet <= last; ++sheet) record.sheets.push_back(SheetOf(drawing, sheet));
    return WriteExport(host, file, ExportPdf(record, drawing), PRO_TK_INVALID_DIR);
}

int Value(const PdfOptions& options, int type, int otherwise) {
    const auto value = options.find(type);
    return value == options.end() ? otherwise : value->second;
}

// The profile's file: by its path, or by its name in the working directory, with or without extension.
std::optional<fs::path> FindProfile(Session& host, std::wstring_view profile) {
    fs::path file(profile);
    if (!file.is_absolute() && host.strict.bareProfileNameRefused) return std::nullopt;
    if (!file.has_extension()) file += L".dop";
    file = host.models.WorkingDirectory() / file;
    std::error_code error;
    return fs::exists(file, error) ? std::optional(file) : std::nullopt;
}

}  // namespace

ProError ProPDFoptionsAlloc(ProPDFOptions* options) {
    static const CallSite kSite("ProPDFoptionsAlloc", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {Out(options)}, [&](Session& host) -> ProError {
        if (options == nullptr) return PRO_TK_BAD_INPUTS;
        *options = static_cast<ProPDFOptions>(host.exportOptions.pdf.New(host.report));
        return PRO_TK_NO_ERROR;
    });
}

ProError ProPDFoptionsFree(ProPDFOptions options) {
    static const CallSite kSite("ProPDFoptionsFree", {PRO_TK_BAD_INPUTS}, true);
    return Traced(kSite, {options}, [&](Session& host) -> ProError {
        return host.exportOptions.pdf.Free(host.report, options) ? PRO_TK_NO_ERROR : PRO_TK_BAD_INPUTS;
    });
}

ProError ProPDFoptionsIntpropertySet(ProPDFOptions options, ProPDFOptionType type, int value) {
    static const CallSite kSite("ProPDFoptionsIntpropertySet", {PRO_TK_BAD_INPUTS, PRO_TK_INVALID_TYPE});
    return Traced(kSite, {options, type, value}, [&](Session& host) -> ProError {
        return SetOption(host, options, type, value, ValueKind::kNumber);
    });
}

ProError ProPDFoptionsBoolpropertySet(ProPDFOptions options, ProPDFOptionType type, ProBoolean value) {
    static const CallSite kSite("ProPDFoptionsBoolpropertySet", {PRO_TK_BAD_INPUTS, PRO_TK_INVALID_TYPE});
    return Traced(kSite, {options, type, value}, [&](Session& host) -> ProError {
        return SetOption(host, options, type, value, ValueKind::kTruth);
    });
}

ProError ProPDFExport(ProMdl model, ProPath output_file, ProPDFOptions options) {
    static const CallSite kSite("ProPDFExport", {PRO_TK_BAD_INPUTS, PRO_TK_INVALID_TYPE, PRO_TK_NOT_DISPLAYED,
                                                 PRO_TK_INVALID_DIR, PRO_TK_CANT_WRITE, PRO_TK_NO_LICENSE});
    return Traced(kSite, {model, output_file, options}, [&](Session& host) -> ProError {
        const PdfOptions* set = host.exportOptions.pdf.Find(host.report, options);
        if (set == nullptr) return PRO_TK_BAD_INPUTS;
        const SimModel* drawing = nullptr;
        fs::path file;
        ProError status = CheckPdf(host, model, output_file, drawing, file);
        if (status != PRO_TK_NO_ERROR) return status;

        std::map<std::string, std::string> named;
        for (const auto& [type, value] : *set)
            named[kPdfOptions[static_cast<std::size_t>(type)].name] = std::to_string(value);
        const int unset = host.strict.pdfHoldsAllSheets ? PRO_PRINT_ALL_SHEETS : PRO_PRINT_CURRENT_SHEET;
        const int sheets = Value(*set, PRO_PDFOPT_SHEETS, Value(*set, PRO_PDFOPT_SHEET_RANGE, unset));
        const bool all = sheets == PRO_PRINT_ALL_SHEETS;
        status = WritePdf(host, *drawing, file, all, std::move(named));
        if (status == PRO_TK_NO_ERROR && Value(*set, PRO_PDFOPT_LAUNCH_VIEWER, 1) != 0)
            host.user.started.push_back({L"open", file.wstring(), L"", SW_SHOWNORMAL});
        return status;
    });
}

ProError ProPDFWithProfileExport(ProMdl model, ProPath output_file, ProPath profile) {
    static const CallSite kSite(
        "ProPDFWithProfileExport",
        {PRO_TK_BAD_INPUTS, PRO_TK_INVALID_TYPE, PRO_TK_NOT_DISPLAYED, PRO_TK_INVALID_DIR, PRO_TK_CANT_WRITE,
         PRO_TK_NO_LICENSE, PRO_TK_E_NOT_FOUND, PRO_TK_CANT_OPEN});
    return Traced(kSite, {model, output_file, profile}, [&](Session& host) -> ProError {
        const auto name = TextInput(host, profile, PRO_PATH_SIZE);
        if (!name || name->empty()) return PRO_TK_BAD_INPUTS;
        const SimModel* drawing = nullptr;
        fs::path file;
        const ProError status = CheckPdf(host, model, output_file, drawing, file);
        if (status != PRO_TK_NO_ERROR) return status;

        const auto found = FindProfile(host, *name);
        if (!found) return PRO_TK_E_NOT_FOUND;
        std::ifstream stream(*found, std::ios::binary);
        const std::string text{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
        if (text.empty()) return PRO_TK_CANT_OPEN;
        const bool all = text.find("SHEETS CURRENT") == std::string::npos;
        return WritePdf(host, *drawing, file, all, {{"PROFILE", Utf8(found->filename().wstring())}});
    });
}
