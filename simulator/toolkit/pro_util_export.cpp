// The export functions of ProUtil.h.

#include <ProUtil.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/export_call.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace fs = std::filesystem;

namespace {

bool HasSheets(const SimModel& drawing, const std::vector<ExportedSheet>& sheets) {
    return std::ranges::all_of(sheets, [&drawing](const ExportedSheet& sheet) {
        return sheet.number >= 1 && static_cast<std::size_t>(sheet.number) <= drawing.Sheets().size();
    });
}

// The sheets that the file will hold, sizes still open.
std::vector<ExportedSheet> ChosenSheets(const SimModel& drawing, const SheetChoice& choice) {
    std::vector<ExportedSheet> sheets;
    const auto take = [&sheets](int number, const char* space) { sheets.push_back({number, {}, space}); };
    switch (choice.option) {
        case PRO2DEXPORT_CURRENT_TO_MODEL_SPACE:
            take(drawing.CurrentSheet(), "model");
            break;
        case PRO2DEXPORT_CURRENT_TO_PAPER_SPACE:
            take(drawing.CurrentSheet(), "paper");
            break;
        case PRO2DEXPORT_ALL:
            for (std::size_t i = 1; i <= drawing.Sheets().size(); ++i) take(static_cast<int>(i), "paper");
            break;
        case PRO2DEXPORT_SELECTED:
            if (choice.modelSpaceSheet != 0) take(choice.modelSpaceSheet, "model");
            for (const int sheet : choice.paperSpaceSheets) take(sheet, "paper");
            break;
    }
    return sheets;
}

// The version that the option names, for the formats that have one.
void AddFormatVersion(const Session& host, const wchar_t* option, ExportRecord& record) {
    const auto values = host.configOptions.find(option);
    if (values != host.configOptions.end() && !values->second.empty())
        record.options["VERSION"] = Utf8(values->second.front());
}

SheetChoice* FindChoice(Session& host, Pro2dExportdata data) {
    return host.exportOptions.sheetChoices.Find(host.report, data);
}

ProError Export2d(Session& host, ProImportExportFile type, std::wstring_view file, const SimModel& drawing,
                  const SheetChoice& choice) {
    ExportRecord record{type == PRO_DWG_FILE ? "DWG" : "DXF", ExportLabel(drawing), {}, {}};
    record.sheets = ChosenSheets(drawing, choice);
    if (record.sheets.empty() || !HasSheets(drawing, record.sheets)) {
        host.report.Violation("is to export no sheet, or one that " + Utf8(drawing.Name()) +
                              " does not have");
        return PRO_TK_BAD_INPUTS;
    }
    for (ExportedSheet& sheet : record.sheets) sheet = SheetOf(drawing, sheet.number, sheet.space);
    AddFormatVersion(host, type == PRO_DWG_FILE ? L"DWG_EXPORT_FORMAT" : L"DXF_EXPORT_FORMAT", record);
    return WriteExport(host, fs::path(file), ExportText(record), PRO_TK_CANT_WRITE);
}

}  // namespace

// ---- 2D export data

ProError Pro2dExportdataAlloc(Pro2dExportdata* export_data) {
    static const CallSite kSite("Pro2dExportdataAlloc", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {Out(export_data)}, [&](Session& host) -> ProError {
        if (export_data == nullptr) return PRO_TK_BAD_INPUTS;
        *export_data = static_cast<Pro2dExportdata>(host.exportOptions.sheetChoices.New(host.report));
        return PRO_TK_NO_ERROR;
    });
}

ProError Pro2dExportdataFree(Pro2dExportdata export_data) {
    static const CallSite kSite("Pro2dExportdataFree", {PRO_TK_BAD_INPUTS}, true);
    return Traced(kSite, {export_data}, [&](Session& host) -> ProError {
        return host.exportOptions.sheetChoices.Free(host.report, export_data) ? PRO_TK_NO_ERROR
                                                                              : PRO_TK_BAD_INPUTS;
    });
}

ProError Pro2dExportdataSheetoptionSet(Pro2dExportdata export_data, Pro2dExportSheetOption sheet_option) {
    static const CallSite kSite("Pro2dExportdataSheetoptionSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {export_data, sheet_option}, [&](Session& host) -> ProError {
        SheetChoice* choice = FindChoice(host, export_data);
        const bool isKnown =
            sheet_option >= PRO2DEXPORT_CURRENT_TO_MODEL_SPACE && sheet_option <= PRO2DEXPORT_SELECTED;
        if (!isKnown) host.report.Violation("there is no sheet option " + std::to_string(sheet_option));
        if (choice == nullptr || !isKnown) return PRO_TK_BAD_INPUTS;
        choice->option = sheet_option;
        return PRO_TK_NO_ERROR;
    });
}

