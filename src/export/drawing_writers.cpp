// The writers, on the toolkit's export calls.

#include "export/drawing_writers.h"

#include <numeric>
#include <span>
#include <vector>

#include <ProPDF.h>

#include <windows.h>

#include "base/file.h"
#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"
#include "base/working_directory.h"
#include "export/model_output.h"

namespace kv {

static constexpr wchar_t kProfile[] = L"kvdop";
static constexpr wchar_t kProfileExtension[] = L".dop";

static void DrawingDataFree(Pro2dExportdata* data) {
    Pro2dExportdataFree(*data);
}

using DrawingData = HostHandle<Pro2dExportdata, DrawingDataFree>;

static ProError DrawingDataMake(const SheetFile& file, DrawingData& data);
static ProError PaperSheetsSet(Pro2dExportdata data, int count);
static ProError PdfWrite(const SheetFile& file, const std::wstring& path);
static ProError PdfByProfileWrite(ProMdl drawing, ProPath target);

ProError SheetDrawingWrite(const SheetFile& file) {
    ProPath path;
    DrawingData data;
    ProError status = CopyText(file.scratch.folder + file.scratch.name + file.format.extension, path);
    if (!Failed(status)) status = DrawingDataMake(file, data);
    return Failed(status) ? status : Pro2dExport(file.format.type, path, file.task.drawing, data.Get());
}

ProError CurrentSheetDrawingWrite(const SheetFile& file) {
    ProPath path;
    const ProError status = CopyText(file.scratch.folder + file.scratch.name, path);
    return Failed(status) ? status : Pro2dExport(file.format.type, path, file.task.drawing, nullptr);
}

ProError SheetPdfWrite(const SheetFile& file) {
    const std::wstring target = file.scratch.folder + file.scratch.name + file.format.extension;
    const std::wstring& detour = file.run.settings.pdfDetour;
    if (detour.empty()) return PdfWrite(file, target);

    ProError status = PdfWrite(file, detour);
    if (!Failed(status)) status = FileMove(detour, target);
    if (Failed(status)) DeleteFileW(detour.c_str());
    return status;
}

ProError ShownModelWrite(const SheetFile& file) {
    if (file.task.shown == nullptr) return PRO_TK_E_NOT_FOUND;
    ProError status = PRO_TK_NO_ERROR;
    const auto goBack = UseWorkingDirectory(file.scratch.folder, status);
    return Failed(status)
               ? status
               : ModelWrite(file.task.shown, file.format.type, file.scratch.name + file.format.extension);
}

// A sheet that is named neither for model space nor for paper space is not exported at all.
static ProError DrawingDataMake(const SheetFile& file, DrawingData& data) {
    const bool all = file.sheet == kAllSheets;
    const int modelSheet = all ? file.task.sheets : file.sheet;
    ProError status = data.Received(Pro2dExportdataAlloc(data.Receive()));
    if (!Failed(status)) status = Pro2dExportdataSheetoptionSet(data.Get(), PRO2DEXPORT_SELECTED);
    if (!Failed(status)) status = Pro2dExportdataModelspacesheetSet(data.Get(), modelSheet);
    if (!Failed(status) && all && file.task.sheets > 1)
        status = PaperSheetsSet(data.Get(), file.task.sheets - 1);
    return status;
}

// Names the sheets from 1 to `count` for paper space.
static ProError PaperSheetsSet(Pro2dExportdata data, int count) {
    std::vector<int> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 1);
    HostArray<int> sheets;
    ProError status = ArrayAlloc(sheets);
    if (!Failed(status)) status = ArrayAppend(sheets, std::span(numbers));
    return Failed(status) ? status : Pro2dExportdataSheetsSet(data, sheets.Get());
}

static ProError PdfWrite(const SheetFile& file, const std::wstring& path) {
    ProPath target;
    ProError status = CopyText(path, target);
    if (Failed(status)) return status;
    const PdfChoice& choice = file.run.settings.pdf;
    // A profile takes the place of all options.
    if (choice.useProfile) return PdfByProfileWrite(file.task.drawing, target);
    const bool bySheet = file.sheet != kAllSheets;
    PdfOptions& options = bySheet ? file.run.pdfCurrentSheet : file.run.pdfAllSheets;
    if (options.Get() == nullptr) status = PdfOptionsMake(choice, bySheet, options);
    return Failed(status) ? status : ProPDFExport(file.task.drawing, target, options.Get());
}

// There are hosts that know the profile by its bare name, and others that want its path.
static ProError PdfByProfileWrite(ProMdl drawing, ProPath target) {
    const ProError status = ProPDFWithProfileExport(drawing, target, HostText(kProfile));
    if (status != PRO_TK_E_NOT_FOUND) return status;

    ProPath folder = {};
    ProPath profile = {};
    if (Failed(ProDirectoryCurrentGet(folder))) return status;
    if (Failed(CopyText(WithBackslash(folder) + kProfile + kProfileExtension, profile))) return status;
    return ProPDFWithProfileExport(drawing, target, profile);
}

}  // namespace kv
