// The stand-in for the spreadsheet application: what it makes of entries, what it refuses, what it reports.

#include "simulator/spreadsheet/spreadsheet.h"

#include <cmath>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include <oleauto.h>

#include "office/automation.h"
#include "simulator/report/utf8.h"
#include "simulator/spreadsheet/sheet.h"
#include "simulator/spreadsheet/xlsx.h"
#include "support/temp_directory.h"

namespace {

using kv::Variant;
using sim::AutomationServer;
using sim::CellKind;
using sim::CellValue;
using sim::Sheet;

// An object of the application as a client holds it.
class Held {
public:
    explicit Held(IDispatch* object) : object_(object) {}
    Held(Held&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() {
        if (object_ != nullptr) object_->Release();
    }

    // Arguments in the order in which a person writes them.
    HRESULT Do(DISPID member, WORD access, const std::vector<Variant>& arguments = {}) {
        std::vector<VARIANT> passed;
        for (auto argument = arguments.rbegin(); argument != arguments.rend(); ++argument)
            passed.push_back(argument->Get());
        DISPID assigned = DISPID_PROPERTYPUT;
        const bool isPut = access == DISPATCH_PROPERTYPUT;
        DISPPARAMS parameters = {passed.data(), isPut ? &assigned : nullptr, static_cast<UINT>(passed.size()),
                                 isPut ? 1U : 0U};
        VariantClear(result_.Receive());
        exception = {};
        const HRESULT status = object_->Invoke(member, IID_NULL, 0, access, &parameters,
                                               isPut ? nullptr : result_.Receive(), &exception, nullptr);
        SysFreeString(std::exchange(exception.bstrDescription, nullptr));
        return status;
    }
    HRESULT Get(DISPID member, const std::vector<Variant>& arguments = {}) {
        return Do(member, DISPATCH_PROPERTYGET, arguments);
    }
    HRESULT Put(DISPID member, Variant value) {
        std::vector<Variant> arguments;
        arguments.push_back(std::move(value));
        return Do(member, DISPATCH_PROPERTYPUT, arguments);
    }
    HRESULT Call(DISPID member) { return Do(member, DISPATCH_METHOD); }
    Held Part(DISPID member, const std::vector<Variant>& arguments = {}, WORD access = DISPATCH_PROPERTYGET) {
        EXPECT_EQ(Do(member, access, arguments), S_OK);
        EXPECT_EQ(result_.Get().vt, VT_DISPATCH);
        result_.Receive()->vt = VT_EMPTY;  // the reference is the part's now
        return Held(result_.Get().pdispVal);
    }
    const VARIANT& Result() const { return result_.Get(); }

    EXCEPINFO exception = {};

private:
    IDispatch* object_;
    Variant result_;
};

template <typename... Texts>
std::vector<Variant> Words(Texts... texts) {
    std::vector<Variant> words;
    (words.push_back(Variant(texts)), ...);
    return words;
}

// An application with a workbook and its sheet.
class Spreadsheet : public testing::Test {
protected:
    Spreadsheet()
        : application_(Start()),
          workbook_(application_.Part(572).Part(181, {}, DISPATCH_METHOD)),
          sheet_(workbook_.Part(485).Part(170, Words(1L))) {}

    Held Start() {
        void* object = nullptr;
        EXPECT_EQ(sim::CreateApplication(server_, IID_IDispatch, &object), S_OK);
        return Held(static_cast<IDispatch*>(object));
    }
    Held Range(const wchar_t* area) { return sheet_.Part(197, Words(area)); }
    void Quit() {
        EXPECT_EQ(workbook_.Put(298, Variant(true)), S_OK);
        EXPECT_EQ(application_.Call(302), S_OK);
    }

