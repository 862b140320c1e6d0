// Writing: plain Office Open XML with inline strings.

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <fstream>
#include <system_error>

#include <windows.h>

#include "simulator/report/utf8.h"
#include "simulator/spreadsheet/xlsx.h"
#include "simulator/spreadsheet/zip.h"

namespace sim {

namespace {

constexpr char kHead[] = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
constexpr int kTextFormatNumber = 49;
constexpr std::size_t kFirstOwnFormat = 164;
constexpr std::size_t kStandardFills = 2;

constexpr char kContentTypes[] =
    "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">"
    "<Default Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
    "<Default Extension=\"xml\" ContentType=\"application/xml\"/>"
    "<Override PartName=\"/xl/workbook.xml\" "
    "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml\"/>"
    "<Override PartName=\"/xl/worksheets/sheet1.xml\" "
    "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml\"/>"
    "<Override PartName=\"/xl/styles.xml\" "
    "ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml.styles+xml\"/>"
    "</Types>";
constexpr char kRelations[] =
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
    "<Relationship Id=\"rId1\" "
    "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/officeDocument\" "
    "Target=\"xl/workbook.xml\"/></Relationships>";
constexpr char kWorkbook[] =
    "<workbook xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
    "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">"
    "<sheets><sheet name=\"Sheet1\" sheetId=\"1\" r:id=\"rId1\"/></sheets></workbook>";
constexpr char kWorkbookRelations[] =
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
    "<Relationship Id=\"rId1\" "
    "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/worksheet\" "
    "Target=\"worksheets/sheet1.xml\"/>"
    "<Relationship Id=\"rId2\" "
    "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/styles\" "
    "Target=\"styles.xml\"/></Relationships>";

std::string Digits(double number) {
    std::array<char, 64> digits = {};
    return {digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr};
}

// True where the text itself reads like one of the escapes below: "_x0041_".
bool IsEscape(std::wstring_view text) {
    constexpr std::size_t kSize = 7;
    if (text.size() < kSize || text.substr(0, 2) != L"_x" || text[kSize - 1] != L'_') return false;
    return text.substr(2, 4).find_first_not_of(L"0123456789ABCDEFabcdef") == std::wstring_view::npos;
}

// Characters that XML cannot hold are written as _xHHHH_.
void AddCharacter(std::wstring& xml, wchar_t c) {
    const bool plain = (c >= 0x20 && c < 0xFFFE) || c == L'\t' || c == L'\n';
    if (c == L'&')
        xml += L"&amp;";
    else if (c == L'<')
        xml += L"&lt;";
    else if (c == L'>')
        xml += L"&gt;";
    else if (c == L'"')
        xml += L"&quot;";
    else if (plain)
        xml += c;
    else {
        std::array<wchar_t, 8> escape = {};
        std::swprintf(escape.data(), escape.size(), L"_x%04X_", static_cast<unsigned>(c));
        xml += escape.data();
    }
}

std::string Escaped(std::wstring_view text) {
    std::wstring xml;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (IsEscape(text.substr(i))) xml += L"_x005F";
        AddCharacter(xml, text[i]);
    }
    return Utf8(xml);
}

// ---- Styles

std::string FontXml(const CellStyle& style) {
    return std::string("<font>") + (style.bold ? "<b/>" : "") + "<sz val=\"" + Digits(style.size) +
           "\"/><name val=\"宋体\"/><family val=\"2\"/></font>";
}

std::string FillXml(const CellStyle& style) {
    if (!style.fill) return "<fill><patternFill patternType=\"none\"/></fill>";
    const unsigned colour = *style.fill;
    std::array<char, 16> digits = {};
    std::snprintf(digits.data(), digits.size(), "FF%02X%02X%02X", colour & 0xFFU, colour >> 8 & 0xFFU,
                  colour >> 16 & 0xFFU);
    return "<fill><patternFill patternType=\"solid\"><fgColor rgb=\"" + std::string(digits.data()) +
           "\"/><bgColor indexed=\"64\"/></patternFill></fill>";
}

std::string FormatNumber(const CellStyle& style, std::size_t number) {
    if (style.numberFormat == kGeneralFormat) return "0";
    return std::to_string(style.numberFormat == kTextFormat ? kTextFormatNumber : kFirstOwnFormat + number);
}

std::string AlignmentXml(const CellStyle& style) {
    switch (style.alignment) {
        case kAlignCentre:
            return "<alignment horizontal=\"center\"/>";
        case kAlignLeft:
            return "<alignment horizontal=\"left\"/>";
        case kAlignRight:
            return "<alignment horizontal=\"right\"/>";
        default:
            return "";
    }
}

std::string FormatsXml(const std::vector<CellStyle>& styles) {
    std::string formats;
    std::size_t count = 0;
    for (std::size_t i = 0; i < styles.size(); ++i) {
        const std::wstring& format = styles[i].numberFormat;
        if (format == kGeneralFormat || format == kTextFormat) continue;
        formats += "<numFmt numFmtId=\"" + FormatNumber(styles[i], i) + "\" formatCode=\"" + Escaped(format) +
                   "\"/>";
        ++count;
    }
    return count == 0 ? "" : "<numFmts count=\"" + std::to_string(count) + "\">" + formats + "</numFmts>";
}

// Each style has a font and a fill of its own, which keeps their numbers alike.
std::string StylesXml(const std::vector<CellStyle>& styles) {
    std::string fonts;
    std::string fills =
        "<fill><patternFill patternType=\"none\"/></fill><fill><patternFill patternType=\"gray125\"/></fill>";
    std::string formats;
    for (std::size_t i = 0; i < styles.size(); ++i) {
        const CellStyle& style = styles[i];
        fonts += FontXml(style);
        fills += FillXml(style);
        const std::string alignment = AlignmentXml(style);
        formats += "<xf numFmtId=\"" + FormatNumber(style, i) + "\" fontId=\"" + std::to_string(i) +
                   "\" fillId=\"" + std::to_string(style.fill ? i + kStandardFills : 0) +
                   "\" borderId=\"0\" xfId=\"0\" applyNumberFormat=\"1\" applyFont=\"1\" applyFill=\"1\"" +
                   (alignment.empty() ? "/>" : " applyAlignment=\"1\">" + alignment + "</xf>");
    }
    const std::string count = std::to_string(styles.size());
    return "<styleSheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">" +
           FormatsXml(styles) + "<fonts count=\"" + count + "\">" + fonts + "</fonts><fills count=\"" +
           std::to_string(styles.size() + kStandardFills) + "\">" + fills +
           "</fills><borders count=\"1\"><border><left/><right/><top/><bottom/><diagonal/></border></borders>"
           "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/>"
           "</cellStyleXfs><cellXfs count=\"" +
           count + "\">" + formats +
           "</cellXfs><cellStyles count=\"1\"><cellStyle name=\"Normal\" xfId=\"0\" builtinId=\"0\"/>"
           "</cellStyles></styleSheet>";
}

// ---- The sheet

std::string ColumnsXml(const Sheet& sheet) {
    std::map<int, double> widths = sheet.columnWidths;
    for (const auto& [column, style] : sheet.ColumnStyles()) widths.emplace(column, kStandardWidth);
    if (widths.empty()) return "";
    std::string xml = "<cols>";
    for (const auto& [column, width] : widths) {
        const auto style = sheet.ColumnStyles().find(column);
        const std::string number = std::to_string(column);
        xml += "<col min=\"" + number + "\"";
        xml += " max=\"" + number + "\"";
        xml += " width=\"" + Digits(width) + "\"";
        if (style != sheet.ColumnStyles().end()) xml += " style=\"" + std::to_string(style->second) + "\"";
        xml += sheet.columnWidths.contains(column) ? " bestFit=\"1\" customWidth=\"1\"/>" : "/>";
    }
    return xml + "</cols>";
}

std::string ValueXml(const CellValue& value) {
    switch (value.kind) {
        case CellKind::kNumber:
            return "><v>" + Digits(value.number) + "</v></c>";
        case CellKind::kTruth:
            return std::string(" t=\"b\"><v>") + (value.number != 0 ? "1" : "0") + "</v></c>";
        case CellKind::kText:
            return " t=\"inlineStr\"><is><t xml:space=\"preserve\">" + Escaped(value.text) + "</t></is></c>";
        case CellKind::kFormula:
            return "><f>" + Escaped(std::wstring_view(value.text).substr(1)) + "</f></c>";
        case CellKind::kError:
            return " t=\"e\"><v>" + Escaped(value.text) + "</v></c>";
        case CellKind::kEmpty:
            break;
    }
    return "/>";
}

std::string RowXml(const Sheet& sheet, int row) {
    std::string xml = "<row r=\"" + std::to_string(row) + "\"";
    const auto height = sheet.rowHeights.find(row);
    if (height != sheet.rowHeights.end()) xml += " ht=\"" + Digits(height->second) + "\" customHeight=\"1\"";
    xml += ">";
    for (int column = 1; column <= sheet.LastColumn(row); ++column)
        xml += "<c r=\"" + Utf8(AreaText({row, column, row, column})) + "\" s=\"" +
               std::to_string(sheet.StyleNumber(row, column)) + "\"" + ValueXml(sheet.Value(row, column));
    return xml + "</row>";
}

std::string SheetXml(const Sheet& sheet) {
    std::string xml =
        "<worksheet xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\">"
        "<sheetFormatPr defaultRowHeight=\"15\"/>" +
        ColumnsXml(sheet) + "<sheetData>";
    for (int row = 1; row <= sheet.LastRow(); ++row) xml += RowXml(sheet, row);
    xml += "</sheetData>";
    if (!sheet.Merged().empty()) {
        xml += "<mergeCells count=\"" + std::to_string(sheet.Merged().size()) + "\">";
        for (const CellArea& area : sheet.Merged())
            xml += "<mergeCell ref=\"" + Utf8(AreaText(area)) + "\"/>";
        xml += "</mergeCells>";
    }
    return xml + "</worksheet>";
}

// A file that somebody holds open refuses to be replaced, as it should.
bool WriteWhole(const std::filesystem::path& file, const std::string& bytes) {
    std::filesystem::path draft = file;
    draft += L".part";
    {
        std::ofstream stream(draft, std::ios::binary);
        stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        stream.flush();
        if (!stream) return false;
    }
    if (MoveFileExW(draft.c_str(), file.c_str(), MOVEFILE_REPLACE_EXISTING)) return true;
    std::error_code error;
    std::filesystem::remove(draft, error);
    return false;
}

}  // namespace

bool WriteXlsx(const Sheet& sheet, const std::filesystem::path& file) {
    const std::vector<ZipEntry> parts = {
        {"[Content_Types].xml", std::string(kHead) + kContentTypes},
        {"_rels/.rels", std::string(kHead) + kRelations},
        {"xl/workbook.xml", std::string(kHead) + kWorkbook},
        {"xl/_rels/workbook.xml.rels", std::string(kHead) + kWorkbookRelations},
        {"xl/styles.xml", std::string(kHead) + StylesXml(sheet.Styles())},
        {"xl/worksheets/sheet1.xml", std::string(kHead) + SheetXml(sheet)},
    };
    return WriteWhole(file, ZipBytes(parts));
}

}  // namespace sim
