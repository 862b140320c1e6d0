// A table into a workbook: blocks of cells go over in one call, for each call is a round trip to another
// process.

#include "office/spreadsheet.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>
#include <string_view>

#include <windows.h>

#include <oleauto.h>

#include "base/file.h"
#include "base/scope_exit.h"
#include "office/automation.h"

namespace kv {

static constexpr wchar_t kProgram[] = L"Excel.Application";

// Members by the application's published dispatch identifiers.
static constexpr DISPID kWorkbooks = 572;
static constexpr DISPID kVisible = 558;
static constexpr DISPID kUserControl = 1210;
static constexpr DISPID kQuit = 302;
static constexpr DISPID kAdd = 181;
static constexpr DISPID kSheets = 485;
static constexpr DISPID kSaveCopyAs = 175;
static constexpr DISPID kSaved = 298;
static constexpr DISPID kItem = 170;
static constexpr DISPID kRange = 197;
static constexpr DISPID kColumns = 241;
static constexpr DISPID kRows = 258;
static constexpr DISPID kValue2 = 1388;
static constexpr DISPID kMerge = 564;
static constexpr DISPID kInterior = 129;
static constexpr DISPID kColor = 99;
static constexpr DISPID kColorIndex = 97;
static constexpr DISPID kEntireColumn = 246;
static constexpr DISPID kHorizontalAlignment = 136;
static constexpr DISPID kFont = 146;
static constexpr DISPID kBold = 96;
static constexpr DISPID kSize = 104;
static constexpr DISPID kNumberFormat = 193;
static constexpr DISPID kAutoFit = 237;
static constexpr DISPID kDisplayAlerts = 343;
static constexpr DISPID kOpen = 1923;
static constexpr DISPID kSaveAs = 1925;
static constexpr DISPID kUsedRange = 412;
static constexpr DISPID kRow = 257;
static constexpr DISPID kColumn = 240;
static constexpr DISPID kText = 138;
static constexpr DISPID kBorders = 435;
static constexpr DISPID kLineStyle = 119;
static constexpr wchar_t kMacroSecurity[] = L"AutomationSecurity";

static constexpr long kOldFormat = 56;
static constexpr long kPlainLine = 1;
static constexpr long kMacrosOff = 3;
static constexpr long kLinksLeft = 0;

static constexpr long kYellow = 65535;
static constexpr long kLightGreen = 35;  // place in the palette
static constexpr long kCentre = -4108;
static constexpr long kTitleSize = 16;  // points
static constexpr wchar_t kTextFormat[] = L"@";
static constexpr std::size_t kMaxAddress = 255;  // characters of a range's address

static constexpr std::size_t kMaxBlockCells = 100'000;

static constexpr std::size_t kTitleRow = 1;
static constexpr std::size_t kHeaderRow = 2;
static constexpr std::size_t kFirstDataRow = 3;

// Marked columns of a row, the first column in the lowest bit.
using ColumnMarks = std::uint32_t;
static_assert(kMaxSheetColumns < 32);

// Columns count from 0, rows as the sheet shows them from 1.
struct CellBlock {
    std::size_t column;
    std::size_t row;
    std::size_t columns = 1;
    std::size_t rows = 1;
};

// The application and its one workbook. Ends the application, which nobody sees, on every way out.
class HiddenApplication {
public:
    HiddenApplication() = default;
    HiddenApplication(const HiddenApplication&) = delete;
    HiddenApplication& operator=(const HiddenApplication&) = delete;
    ~HiddenApplication();

    [[nodiscard]] HRESULT Start() { return application_.Create(kProgram); }
    [[nodiscard]] HRESULT NewWorkbook(Dispatch& sheet);
    [[nodiscard]] HRESULT OpenWorkbook(const std::wstring& path, Dispatch& sheet);
    [[nodiscard]] HRESULT Save(const std::wstring& path, SheetForm form);

private:
    [[nodiscard]] HRESULT FirstSheet(Dispatch& sheet) const;
    [[nodiscard]] HRESULT WriteFile(const std::wstring& path, SheetForm form) const;

