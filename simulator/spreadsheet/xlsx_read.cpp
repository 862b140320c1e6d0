// Reading: cells with their formats, widths, heights and merged cells.

#include <array>
#include <charconv>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <utility>

#include "simulator/report/utf8.h"
#include "simulator/spreadsheet/xlsx.h"
#include "simulator/spreadsheet/xml_reader.h"
#include "simulator/spreadsheet/zip.h"

namespace sim {

namespace {

using Kind = XmlReader::Kind;

// ---- Styles

struct StyleTable {
    std::map<int, std::wstring> formats = {{0, kGeneralFormat}, {9, L"0%"}, {49, kTextFormat}};
    std::vector<CellStyle> fonts;
    std::vector<std::optional<unsigned>> fills;
    std::vector<CellStyle> cells;
};

std::optional<unsigned> ColourFromText(const std::string& text) {
    unsigned colour = 0;
    if (text.size() != 8) return std::nullopt;
    std::from_chars(text.data() + 2, text.data() + text.size(), colour, 16);
    return (colour & 0xFFU) << 16 | (colour & 0xFF00U) | colour >> 16;
}

int AlignmentFromText(const std::string& text) {
    if (text == "center") return kAlignCentre;
    if (text == "left") return kAlignLeft;
    return text == "right" ? kAlignRight : kAlignGeneral;
}

template <typename T>
T Entry(const std::vector<T>& table, int number) {
    const auto place = static_cast<std::size_t>(number);
    return place < table.size() ? table[place] : T();
}

void ReadCellStyle(const XmlReader& xml, StyleTable& table) {
    CellStyle style = Entry(table.fonts, xml.Number("fontId", 0));
    const auto format = table.formats.find(xml.Number("numFmtId", 0));
    if (format != table.formats.end()) style.numberFormat = format->second;
    style.fill = Entry(table.fills, xml.Number("fillId", 0));
    table.cells.push_back(std::move(style));
}

void ReadStyleTag(const XmlReader& xml, const std::string& section, StyleTable& table) {
    const std::string& name = xml.Name();
    if (name == "numFmt") table.formats[xml.Number("numFmtId", 0)] = Wide(xml.Attribute("formatCode"));
    if (name == "font") table.fonts.emplace_back();
    if (name == "fill") table.fills.emplace_back();
    if (section == "fonts" && name == "b") table.fonts.back().bold = true;
    if (section == "fonts" && name == "sz") table.fonts.back().size = xml.Real("val", 11);
    if (section == "fills" && name == "fgColor") table.fills.back() = ColourFromText(xml.Attribute("rgb"));
    if (section == "cellXfs" && name == "xf") ReadCellStyle(xml, table);
    if (section == "cellXfs" && name == "alignment")
        table.cells.back().alignment = AlignmentFromText(xml.Attribute("horizontal"));
}

StyleTable ReadStyles(const std::string& part) {
    StyleTable table;
    XmlReader xml(part);
    std::string section;
    for (Kind kind = xml.Next(); kind != Kind::kEnd; kind = xml.Next()) {
        if (kind != Kind::kOpen) continue;
        const std::string& name = xml.Name();
        if (name == "fonts" || name == "fills" || name == "cellXfs" || name == "cellStyleXfs") section = name;
        ReadStyleTag(xml, section, table);
    }
    return table;
}

// ---- Texts

// "_x0041_" stands for a character.
std::wstring Unescaped(const std::wstring& text) {
    std::wstring plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape =
            text.compare(i, 2, L"_x") == 0 && i + 6 < text.size() && text[i + 6] == L'_' &&
            text.substr(i + 2, 4).find_first_not_of(L"0123456789ABCDEFabcdef") == std::wstring::npos;
        plain += escape ? static_cast<wchar_t>(std::stoi(text.substr(i + 2, 4), nullptr, 16)) : text[i];
        if (escape) i += 6;
    }
    return plain;
}

std::vector<std::wstring> ReadSharedTexts(const std::string& part) {
    std::vector<std::wstring> texts;
    XmlReader xml(part);
    bool inText = false;
    for (Kind kind = xml.Next(); kind != Kind::kEnd; kind = xml.Next()) {
        if (kind == Kind::kOpen && xml.Name() == "si") texts.emplace_back();
        if (kind != Kind::kText) inText = kind == Kind::kOpen && xml.Name() == "t";
        if (kind == Kind::kText && inText) texts.back() += Unescaped(Wide(xml.Text()));
    }
    return texts;
}

// ---- The sheet

class SheetReader {
public:
    SheetReader(const StyleTable& styles, const std::vector<std::wstring>& texts)
        : styles_(styles), texts_(texts) {}

