// The members that the automation objects understand, by the original's dispatch identifiers.

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>
#include <utility>

#include <windows.h>

#include <oleauto.h>

#include "simulator/spreadsheet/automation_object.h"
#include "simulator/spreadsheet/variant_values.h"
#include "simulator/spreadsheet/xlsx.h"

namespace sim {

namespace {

constexpr std::size_t kMaxTextLength = 32767;
constexpr long long kMaxCells = 4000000;  // of one value or format put
constexpr std::size_t kMaxAddress = 255;
constexpr int kNoColour = -4142;
constexpr int kMacrosOff = 3;
constexpr int kUsualFormat = 51;  // .xlsx
constexpr int kOldFormat = 56;    // .xls
constexpr int kLineNone = -4142;
constexpr int kLinePlain = 1;

// ---- Application

HRESULT ApplicationWorkbooks(ObjectState& object, const CallArguments&, VARIANT* result) {
    ObjectState workbooks = object;
    workbooks.kind = ObjectKind::kWorkbooks;
    return GiveObject(std::move(workbooks), result);
}

HRESULT VisibleGet(ObjectState& object, const CallArguments&, VARIANT* result) {
    return GiveTruth(object.application->visible, result);
}

HRESULT VisiblePut(ObjectState& object, const CallArguments& arguments, VARIANT*) {
    return TakeTruth(*arguments.assigned, object.application->visible);
}

HRESULT UserControlGet(ObjectState& object, const CallArguments&, VARIANT* result) {
    return GiveTruth(object.application->userControl, result);
}

HRESULT UserControlPut(ObjectState& object, const CallArguments& arguments, VARIANT*) {
    return TakeTruth(*arguments.assigned, object.application->userControl);
}

HRESULT AlertsGet(ObjectState& object, const CallArguments&, VARIANT* result) {
    return GiveTruth(object.application->alerts, result);
}

HRESULT AlertsPut(ObjectState& object, const CallArguments& arguments, VARIANT*) {
    return TakeTruth(*arguments.assigned, object.application->alerts);
}

HRESULT MacroSecurityPut(ObjectState& object, const CallArguments& arguments, VARIANT*) {
    double level = 0;
    const HRESULT status = TakeNumber(*arguments.assigned, level);
    if (FAILED(status)) return status;
    if (level != 1 && level != 2 && level != kMacrosOff) return kApplicationError;
    object.application->macroSecurity = static_cast<int>(level);
    return S_OK;
}

HRESULT Quit(ObjectState& object, const CallArguments&, VARIANT*) {
    ApplicationState& application = *object.application;
    const bool unsaved =
        std::any_of(application.workbooks.begin(), application.workbooks.end(),
                    [](const std::shared_ptr<WorkbookState>& workbook) { return !workbook->saved; });
    if (unsaved) application.server->Problem("Quit asks whether to save a changed workbook");
    if (application.visible) application.server->Problem("the application was shown to the user");
    application.ended = true;
    return S_OK;
}

// ---- Workbooks and sheets

HRESULT AddWorkbook(ObjectState& object, const CallArguments&, VARIANT* result) {
    ObjectState workbook = object;
    workbook.kind = ObjectKind::kWorkbook;
    workbook.workbook = std::make_shared<WorkbookState>();
    object.application->workbooks.push_back(workbook.workbook);
    return GiveObject(std::move(workbook), result);
}

// Links are updated unless their argument is 0.
HRESULT OpenWorkbook(ObjectState& object, const CallArguments& arguments, VARIANT* result) {
    std::wstring path;
    double links = 3;
    bool readOnly = false;
    HRESULT status = TakeText(arguments.given[0], path);
    if (SUCCEEDED(status) && arguments.given.size() > 1) status = TakeNumber(arguments.given[1], links);
    if (SUCCEEDED(status) && arguments.given.size() > 2) status = TakeTruth(arguments.given[2], readOnly);
    if (FAILED(status)) return status;
    std::optional<Sheet> sheet = ReadXlsx(path);
    if (!sheet) return kApplicationError;
    const ApplicationState& application = *object.application;
    application.server->opened.push_back(
        {path, links != 0, readOnly, application.macroSecurity != kMacrosOff});
    ObjectState workbook = object;
    workbook.kind = ObjectKind::kWorkbook;
    workbook.workbook = std::make_shared<WorkbookState>();
    workbook.workbook->sheet = std::move(*sheet);
    object.application->workbooks.push_back(workbook.workbook);
    return GiveObject(std::move(workbook), result);
}

HRESULT SaveAs(ObjectState& object, const CallArguments& arguments, VARIANT*) {
    std::wstring path;
    double format = kUsualFormat;
    HRESULT status = TakeText(arguments.given[0], path);
    if (SUCCEEDED(status) && arguments.given.size() > 1) status = TakeNumber(arguments.given[1], format);
    if (FAILED(status)) return status;
    if (path.empty() || (format != kUsualFormat && format != kOldFormat)) return kApplicationError;
    AutomationServer& server = *object.application->server;
    std::error_code error;
    if (object.application->alerts && std::filesystem::exists(path, error))
        server.Problem("SaveAs asks whether to replace a file");
    // There is one format of files here: what was asked for is kept in the books.
    if (!WriteXlsx(object.workbook->sheet, path)) return kApplicationError;
    server.saved.push_back({path, static_cast<int>(format)});
    object.workbook->saved = true;
    return S_OK;
}

HRESULT CloseWorkbook(ObjectState& object, const CallArguments& arguments, VARIANT*) {
    bool saves = false;
    if (!arguments.given.empty() && FAILED(TakeTruth(arguments.given[0], saves))) return DISP_E_TYPEMISMATCH;
    if (arguments.given.empty() && !object.workbook->saved)
        object.application->server->Problem("Close asks whether to save a changed workbook");
    std::erase(object.application->workbooks, object.workbook);
    return S_OK;
}

HRESULT WorkbookSheets(ObjectState& object, const CallArguments&, VARIANT* result) {
    ObjectState sheets = object;
    sheets.kind = ObjectKind::kSheets;
    return GiveObject(std::move(sheets), result);
}

HRESULT SaveCopyAs(ObjectState& object, const CallArguments& arguments, VARIANT*) {
    std::wstring path;
    const HRESULT status = TakeText(arguments.given[0], path);
    if (FAILED(status)) return status;
    return !path.empty() && WriteXlsx(object.workbook->sheet, path) ? S_OK : kApplicationError;
}

HRESULT SavedGet(ObjectState& object, const CallArguments&, VARIANT* result) {
    return GiveTruth(object.workbook->saved, result);
}

HRESULT SavedPut(ObjectState& object, const CallArguments& arguments, VARIANT*) {
    return TakeTruth(*arguments.assigned, object.workbook->saved);
}

HRESULT SheetItem(ObjectState& object, const CallArguments& arguments, VARIANT* result) {
    double index = 0;
    const HRESULT status = TakeNumber(arguments.given[0], index);
    if (FAILED(status)) return status;
    if (index != 1) return DISP_E_BADINDEX;
    ObjectState sheet = object;
    sheet.kind = ObjectKind::kWorksheet;
    return GiveObject(std::move(sheet), result);
}

// ---- Ranges of a sheet

HRESULT GiveRange(const ObjectState& object, const CellArea& area, WholeLines lines, VARIANT* result) {
    ObjectState range = object;
    range.kind = ObjectKind::kRange;
    range.area = area;
    range.lines = lines;
    return GiveObject(std::move(range), result);
}

// "A1:B2,D4": areas side by side. False: one of them is none, or the address is too long.
bool AreasFromText(std::wstring_view text, std::vector<CellArea>& areas) {
    if (text.size() > kMaxAddress) return false;
    for (std::size_t comma = 0; comma != std::wstring_view::npos;) {
        comma = text.find(L',');
        const std::optional<CellArea> area = AreaFromText(text.substr(0, comma));
        if (!area) return false;
        areas.push_back(*area);
        if (comma != std::wstring_view::npos) text.remove_prefix(comma + 1);
    }
    return true;
}

// Two arguments are the corners of one area.
HRESULT SheetRange(ObjectState& object, const CallArguments& arguments, VARIANT* result) {
    std::vector<CellArea> areas;
    for (const VARIANT& argument : arguments.given) {
        std::wstring text;
        const HRESULT status = TakeText(argument, text);
        if (FAILED(status)) return status;
        if (!AreasFromText(text, areas)) return kApplicationError;
    }
    CellArea area = areas.front();
    if (arguments.given.size() == 1) {
        ObjectState places = object;
        places.moreAreas.assign(areas.begin() + 1, areas.end());
        return GiveRange(places, area, WholeLines::kNone, result);
    }
    if (areas.size() != 2) return kApplicationError;
    area = {std::min(area.top, areas[1].top), std::min(area.left, areas[1].left),
            std::max(area.bottom, areas[1].bottom), std::max(area.right, areas[1].right)};
    return GiveRange(object, area, WholeLines::kNone, result);
}

HRESULT SheetUsedRange(ObjectState& object, const CallArguments&, VARIANT* result) {
    return GiveRange(object, object.workbook->sheet.Used(), WholeLines::kNone, result);
}

HRESULT RangeRow(ObjectState& object, const CallArguments&, VARIANT* result) {
    return GiveNumber(object.area.top, result);
}

HRESULT RangeColumn(ObjectState& object, const CallArguments&, VARIANT* result) {
    return GiveNumber(object.area.left, result);
}

HRESULT RangeText(ObjectState& object, const CallArguments&, VARIANT* result) {
    return GiveText(object.workbook->sheet.Shown(object.area.top, object.area.left), result);
}

HRESULT RangeBorders(ObjectState& object, const CallArguments&, VARIANT* result) {
    ObjectState borders = object;
    borders.kind = ObjectKind::kBorders;
    return GiveObject(std::move(borders), result);
}

constexpr CellArea kWholeSheet = {1, 1, kMaxSheetRow, kMaxSheetColumn};

HRESULT SheetColumns(ObjectState& object, const CallArguments&, VARIANT* result) {
    return GiveRange(object, kWholeSheet, WholeLines::kColumns, result);
}

HRESULT SheetRows(ObjectState& object, const CallArguments&, VARIANT* result) {
    return GiveRange(object, kWholeSheet, WholeLines::kRows, result);
}

HRESULT RangeEntireColumn(ObjectState& object, const CallArguments&, VARIANT* result) {
    if (!object.moreAreas.empty()) return kApplicationError;
    return GiveRange(object, {1, object.area.left, kMaxSheetRow, object.area.right}, WholeLines::kColumns,
                     result);
}

HRESULT RangeInterior(ObjectState& object, const CallArguments&, VARIANT* result) {
    ObjectState interior = object;
    interior.kind = ObjectKind::kInterior;
    return GiveObject(std::move(interior), result);
}

HRESULT RangeFont(ObjectState& object, const CallArguments&, VARIANT* result) {
    ObjectState font = object;
    font.kind = ObjectKind::kFont;
    return GiveObject(std::move(font), result);
}

bool IsTooLarge(const CellArea& area) {
    return static_cast<long long>(area.Rows()) * area.Columns() > kMaxCells;
}

// One area of a size that can be worked through cell by cell.
bool IsOneBlock(const ObjectState& range) {
    return range.moreAreas.empty() && !IsTooLarge(range.area);
}

HRESULT RangeMerge(ObjectState& object, const CallArguments&, VARIANT*) {
    bool dropped = false;
    if (!IsOneBlock(object) || !object.workbook->sheet.Merge(object.area, dropped)) return kApplicationError;
    if (dropped) object.application->server->Problem("Merge asks whether to drop all values but the first");
    object.workbook->saved = false;
    return S_OK;
}

HRESULT RangeAutoFit(ObjectState& object, const CallArguments&, VARIANT* result) {
    if (object.lines == WholeLines::kNone) return kApplicationError;
    if (object.lines == WholeLines::kColumns)
        object.workbook->sheet.FitColumns(object.area);
    else
        object.workbook->sheet.FitRows(object.area);
    object.workbook->saved = false;
    return GiveTruth(true, result);
}

// ---- Values

// S_OK, DISP_E_TYPEMISMATCH for a kind of value that no cell can hold, kApplicationError for a refused one.
HRESULT PutCell(Sheet& sheet, int row, int column, const VARIANT& value) {
    if (value.vt == VT_EMPTY || value.vt == VT_NULL) {
        sheet.Put(row, column, {});
        return S_OK;
    }
    if (value.vt == VT_BSTR) {
        const std::wstring_view text(value.bstrVal == nullptr ? L"" : value.bstrVal,
                                     SysStringLen(value.bstrVal));
        return text.size() <= kMaxTextLength && sheet.Enter(row, column, text) ? S_OK : kApplicationError;
    }
    if (value.vt == VT_BOOL) {
        sheet.Put(row, column, {CellKind::kTruth, value.boolVal != VARIANT_FALSE ? 1.0 : 0.0, {}});
        return S_OK;
    }
    double number = 0;
    const bool isNumber = value.vt == VT_R8 || value.vt == VT_R4 || value.vt == VT_I4 || value.vt == VT_I2;
    if (!isNumber || FAILED(TakeNumber(value, number))) return DISP_E_TYPEMISMATCH;
    // A text cell keeps a number as its digits.
    const bool asText = sheet.Style(row, column).numberFormat == kTextFormat;
    sheet.Put(row, column, {CellKind::kNumber, number, {}});
    if (!asText) return S_OK;
    VARIANT text;
    HRESULT status = Convert(value, VT_BSTR, text);
    if (SUCCEEDED(status)) status = PutCell(sheet, row, column, text);
    VariantClear(&text);
    return status;
}

// One element of an array of values; what lies outside the array becomes #N/A.
class ValueArray {
public:
    explicit ValueArray(const VARIANT& value) : array_(value.parray), type_(value.vt & VT_TYPEMASK) {}
    bool IsUsable() const {
        const bool shaped = array_ != nullptr && (array_->cDims == 1 || array_->cDims == 2);
        return shaped && (type_ == VT_VARIANT || type_ == VT_BSTR);
    }
    HRESULT PutInto(Sheet& sheet, const CellArea& area, int row, int column) const {
        std::array<LONG, 2> index = {row - area.top, column - area.left};
        // A plain list is one row, repeated.
        LONG* first = array_->cDims == 1 ? &index[1] : index.data();
        for (UINT i = 0; i < array_->cDims; ++i) {
            LONG low = 0;
            LONG high = 0;
            SafeArrayGetLBound(array_, i + 1, &low);
            SafeArrayGetUBound(array_, i + 1, &high);
            first[i] += low;
            if (first[i] > high) return PutMissing(sheet, row, column);
        }
        void* place = nullptr;
        if (FAILED(SafeArrayPtrOfIndex(array_, first, &place))) return DISP_E_TYPEMISMATCH;
        if (type_ == VT_VARIANT) return PutCell(sheet, row, column, *static_cast<const VARIANT*>(place));
        VARIANT text;
        VariantInit(&text);
        text.vt = VT_BSTR;
        text.bstrVal = *static_cast<const BSTR*>(place);
        return PutCell(sheet, row, column, text);
    }

private:
    static HRESULT PutMissing(Sheet& sheet, int row, int column) {
        sheet.Put(row, column, {CellKind::kError, 0, L"#N/A"});
        return S_OK;
    }