ProError Pro2dExportdataModelspacesheetSet(Pro2dExportdata export_data, int model_space_sheet) {
    static const CallSite kSite("Pro2dExportdataModelspacesheetSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {export_data, model_space_sheet}, [&](Session& host) -> ProError {
        SheetChoice* choice = FindChoice(host, export_data);
        if (choice == nullptr || model_space_sheet < 1) return PRO_TK_BAD_INPUTS;
        choice->modelSpaceSheet = model_space_sheet;
        return PRO_TK_NO_ERROR;
    });
}

ProError Pro2dExportdataSheetsSet(Pro2dExportdata export_data, int* sheets) {
    static const CallSite kSite("Pro2dExportdataSheetsSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {export_data, Place(sheets)}, [&](Session& host) -> ProError {
        SheetChoice* choice = FindChoice(host, export_data);
        const HostBlock* array = host.memory.Find({BlockKind::kArray}, sheets);
        if (choice == nullptr || array == nullptr) return PRO_TK_BAD_INPUTS;
        if (array->elementSize != sizeof(int)) {
            host.report.Violation("is given an array of something else than sheet numbers");
            return PRO_TK_BAD_INPUTS;
        }
        choice->paperSpaceSheets.assign(sheets, sheets + array->count);
        return PRO_TK_NO_ERROR;
    });
}

// ---- Exports

ProError Pro2dExport(ProImportExportFile file_type, ProPath filename, ProMdl model, Pro2dExportdata data) {
    static const CallSite kSite("Pro2dExport", {PRO_TK_BAD_INPUTS, PRO_TK_INVALID_TYPE, PRO_TK_INVALID_ITEM,
                                                PRO_TK_CANT_WRITE, PRO_TK_NO_LICENSE, PRO_TK_UNSUPPORTED});
    return Traced(kSite, {file_type, filename, model, data}, [&](Session& host) -> ProError {
        const auto file = TextInput(host, filename, PRO_PATH_SIZE);
        const SimModel* drawing = FindModel(host, model);
        const SheetChoice* choice = FindChoice(host, data);
        if (!file || file->empty() || drawing == nullptr || (data != nullptr && choice == nullptr))
            return PRO_TK_BAD_INPUTS;
        if (file_type != PRO_DWG_FILE && file_type != PRO_DXF_FILE) return PRO_TK_INVALID_TYPE;
        if (drawing->Kind() != ModelKind::kDrawing) return PRO_TK_INVALID_ITEM;
        if (!IsWholePath(host, *file)) return PRO_TK_BAD_INPUTS;
        return Export2d(host, file_type, *file, *drawing, choice == nullptr ? SheetChoice() : *choice);
    });
}

ProError ProOutputFileMdlnameWrite(ProMdl model, ProMdlFileName name, ProImportExportFile file_type,
                                   ProAppData arg1, ProAppData arg2, ProAppData arg3, ProAppData arg4) {
    static const CallSite kSite("ProOutputFileMdlnameWrite",
                                {PRO_TK_BAD_INPUTS, PRO_TK_INVALID_TYPE, PRO_TK_CANT_WRITE});
    return Traced(kSite, {model, name, file_type, arg1, arg2, arg3, arg4}, [&](Session& host) -> ProError {
        const auto text = TextInput(host, name, PRO_FILE_MDLNAME_SIZE);
        const SimModel* solid = FindModel(host, model);
        if (!text || solid == nullptr) return PRO_TK_BAD_INPUTS;
        if (file_type != PRO_STEP_FILE && file_type != PRO_IGES_3D_FILE) return PRO_TK_INVALID_TYPE;
        if (solid->Kind() != ModelKind::kPart && solid->Kind() != ModelKind::kAssembly)
            return PRO_TK_INVALID_TYPE;
        const bool isBare = arg1 == nullptr && arg2 == nullptr && arg3 == nullptr && arg4 == nullptr;
        const fs::path file(*text);
        const bool hasPath = file.has_parent_path() && host.strict.outputPathRefused;
        if (!isBare || hasPath || !file.has_extension() || !file.has_stem()) {
            host.report.Violation("is given \"" + Utf8(*text) + "\" and arguments for it that do not fit");
            return PRO_TK_BAD_INPUTS;
        }
        const ExportRecord record{file_type == PRO_STEP_FILE ? "STEP" : "IGES", ExportLabel(*solid), {}, {}};
        return WriteExport(host, host.models.WorkingDirectory() / file, ExportText(record),
                           PRO_TK_CANT_WRITE);
    });
}