    Sheet Read(const std::string& part) {
        XmlReader xml(part);
        for (Kind kind = xml.Next(); kind != Kind::kEnd; kind = xml.Next()) {
            if (kind == Kind::kOpen) Open(xml);
            if (kind == Kind::kText) text_ += xml.Text();
            if (kind == Kind::kClose) Close(xml.Name());
        }
        return std::move(sheet_);
    }

private:
    void Open(const XmlReader& xml) {
        const std::string& name = xml.Name();
        text_.clear();
        if (name == "col") OpenColumns(xml);
        if (name == "row" && !xml.Attribute("ht").empty())
            sheet_.rowHeights[xml.Number("r", 1)] = xml.Real("ht", 0);
        if (name == "c") OpenCell(xml);
        if (name == "mergeCell") merged_ = AreaFromText(Wide(xml.Attribute("ref")));
    }

    void OpenColumns(const XmlReader& xml) {
        const CellArea area = {1, xml.Number("min", 1), kMaxSheetRow, xml.Number("max", 1)};
        if (!xml.Attribute("style").empty()) Style(area, xml.Number("style", 0));
        for (int column = area.left; xml.Number("customWidth", 0) == 1 && column <= area.right; ++column)
            sheet_.columnWidths[column] = xml.Real("width", 0);
    }

    void OpenCell(const XmlReader& xml) {
        cell_ = AreaFromText(Wide(xml.Attribute("r"))).value_or(CellArea());
        type_ = xml.Attribute("t");
        value_ = {};
        Style(cell_, xml.Number("s", 0));
    }

    void Style(const CellArea& area, int number) {
        const CellStyle style = Entry(styles_.cells, number);
        sheet_.Restyle(area, [&](CellStyle& changed) { changed = style; });
    }

    void Close(const std::string& name) {
        if (name == "f") value_ = {CellKind::kFormula, 0, L"=" + Unescaped(Wide(text_))};
        if (name == "v" && value_.kind != CellKind::kFormula) value_ = StoredValue();
        if (name == "t") value_ = {CellKind::kText, 0, value_.text + Unescaped(Wide(text_))};
        if (name == "c") sheet_.Put(cell_.top, cell_.left, std::exchange(value_, {}));
        bool dropped = false;
        if (name == "mergeCell" && merged_) (void)sheet_.Merge(*merged_, dropped);
        text_.clear();
    }

    CellValue StoredValue() const {
        double number = 0;
        std::from_chars(text_.data(), text_.data() + text_.size(), number);
        if (type_ == "b") return {CellKind::kTruth, number, {}};
        if (type_ == "e") return {CellKind::kError, 0, Wide(text_)};
        if (type_ == "s") return {CellKind::kText, 0, Entry(texts_, static_cast<int>(number))};
        if (type_ == "str") return {CellKind::kText, 0, Unescaped(Wide(text_))};
        return {CellKind::kNumber, number, {}};
    }

    const StyleTable& styles_;
    const std::vector<std::wstring>& texts_;
    Sheet sheet_;
    std::string text_;
    CellArea cell_;
    std::string type_;
    CellValue value_;
    std::optional<CellArea> merged_;
};

}  // namespace

std::optional<Sheet> ReadXlsx(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    std::optional<std::map<std::string, std::string>> parts = ZipContents(bytes);
    if (!parts || !parts->contains("xl/worksheets/sheet1.xml")) return std::nullopt;
    const StyleTable styles = ReadStyles((*parts)["xl/styles.xml"]);
    const std::vector<std::wstring> texts = ReadSharedTexts((*parts)["xl/sharedStrings.xml"]);
    return SheetReader(styles, texts).Read((*parts)["xl/worksheets/sheet1.xml"]);
}

}  // namespace sim