    std::shared_ptr<AutomationServer> server_ = std::make_shared<AutomationServer>();
    Held application_;
    Held workbook_;
    Held sheet_;
};

TEST(SheetEntry, BecomesWhatTheOriginalMakesOfIt) {
    struct Row {
        const wchar_t* entry;
        CellKind kind;
        double number;
        const wchar_t* text;
    };
    const std::vector<Row> rows = {
        {L"0012", CellKind::kNumber, 12, L""},
        {L" -1.50 ", CellKind::kNumber, -1.5, L""},
        {L"1e3", CellKind::kNumber, 1000, L""},
        {L"12%", CellKind::kNumber, 0.12, L""},
        {L"1234567890123456", CellKind::kNumber, 1234567890123460, L""},
        {L"2024-01-02", CellKind::kNumber, 45293, L""},
        {L"1900/2/28", CellKind::kNumber, 59, L""},
        {L"1900/3/1", CellKind::kNumber, 61, L""},
        {L"2024-13-02", CellKind::kText, 0, L"2024-13-02"},
        {L"true", CellKind::kTruth, 1, L""},
        {L"=1+1", CellKind::kFormula, 0, L"=1+1"},
        {L"=", CellKind::kText, 0, L"="},
        {L"'007", CellKind::kText, 0, L"007"},
        {L"M8x20", CellKind::kText, 0, L"M8x20"},
        {L"1-2-3-4", CellKind::kText, 0, L"1-2-3-4"},
        {L"螺栓", CellKind::kText, 0, L"螺栓"},
        {L"", CellKind::kEmpty, 0, L""},
    };
    for (const Row& row : rows) {
        Sheet sheet;
        ASSERT_TRUE(sheet.Enter(1, 1, row.entry));
        EXPECT_EQ(sheet.Value(1, 1), (CellValue{row.kind, row.number, row.text})) << sim::Utf8(row.entry);
        sheet.Restyle({1, 2, 1, 2}, [](sim::CellStyle& style) { style.numberFormat = L"@"; });
        ASSERT_TRUE(sheet.Enter(1, 2, row.entry));
        EXPECT_EQ(sim::Utf8(sheet.Value(1, 2).text), sim::Utf8(row.entry));
    }
    Sheet sheet;
    EXPECT_FALSE(sheet.Enter(1, 1, L"=SUM("));
    ASSERT_TRUE(sheet.Enter(1, 1, L"2024-01-02"));
    EXPECT_EQ(sheet.Style(1, 1).numberFormat, L"yyyy/m/d");
}

TEST(Workbook, ReadsBackAsItWasWritten) {
    const test::TempDirectory folder;
    const std::vector<const wchar_t*> entries = {
        L"螺栓 \U0001F529", L"  a\tb\r\nc  ", L"<&>\"'",    L"_x0041_ _x",
        L"\x01\x1F\xFFFE",  L"12.25",         L"=A1&\"<\"", L"true"};
    Sheet sheet;
    for (std::size_t i = 0; i < entries.size(); ++i)
        ASSERT_TRUE(sheet.Enter(static_cast<int>(i) + 1, 2, entries[i]));
    bool dropped = false;
    ASSERT_TRUE(sheet.Merge({10, 1, 11, 3}, dropped));
    sheet.Restyle({2, 1, 3, 2}, [](sim::CellStyle& style) {
        style = {L"0.00\" <mm>\"", true, 12.5, 0x336699, sim::kAlignRight};
    });
    sheet.Restyle({1, 2, sim::kMaxSheetRow, 2},
                  [](sim::CellStyle& style) { style.alignment = sim::kAlignLeft; });
    ASSERT_TRUE(sim::WriteXlsx(sheet, folder / L"往返.xlsx"));
    const std::optional<Sheet> read = sim::ReadXlsx(folder / L"往返.xlsx");
    ASSERT_TRUE(read);
    for (int row = 1; row <= 12; ++row) {
        for (int column = 1; column <= 3; ++column) {
            EXPECT_EQ(read->Value(row, column), sheet.Value(row, column)) << row << ", " << column;
            EXPECT_EQ(read->Style(row, column), sheet.Style(row, column)) << row << ", " << column;
        }
    }
    EXPECT_EQ(read->Merged(), sheet.Merged());

    // One changed byte in the middle is noticed.
    std::ifstream stream(folder / L"往返.xlsx", std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    bytes[bytes.size() / 2] = static_cast<char>(~bytes[bytes.size() / 2]);
    EXPECT_FALSE(sim::ReadXlsx(folder.Write(L"damaged.xlsx", bytes)));
    EXPECT_FALSE(sim::ReadXlsx(folder.Write(L"short.xlsx", bytes.substr(0, bytes.size() / 2))));
    EXPECT_FALSE(sim::ReadXlsx(folder / L"absent.xlsx"));
}

TEST_F(Spreadsheet, RefusesWhatItDoesNotKnow) {
    EXPECT_EQ(application_.Put(382, Variant(false)), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(Range(L"A1").Call(111), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(application_.Call(572), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(sheet_.Get(197), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(sheet_.Get(197, Words(L"A1", L"B1", L"C1")), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(sheet_.Get(197, Words(1L)), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(application_.Put(558, Variant(L"maybe")), DISP_E_TYPEMISMATCH);
    EXPECT_EQ(workbook_.Part(485).Get(170, Words(2L)), DISP_E_BADINDEX);
    for (const wchar_t* area : {L"", L"A0", L"AAAA1", L"A1048577", L"A1B2", L"1A", L"A1,"}) {
        EXPECT_EQ(sheet_.Get(197, Words(area)), DISP_E_EXCEPTION) << sim::Utf8(area);
        EXPECT_EQ(sheet_.exception.scode, sim::kApplicationError);
    }
    EXPECT_EQ(Range(L"A1").Call(237), DISP_E_EXCEPTION);  // no whole columns or rows
    EXPECT_EQ(Range(L"A1").Put(1388, Variant(std::wstring(32768, L'x'))), DISP_E_EXCEPTION);
    EXPECT_EQ(Range(L"A1").Part(129).Put(97, Variant(57L)), DISP_E_EXCEPTION);
    // A range in several places takes formats and nothing else.
    EXPECT_EQ(Range(L"A1,C3:D4").Put(193, Variant(L"@")), S_OK);
    EXPECT_EQ(Range(L"A1,C3:D4").Put(1388, Variant(L"x")), DISP_E_EXCEPTION);
    Held corner = Range(L"D4");
    EXPECT_EQ(corner.Get(193), S_OK);
    EXPECT_STREQ(corner.Result().bstrVal, L"@");
    Quit();
    EXPECT_EQ(sheet_.Get(197, Words(L"A1")), DISP_E_EXCEPTION);
    EXPECT_EQ(server_->TakeProblems(), std::vector<std::string>());
}

TEST_F(Spreadsheet, SpreadsArraysOverTheRange) {
    Variant block = Variant::Block(2, 2);
    block.SetText(0, 0, L"a");
    block.SetText(0, 1, L"7");
    block.SetText(1, 0, L"");
    block.SetText(1, 1, L"=A1");
    Held range = Range(L"B2:D3");
    ASSERT_EQ(range.Put(1388, std::move(block)), S_OK);
    const auto texts = [&](const wchar_t* area) {
        Held cell = Range(area);
        EXPECT_EQ(cell.Get(1388), S_OK);
        const VARIANT& value = cell.Result();
        if (value.vt == VT_R8) return std::to_string(std::lround(value.dblVal));
        return value.vt == VT_BSTR ? sim::Utf8(value.bstrVal) : std::string();
    };
    EXPECT_EQ(texts(L"B2"), "a");
    EXPECT_EQ(texts(L"C2"), "7");
    EXPECT_EQ(texts(L"D2"), "#N/A");
    EXPECT_EQ(texts(L"B3"), "");
    EXPECT_EQ(texts(L"C3"), "=A1");

    ASSERT_EQ(range.Get(1388), S_OK);
    ASSERT_EQ(range.Result().vt, VT_ARRAY | VT_VARIANT);
    LONG upper = 0;
    EXPECT_EQ(SafeArrayGetUBound(range.Result().parray, 2, &upper), S_OK);
    EXPECT_EQ(upper, 3);
    // A larger block is cut, one value goes everywhere.
    ASSERT_EQ(Range(L"F1:G1").Put(1388, Variant::Block(5, 5)), S_OK);
    ASSERT_EQ(Range(L"F1:G2").Put(1388, Variant(L"x")), S_OK);
    EXPECT_EQ(texts(L"G2"), "x");
    Quit();
}

TEST_F(Spreadsheet, MergedCellsKeepTheFirstValueAndTakeNoOther) {
    ASSERT_EQ(Range(L"A1:C1").Put(1388, Variant(L"title")), S_OK);
    ASSERT_EQ(Range(L"A1:C1").Call(564), S_OK);
    EXPECT_EQ(server_->TakeProblems().size(), 1U);
    ASSERT_EQ(Range(L"B1").Put(1388, Variant(L"lost")), S_OK);
    Held covered = Range(L"B1");
    ASSERT_EQ(covered.Get(1388), S_OK);
    EXPECT_EQ(covered.Result().vt, VT_EMPTY);
    EXPECT_EQ(Range(L"C1:D1").Call(564), DISP_E_EXCEPTION);
    ASSERT_EQ(Range(L"A2:B2").Call(564), S_OK);  // empty cells: no question
    EXPECT_EQ(server_->TakeProblems(), std::vector<std::string>());
    Quit();
}

TEST_F(Spreadsheet, ReportsQuestionsAndWhatIsLeft) {
    EXPECT_EQ(server_->OpenObjects().size(), 3U);
    ASSERT_EQ(Range(L"A1").Put(1388, Variant(L"changed")), S_OK);
    ASSERT_EQ(application_.Call(302), S_OK);
    EXPECT_EQ(server_->TakeProblems().size(), 1U);

    Start();  // and let go at once
    EXPECT_EQ(server_->TakeProblems().size(), 1U);
    EXPECT_EQ(server_->RunningApplications(), 1);
    EXPECT_EQ(server_->Calls("Range.Value2"), 1);
}

}  // namespace