    Dispatch application_;
    Dispatch workbook_;
    bool saved_ = false;
};

static HRESULT TableFill(const Dispatch& sheet, const SheetTable& table, std::vector<RefusedCell>& refused);
static HRESULT TitleFill(const Dispatch& sheet, const SheetTable& table);
static HRESULT HeaderFill(const Dispatch& sheet, const SheetTable& table, std::vector<RefusedCell>& refused);
static HRESULT RowsFill(const Dispatch& sheet, const SheetTable& table, std::vector<RefusedCell>& refused);
static HRESULT TextsPut(const Dispatch& sheet, const SheetTable& table, const CellBlock& block,
                        std::vector<RefusedCell>& refused);
static HRESULT BlockPut(const Dispatch& sheet, const SheetTable& table, const CellBlock& block);
static std::wstring_view TextAt(const SheetTable& table, std::size_t column, std::size_t row);
static HRESULT RowsMark(const Dispatch& sheet, const SheetTable& table);
static HRESULT BlocksMark(const Dispatch& sheet, const std::wstring& address);
static std::vector<CellBlock> MarkedBlocks(const SheetTable& table);
static void AddStretches(ColumnMarks marks, std::size_t row, std::size_t rows,
                         std::vector<CellBlock>& blocks);
static ColumnMarks MarksOf(const std::vector<SheetCell>& row, std::size_t columns);
static HRESULT RangeGet(const Dispatch& sheet, const CellBlock& block, Dispatch& range);
static std::wstring CornerName(const CellBlock& block, bool first);
static HRESULT PartPut(const Dispatch& object, DISPID part, DISPID property, const Variant& value);
static HRESULT AutoFit(const Dispatch& sheet, DISPID lines);
static HRESULT Border(const Dispatch& sheet, const SheetTable& table);
static SheetImport RowsRead(const Dispatch& sheet, std::size_t columns, std::size_t most,
                            std::vector<std::vector<std::wstring>>& rows);

SheetExport SheetTableWrite(const SheetTable& table, const std::wstring& path,
                            std::vector<RefusedCell>& refused, SheetForm form) {
    if (table.columns.empty() || table.columns.size() > kMaxSheetColumns) return SheetExport::Failed;
    try {
        const ComApartment apartment;
        HiddenApplication application;
        if (FAILED(apartment.Status()) || FAILED(application.Start())) return SheetExport::NotCreated;

        Dispatch sheet;
        HRESULT status = application.NewWorkbook(sheet);
        if (SUCCEEDED(status)) status = TableFill(sheet, table, refused);
        if (SUCCEEDED(status) && form.isBordered) status = Border(sheet, table);
        sheet.Release();
        if (SUCCEEDED(status)) status = application.Save(path, form);
        return SUCCEEDED(status) ? SheetExport::Written : SheetExport::Failed;
    } catch (const std::bad_alloc&) {
        return SheetExport::Failed;
    }
}

// The earlier workbook gives up its place for the writing and gets it back when nothing was written.
SheetExport SheetFileWrite(const SheetTable& table, const std::wstring& path,
                           std::vector<RefusedCell>& refused, SheetForm form) {
    SheetExport result = SheetExport::Failed;
    const std::wstring earlier = FileSetAside(path);
    const ScopeExit settle([&] {
        if (result == SheetExport::Written)
            FileDelete(earlier);
        else
            FileBringBack(earlier, path);
    });
    result = SheetTableWrite(table, path, refused, form);
    return result;
}

SheetImport SheetTableRead(const std::wstring& path, std::size_t columns, std::size_t most,
                           std::vector<std::vector<std::wstring>>& rows) {
    rows.clear();
    if (columns == 0 || columns > kMaxSheetColumns) return SheetImport::Failed;
    try {
        const ComApartment apartment;
        HiddenApplication application;
        if (FAILED(apartment.Status()) || FAILED(application.Start())) return SheetImport::NotCreated;
        Dispatch sheet;
        if (FAILED(application.OpenWorkbook(path, sheet))) return SheetImport::Failed;
        const SheetImport result = RowsRead(sheet, columns, most, rows);
        if (result != SheetImport::Read) rows.clear();
        return result;
    } catch (const std::bad_alloc&) {
        rows.clear();
        return SheetImport::Failed;
    }
}

// ---- The application

HiddenApplication::~HiddenApplication() {
    // A changed workbook would make Quit ask a question that nobody can see.
    if (workbook_.IsHeld() && !saved_) (void)workbook_.Put(kSaved, Variant(true));
    workbook_.Release();
    // One refusal is not taken for an answer: the application must not stay behind.
    if (application_.IsHeld() && FAILED(application_.Call(kQuit))) (void)application_.Call(kQuit);
}

HRESULT HiddenApplication::NewWorkbook(Dispatch& sheet) {
    Dispatch workbooks;
    HRESULT status = application_.Get(kWorkbooks, workbooks);
    const std::array<Variant, 1> noTemplate = {Variant::Omitted()};
    if (SUCCEEDED(status)) status = workbooks.CallFor(kAdd, workbook_, noTemplate);
    return SUCCEEDED(status) ? FirstSheet(sheet) : status;
}

// A workbook from anywhere may hold macros and ask questions: neither may happen.
HRESULT HiddenApplication::OpenWorkbook(const std::wstring& path, Dispatch& sheet) {
    HRESULT status = application_.Put(kDisplayAlerts, Variant(false));
    if (SUCCEEDED(status)) status = application_.PutNamed(kMacroSecurity, Variant(kMacrosOff));
    Dispatch workbooks;
    if (SUCCEEDED(status)) status = application_.Get(kWorkbooks, workbooks);
    const std::array<Variant, 3> file = {Variant(path), Variant(kLinksLeft), Variant(true)};
    if (SUCCEEDED(status)) status = workbooks.CallFor(kOpen, workbook_, file);
    return SUCCEEDED(status) ? FirstSheet(sheet) : status;
}

HRESULT HiddenApplication::FirstSheet(Dispatch& sheet) const {
    Dispatch sheets;
    const HRESULT status = workbook_.Get(kSheets, sheets);
    const std::array<Variant, 1> first = {Variant(1L)};
    return SUCCEEDED(status) ? sheets.Get(kItem, sheet, first) : status;
}

// A copy keeps the new workbook's format; another one asks about what it cannot hold.
HRESULT HiddenApplication::WriteFile(const std::wstring& path, SheetForm form) const {
    if (!form.isOld) {
        const std::array<Variant, 1> file = {Variant(path)};
        return workbook_.Call(kSaveCopyAs, file);
    }
    const HRESULT status = application_.Put(kDisplayAlerts, Variant(false));
    const std::array<Variant, 2> file = {Variant(path), Variant(kOldFormat)};
    return SUCCEEDED(status) ? workbook_.Call(kSaveAs, file) : status;
}

HRESULT HiddenApplication::Save(const std::wstring& path, SheetForm form) {
    HRESULT status = application_.Put(kVisible, Variant(false));
    if (SUCCEEDED(status)) status = application_.Put(kUserControl, Variant(false));
    if (SUCCEEDED(status)) status = WriteFile(path, form);
    // The file is complete now; what fails from here on concerns the application alone.
    if (SUCCEEDED(status)) saved_ = SUCCEEDED(workbook_.Put(kSaved, Variant(true)));
    return status;
}

// ---- The sheet

// Whether the application is gone: nothing that is asked of it will succeed.
static bool IsConnectionLost(HRESULT status) {
    return status == RPC_E_DISCONNECTED || status == RPC_E_SERVER_DIED || status == CO_E_OBJNOTCONNECTED ||
           HRESULT_FACILITY(status) == FACILITY_WIN32;
}

static HRESULT TableFill(const Dispatch& sheet, const SheetTable& table, std::vector<RefusedCell>& refused) {
    HRESULT status = TitleFill(sheet, table);
    if (SUCCEEDED(status)) status = HeaderFill(sheet, table, refused);
    if (SUCCEEDED(status) && !table.rows.empty()) status = RowsFill(sheet, table, refused);
    if (SUCCEEDED(status)) status = AutoFit(sheet, kColumns);
    if (SUCCEEDED(status)) status = AutoFit(sheet, kRows);
    return status;
}

static HRESULT TitleFill(const Dispatch& sheet, const SheetTable& table) {
    // Only the first cell gets the text: merging filled cells asks a question that nobody can see.
    Dispatch first;
    HRESULT status = RangeGet(sheet, {0, kTitleRow}, first);
    if (SUCCEEDED(status)) status = first.Put(kNumberFormat, Variant(kTextFormat));
    if (SUCCEEDED(status)) status = first.Put(kValue2, Variant(table.title));
    Dispatch title;
    if (SUCCEEDED(status)) status = RangeGet(sheet, {0, kTitleRow, table.columns.size()}, title);
    if (SUCCEEDED(status)) status = title.Call(kMerge);
    if (SUCCEEDED(status)) status = PartPut(title, kInterior, kColor, Variant(kYellow));
    // Centres all columns of the table from top to bottom.
    if (SUCCEEDED(status)) status = PartPut(title, kEntireColumn, kHorizontalAlignment, Variant(kCentre));
    if (SUCCEEDED(status)) status = PartPut(title, kFont, kBold, Variant(true));
    if (SUCCEEDED(status)) status = PartPut(title, kFont, kSize, Variant(kTitleSize));
    return status;
}

static HRESULT HeaderFill(const Dispatch& sheet, const SheetTable& table, std::vector<RefusedCell>& refused) {
    const CellBlock titles = {0, kHeaderRow, table.columns.size()};
    HRESULT status = TextsPut(sheet, table, titles, refused);
    Dispatch header;
    if (SUCCEEDED(status)) status = RangeGet(sheet, titles, header);
    if (SUCCEEDED(status)) status = PartPut(header, kFont, kBold, Variant(true));
    return status;
}

// A block that is too large would not fit into the memory of both programs.
static HRESULT RowsFill(const Dispatch& sheet, const SheetTable& table, std::vector<RefusedCell>& refused) {
    const std::size_t columns = table.columns.size();
    const std::size_t rowsAtOnce = kMaxBlockCells / columns;
    HRESULT status = S_OK;
    for (std::size_t done = 0; done < table.rows.size() && SUCCEEDED(status); done += rowsAtOnce) {
        const std::size_t rows = std::min(rowsAtOnce, table.rows.size() - done);
        status = TextsPut(sheet, table, {0, kFirstDataRow + done, columns, rows}, refused);
    }
    return SUCCEEDED(status) ? RowsMark(sheet, table) : status;
}

// Puts the texts of a block. One that is refused is put in two halves, down to the single cell that the
// application does not take.
static HRESULT TextsPut(const Dispatch& sheet, const SheetTable& table, const CellBlock& block,
                        std::vector<RefusedCell>& refused) {
    const HRESULT status = BlockPut(sheet, table, block);
    if (SUCCEEDED(status) || IsConnectionLost(status)) return status;
    if (block.rows == 1 && block.columns == 1) {
        refused.push_back({block.column, block.row - kHeaderRow});
        return S_OK;
    }
    CellBlock first = block;
    CellBlock second = block;
    if (block.rows > 1) {
        first.rows = block.rows / 2;
        second.row += first.rows;
        second.rows -= first.rows;
    } else {
        first.columns = block.columns / 2;
        second.column += first.columns;
        second.columns -= first.columns;
    }
    const HRESULT half = TextsPut(sheet, table, first, refused);
    return SUCCEEDED(half) ? TextsPut(sheet, table, second, refused) : half;
}

static HRESULT BlockPut(const Dispatch& sheet, const SheetTable& table, const CellBlock& block) {
    Variant texts = Variant::Block(block.rows, block.columns);
    for (std::size_t row = 0; row < block.rows; ++row)
        for (std::size_t column = 0; column < block.columns; ++column)
            texts.SetText(row, column, TextAt(table, block.column + column, block.row + row));
    Dispatch range;
    HRESULT status = RangeGet(sheet, block, range);
    // The format first: "0012" or "=1+1" put into a cell without it becomes a number or a formula.
    if (SUCCEEDED(status)) status = range.Put(kNumberFormat, Variant(kTextFormat));
    return SUCCEEDED(status) ? range.Put(kValue2, texts) : status;
}

// The text of a cell of the sheet, by column and row there.
static std::wstring_view TextAt(const SheetTable& table, std::size_t column, std::size_t row) {
    if (row == kHeaderRow) return table.columns[column];
    const std::vector<SheetCell>& cells = table.rows[row - kFirstDataRow];
    return column < cells.size() ? std::wstring_view(cells[column].text) : std::wstring_view();
}

// Many blocks go over as one range, as far as its address may reach.
static HRESULT RowsMark(const Dispatch& sheet, const SheetTable& table) {
    HRESULT status = S_OK;
    std::wstring address;
    for (const CellBlock& block : MarkedBlocks(table)) {
        const std::wstring name = CornerName(block, true) + L":" + CornerName(block, false);
        if (address.size() + 1 + name.size() > kMaxAddress) {
            status = BlocksMark(sheet, address);
            if (FAILED(status)) return status;
            address.clear();
        }
        address += (address.empty() ? L"" : L",") + name;
    }
    return address.empty() ? status : BlocksMark(sheet, address);
}

static HRESULT BlocksMark(const Dispatch& sheet, const std::wstring& address) {
    const std::array<Variant, 1> blocks = {Variant(address)};
    Dispatch range;
    const HRESULT status = sheet.Get(kRange, range, blocks);
    return SUCCEEDED(status) ? PartPut(range, kInterior, kColorIndex, Variant(kLightGreen)) : status;
}

// Neighbouring rows that are marked in the same columns belong together.
static std::vector<CellBlock> MarkedBlocks(const SheetTable& table) {
    const std::size_t columns = table.columns.size();
    std::vector<CellBlock> blocks;
    std::size_t first = 0;
    while (first < table.rows.size()) {
        const ColumnMarks marks = MarksOf(table.rows[first], columns);
        std::size_t next = first + 1;
        while (next < table.rows.size() && MarksOf(table.rows[next], columns) == marks) ++next;
        AddStretches(marks, kFirstDataRow + first, next - first, blocks);
        first = next;
    }
    return blocks;
}

static void AddStretches(ColumnMarks marks, std::size_t row, std::size_t rows,
                         std::vector<CellBlock>& blocks) {
    for (std::size_t first = 0; (marks >> first) != 0; ++first) {
        if (((marks >> first) & 1U) == 0) continue;
        std::size_t next = first;
        while (((marks >> next) & 1U) != 0) ++next;
        blocks.push_back({first, row, next - first, rows});
        first = next;
    }
}

static ColumnMarks MarksOf(const std::vector<SheetCell>& row, std::size_t columns) {
    ColumnMarks marks = 0;
    for (std::size_t i = 0; i < row.size() && i < columns; ++i)
        if (row[i].marked) marks |= ColumnMarks{1} << i;
    return marks;
}

// ---- Parts of a sheet

static HRESULT RangeGet(const Dispatch& sheet, const CellBlock& block, Dispatch& range) {
    const std::array<Variant, 2> corners = {Variant(CornerName(block, true)),
                                            Variant(CornerName(block, false))};
    return sheet.Get(kRange, range, corners);
}

// The first or the last cell of a block, as the sheet calls it.
static std::wstring CornerName(const CellBlock& block, bool first) {
    const std::size_t column = first ? block.column : block.column + block.columns - 1;
    const std::size_t row = first ? block.row : block.row + block.rows - 1;
    return static_cast<wchar_t>(L'A' + column) + std::to_wstring(row);
}

// Puts a property of an object's part, such as the colour of a range's interior.
static HRESULT PartPut(const Dispatch& object, DISPID part, DISPID property, const Variant& value) {
    Dispatch held;
    const HRESULT status = object.Get(part, held);
    return SUCCEEDED(status) ? held.Put(property, value) : status;
}

static HRESULT AutoFit(const Dispatch& sheet, DISPID lines) {
    Dispatch range;
    const HRESULT status = sheet.Get(lines, range);
    return SUCCEEDED(status) ? range.Call(kAutoFit) : status;
}

static HRESULT Border(const Dispatch& sheet, const SheetTable& table) {
    Dispatch all;
    const CellBlock block = {0, kTitleRow, table.columns.size(), kHeaderRow + table.rows.size()};
    const HRESULT status = RangeGet(sheet, block, all);
    return SUCCEEDED(status) ? PartPut(all, kBorders, kLineStyle, Variant(kPlainLine)) : status;
}

// ---- Reading

// Where the used part of a sheet begins, counted from 0, and what is in it.
struct UsedPart {
    std::size_t firstRow = 0;
    std::size_t firstColumn = 0;
    std::size_t rows = 1;
    std::size_t columns = 1;
    Variant values = {};
};

static HRESULT PlaceGet(const Dispatch& range, DISPID property, std::size_t& place) {
    Variant value;
    const HRESULT status = range.GetValue(property, value);
    if (FAILED(status)) return status;
    Variant number;
    if (FAILED(VariantChangeType(number.Receive(), value.Receive(), 0, VT_I4))) return DISP_E_TYPEMISMATCH;
    if (number.Get().lVal < 1) return DISP_E_OVERFLOW;
    place = static_cast<std::size_t>(number.Get().lVal) - 1;
    return S_OK;
}

static HRESULT UsedPartGet(const Dispatch& sheet, UsedPart& used) {
    Dispatch range;
    HRESULT status = sheet.Get(kUsedRange, range);
    if (SUCCEEDED(status)) status = PlaceGet(range, kRow, used.firstRow);
    if (SUCCEEDED(status)) status = PlaceGet(range, kColumn, used.firstColumn);
    if (SUCCEEDED(status)) status = range.GetValue(kValue2, used.values);
    // A single cell comes without an array.
    if (FAILED(status) || (used.values.Get().vt & VT_ARRAY) == 0) return status;
    SAFEARRAY* cells = used.values.Get().parray;
    if (used.values.Get().vt != (VT_ARRAY | VT_VARIANT) || cells == nullptr || cells->cDims != 2)
        return DISP_E_TYPEMISMATCH;
    // The bounds stand in the reverse order of the indices.
    used.rows = cells->rgsabound[1].cElements;
    used.columns = cells->rgsabound[0].cElements;
    return S_OK;
}

// A value of the used part; null outside it.
static const VARIANT* ValueAt(const UsedPart& used, std::size_t row, std::size_t column) {
    const bool isUsed = row >= used.firstRow && row < used.firstRow + used.rows &&
                        column >= used.firstColumn && column < used.firstColumn + used.columns;
    if (!isUsed) return nullptr;
    if ((used.values.Get().vt & VT_ARRAY) == 0) return &used.values.Get();
    SAFEARRAY* cells = used.values.Get().parray;
    std::array<LONG, 2> index = {cells->rgsabound[1].lLbound + static_cast<LONG>(row - used.firstRow),
                                 cells->rgsabound[0].lLbound + static_cast<LONG>(column - used.firstColumn)};
    void* place = nullptr;
    return FAILED(SafeArrayPtrOfIndex(cells, index.data(), &place)) ? nullptr
                                                                    : static_cast<const VARIANT*>(place);
}

// A number reads as it is shown: "0012" by its format. The columns have been fitted, for a number without
// room shows none of its digits.
static HRESULT ShownText(const Dispatch& sheet, std::size_t row, std::size_t column, std::wstring& text) {
    Dispatch cell;
    HRESULT status = RangeGet(sheet, {column, row + 1}, cell);
    Variant shown;
    if (SUCCEEDED(status)) status = cell.GetValue(kText, shown);
    if (SUCCEEDED(status) && shown.Get().vt == VT_BSTR)
        text.assign(shown.Get().bstrVal, SysStringLen(shown.Get().bstrVal));
    return status;
}

static HRESULT CellRead(const Dispatch& sheet, const VARIANT* value, bool& fitted, std::size_t row,
                        std::size_t column, std::wstring& text) {
    if (value == nullptr || value->vt == VT_EMPTY || value->vt == VT_NULL) return S_OK;
    if (value->vt == VT_BSTR) {
        text.assign(value->bstrVal, SysStringLen(value->bstrVal));
        return S_OK;
    }
    HRESULT status = fitted ? S_OK : AutoFit(sheet, kColumns);
    fitted = true;
    if (SUCCEEDED(status)) status = ShownText(sheet, row, column, text);
    return status;
}

static SheetImport RowsRead(const Dispatch& sheet, std::size_t columns, std::size_t most,
                            std::vector<std::vector<std::wstring>>& rows) {
    UsedPart used;
    if (FAILED(UsedPartGet(sheet, used))) return SheetImport::Failed;
    const std::size_t count = used.firstRow + used.rows;
    if (count > most) return SheetImport::TooMany;
    rows.assign(count, std::vector<std::wstring>(columns));
    bool fitted = false;
    for (std::size_t row = 0; row < count; ++row)
        for (std::size_t column = 0; column < columns; ++column)
            if (FAILED(CellRead(sheet, ValueAt(used, row, column), fitted, row, column, rows[row][column])))
                return SheetImport::Failed;
    return SheetImport::Read;
}

}  // namespace kv
