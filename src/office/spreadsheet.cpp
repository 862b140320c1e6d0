// A table into a workbook: blocks of cells go over in one call, for each call is a round trip to another
// process.

#include "office/spreadsheet.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <new>
#include <string_view>

#include <windows.h>

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
    [[nodiscard]] HRESULT Save(const std::wstring& path);

private:
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

SheetExport SheetTableWrite(const SheetTable& table, const std::wstring& path,
                            std::vector<RefusedCell>& refused) {
    if (table.columns.empty() || table.columns.size() > kMaxSheetColumns) return SheetExport::Failed;
    try {
        const ComApartment apartment;
        HiddenApplication application;
        if (FAILED(apartment.Status()) || FAILED(application.Start())) return SheetExport::NotCreated;

        Dispatch sheet;
        HRESULT status = application.NewWorkbook(sheet);
        if (SUCCEEDED(status)) status = TableFill(sheet, table, refused);
        sheet.Release();
        if (SUCCEEDED(status)) status = application.Save(path);
        return SUCCEEDED(status) ? SheetExport::Written : SheetExport::Failed;
    } catch (const std::bad_alloc&) {
        return SheetExport::Failed;
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
    Dispatch sheets;
    if (SUCCEEDED(status)) status = workbook_.Get(kSheets, sheets);
    const std::array<Variant, 1> first = {Variant(1L)};
    if (SUCCEEDED(status)) status = sheets.Get(kItem, sheet, first);
    return status;
}

HRESULT HiddenApplication::Save(const std::wstring& path) {
    HRESULT status = application_.Put(kVisible, Variant(false));
    if (SUCCEEDED(status)) status = application_.Put(kUserControl, Variant(false));
    const std::array<Variant, 1> file = {Variant(path)};
    if (SUCCEEDED(status)) status = workbook_.Call(kSaveCopyAs, file);
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

}  // namespace kv