    SAFEARRAY* array_;
    int type_;
};

template <typename Action>
HRESULT ForEachCell(const CellArea& area, Action action) {
    HRESULT status = S_OK;
    for (int row = area.top; row <= area.bottom && SUCCEEDED(status); ++row)
        for (int column = area.left; column <= area.right && SUCCEEDED(status); ++column)
            status = action(row, column);
    return status;
}

HRESULT Value2Put(ObjectState& object, const CallArguments& arguments, VARIANT*) {
    Sheet& sheet = object.workbook->sheet;
    const VARIANT& value = *arguments.assigned;
    if (!IsOneBlock(object)) return kApplicationError;
    object.workbook->saved = false;
    if ((value.vt & VT_ARRAY) == 0)
        return ForEachCell(object.area,
                           [&](int row, int column) { return PutCell(sheet, row, column, value); });
    const ValueArray values(value);
    if (!values.IsUsable()) return DISP_E_TYPEMISMATCH;
    return ForEachCell(object.area, [&](int row, int column) {
        const HRESULT status = values.PutInto(sheet, object.area, row, column);
        if (FAILED(status) || !object.application->server->Refuses(sheet.Value(row, column).text))
            return status;
        sheet.Put(row, column, {});
        return kApplicationError;
    });
}

HRESULT GiveCell(const CellValue& value, VARIANT* result) {
    switch (value.kind) {
        case CellKind::kEmpty:
            return S_OK;
        case CellKind::kNumber:
            return GiveNumber(value.number, result);
        case CellKind::kTruth:
            return GiveTruth(value.number != 0, result);
        case CellKind::kText:
        case CellKind::kFormula:  // nothing is calculated here
        case CellKind::kError:
            break;
    }
    return GiveText(value.text, result);
}

HRESULT Value2Get(ObjectState& object, const CallArguments&, VARIANT* result) {
    const Sheet& sheet = object.workbook->sheet;
    const CellArea& area = object.area;
    if (!IsOneBlock(object)) return kApplicationError;
    if (result == nullptr) return S_OK;
    if (area.Rows() * area.Columns() == 1) return GiveCell(sheet.Value(area.top, area.left), result);
    std::array<SAFEARRAYBOUND, 2> bounds = {
        {{static_cast<ULONG>(area.Rows()), 1}, {static_cast<ULONG>(area.Columns()), 1}}};
    result->parray = SafeArrayCreate(VT_VARIANT, 2, bounds.data());
    if (result->parray == nullptr) return E_OUTOFMEMORY;
    result->vt = VT_ARRAY | VT_VARIANT;
    return ForEachCell(area, [&](int row, int column) {
        std::array<LONG, 2> index = {row - area.top + 1, column - area.left + 1};
        void* place = nullptr;
        const HRESULT status = SafeArrayPtrOfIndex(result->parray, index.data(), &place);
        return FAILED(status) ? status : GiveCell(sheet.Value(row, column), static_cast<VARIANT*>(place));
    });
}

// ---- Formats. A format read from cells that differ is Null, as in the original.

template <typename Field>
HRESULT FormatPut(ObjectState& object, Field CellStyle::*field, const Field& value) {
    const bool wholeColumns = object.area.Rows() == kMaxSheetRow && object.area.Columns() < kMaxSheetColumn;
    if (!wholeColumns && IsTooLarge(object.area)) return kApplicationError;
    std::vector<CellArea> areas = object.moreAreas;
    areas.push_back(object.area);
    for (const CellArea& area : areas)
        object.workbook->sheet.Restyle(area, [&](CellStyle& style) { style.*field = value; });
    object.workbook->saved = false;
    return S_OK;
}

// Whole columns answer for the cells in use, a range in several places for the first. False: they differ.
template <typename Field>
bool FormatGet(const ObjectState& object, Field CellStyle::*field, Field& value) {
    const Sheet& sheet = object.workbook->sheet;
    CellArea area = object.area;
    area.bottom = std::min(area.bottom, std::max(sheet.LastRow(), area.top));
    value = sheet.Style(area.top, area.left).*field;
    const HRESULT status = ForEachCell(
        area, [&](int row, int column) { return sheet.Style(row, column).*field == value ? S_OK : E_FAIL; });
    return SUCCEEDED(status);
}

HRESULT GiveNull(VARIANT* result) {
    if (result != nullptr) result->vt = VT_NULL;
    return S_OK;
}

HRESULT AlignmentGet(ObjectState& object, const CallArguments&, VARIANT* result) {
    int alignment = 0;
    return FormatGet(object, &CellStyle::alignment, alignment) ? GiveNumber(alignment, result)
                                                               : GiveNull(result);
}

HRESULT AlignmentPut(ObjectState& object, const CallArguments& arguments, VARIANT*) {
    double number = 0;
    const HRESULT status = TakeNumber(*arguments.assigned, number);
    if (FAILED(status)) return status;
    constexpr std::array<int, 4> kKnown = {kAlignGeneral, kAlignCentre, kAlignLeft, kAlignRight};
    const auto alignment = static_cast<int>(number);
    if (std::find(kKnown.begin(), kKnown.end(), alignment) == kKnown.end()) return kApplicationError;
    return FormatPut(object, &CellStyle::alignment, alignment);
}

HRESULT NumberFormatGet(ObjectState& object, const CallArguments&, VARIANT* result) {
    std::wstring format;
    return FormatGet(object, &CellStyle::numberFormat, format) ? GiveText(format, result) : GiveNull(result);
}

HRESULT NumberFormatPut(ObjectState& object, const CallArguments& arguments, VARIANT*) {
    std::wstring format;
    const HRESULT status = TakeText(*arguments.assigned, format);
    if (FAILED(status)) return status;
    return format.empty() ? kApplicationError : FormatPut(object, &CellStyle::numberFormat, format);
}

HRESULT BoldGet(ObjectState& object, const CallArguments&, VARIANT* result) {
    bool bold = false;
    return FormatGet(object, &CellStyle::bold, bold) ? GiveTruth(bold, result) : GiveNull(result);
}

HRESULT BoldPut(ObjectState& object, const CallArguments& arguments, VARIANT*) {
    bool bold = false;
    const HRESULT status = TakeTruth(*arguments.assigned, bold);
    return FAILED(status) ? status : FormatPut(object, &CellStyle::bold, bold);
}

HRESULT SizeGet(ObjectState& object, const CallArguments&, VARIANT* result) {
    double size = 0;
    return FormatGet(object, &CellStyle::size, size) ? GiveNumber(size, result) : GiveNull(result);
}

HRESULT SizePut(ObjectState& object, const CallArguments& arguments, VARIANT*) {
    double size = 0;
    const HRESULT status = TakeNumber(*arguments.assigned, size);
    if (FAILED(status)) return status;
    return size < 1 || size > 409 ? kApplicationError : FormatPut(object, &CellStyle::size, size);
}

HRESULT LineStylePut(ObjectState& object, const CallArguments& arguments, VARIANT*) {
    double style = 0;
    const HRESULT status = TakeNumber(*arguments.assigned, style);
    if (FAILED(status)) return status;
    if (style != kLinePlain && style != kLineNone) return kApplicationError;
    return FormatPut(object, &CellStyle::bordered, style == kLinePlain);
}

HRESULT ColourGet(ObjectState& object, const CallArguments&, VARIANT* result) {
    std::optional<unsigned> fill;
    return FormatGet(object, &CellStyle::fill, fill) ? GiveNumber(fill.value_or(0xFFFFFF), result)
                                                     : GiveNull(result);
}

HRESULT ColourPut(ObjectState& object, const CallArguments& arguments, VARIANT*) {
    double number = 0;
    const HRESULT status = TakeNumber(*arguments.assigned, number);
    if (FAILED(status)) return status;
    if (number < 0 || number > 0xFFFFFF) return kApplicationError;
    return FormatPut(object, &CellStyle::fill, std::optional<unsigned>(static_cast<unsigned>(number)));
}

HRESULT ColourIndexGet(ObjectState& object, const CallArguments&, VARIANT* result) {
    std::optional<unsigned> fill;
    if (!FormatGet(object, &CellStyle::fill, fill)) return GiveNull(result);
    return GiveNumber(fill ? PalettePlace(*fill).value_or(kNoColour) : kNoColour, result);
}

HRESULT ColourIndexPut(ObjectState& object, const CallArguments& arguments, VARIANT*) {
    double number = 0;
    const HRESULT status = TakeNumber(*arguments.assigned, number);
    if (FAILED(status)) return status;
    const std::optional<unsigned> colour = PaletteColour(static_cast<int>(number));
    if (!colour && number != kNoColour) return kApplicationError;
    return FormatPut(object, &CellStyle::fill, colour);
}

}  // namespace

const std::vector<Member>& Members() {
    using enum ObjectKind;
    constexpr WORD kGet = DISPATCH_PROPERTYGET;
    constexpr WORD kPut = DISPATCH_PROPERTYPUT;
    constexpr WORD kMethod = DISPATCH_METHOD;
    // clang-format off
    static const std::vector<Member> kMembers = {
        {kApplication, 572,  "Workbooks",           kGet,    0, 0, ApplicationWorkbooks},
        {kApplication, 558,  "Visible",             kGet,    0, 0, VisibleGet},
        {kApplication, 558,  "Visible",             kPut,    0, 0, VisiblePut},
        {kApplication, 1210, "UserControl",         kGet,    0, 0, UserControlGet},
        {kApplication, 1210, "UserControl",         kPut,    0, 0, UserControlPut},
        {kApplication, 343,  "DisplayAlerts",       kGet,    0, 0, AlertsGet},
        {kApplication, 343,  "DisplayAlerts",       kPut,    0, 0, AlertsPut},
        {kApplication, 2805, "AutomationSecurity",  kPut,    0, 0, MacroSecurityPut},
        {kApplication, 302,  "Quit",                kMethod, 0, 0, Quit},
        {kWorkbooks,   181,  "Add",                 kMethod, 0, 0, AddWorkbook},
        {kWorkbooks,   1923, "Open",                kMethod, 1, 3, OpenWorkbook},
        {kWorkbook,    1925, "SaveAs",              kMethod, 1, 2, SaveAs},
        {kWorkbook,    277,  "Close",               kMethod, 0, 1, CloseWorkbook},
        {kWorkbook,    485,  "Sheets",              kGet,    0, 0, WorkbookSheets},
        {kWorkbook,    175,  "SaveCopyAs",          kMethod, 1, 1, SaveCopyAs},
        {kWorkbook,    298,  "Saved",               kGet,    0, 0, SavedGet},
        {kWorkbook,    298,  "Saved",               kPut,    0, 0, SavedPut},
        {kSheets,      170,  "Item",                kGet,    1, 1, SheetItem},
        {kWorksheet,   197,  "Range",               kGet,    1, 2, SheetRange},
        {kWorksheet,   412,  "UsedRange",           kGet,    0, 0, SheetUsedRange},
        {kWorksheet,   241,  "Columns",             kGet,    0, 0, SheetColumns},
        {kWorksheet,   258,  "Rows",                kGet,    0, 0, SheetRows},
        {kRange,       1388, "Value2",              kGet,    0, 0, Value2Get},
        {kRange,       1388, "Value2",              kPut,    0, 0, Value2Put},
        {kRange,       257,  "Row",                 kGet,    0, 0, RangeRow},
        {kRange,       240,  "Column",              kGet,    0, 0, RangeColumn},
        {kRange,       138,  "Text",                kGet,    0, 0, RangeText},
        {kRange,       435,  "Borders",             kGet,    0, 0, RangeBorders},
        {kBorders,     119,  "LineStyle",           kPut,    0, 0, LineStylePut},
        {kRange,       564,  "Merge",               kMethod, 0, 0, RangeMerge},
        {kRange,       129,  "Interior",            kGet,    0, 0, RangeInterior},
        {kRange,       246,  "EntireColumn",        kGet,    0, 0, RangeEntireColumn},
        {kRange,       136,  "HorizontalAlignment", kGet,    0, 0, AlignmentGet},
        {kRange,       136,  "HorizontalAlignment", kPut,    0, 0, AlignmentPut},
        {kRange,       146,  "Font",                kGet,    0, 0, RangeFont},
        {kRange,       193,  "NumberFormat",        kGet,    0, 0, NumberFormatGet},
        {kRange,       193,  "NumberFormat",        kPut,    0, 0, NumberFormatPut},
        {kRange,       237,  "AutoFit",             kMethod, 0, 0, RangeAutoFit},
        {kInterior,    99,   "Color",               kGet,    0, 0, ColourGet},
        {kInterior,    99,   "Color",               kPut,    0, 0, ColourPut},
        {kInterior,    97,   "ColorIndex",          kGet,    0, 0, ColourIndexGet},
        {kInterior,    97,   "ColorIndex",          kPut,    0, 0, ColourIndexPut},
        {kFont,        96,   "Bold",                kGet,    0, 0, BoldGet},
        {kFont,        96,   "Bold",                kPut,    0, 0, BoldPut},
        {kFont,        104,  "Size",                kGet,    0, 0, SizeGet},
        {kFont,        104,  "Size",                kPut,    0, 0, SizePut},
    };
    // clang-format on
    return kMembers;
}

}  // namespace sim
