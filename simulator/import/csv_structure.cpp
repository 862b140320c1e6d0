#include "simulator/import/csv_structure.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <map>
#include <optional>
#include <string_view>

#include "simulator/cad/folder_index.h"
#include "simulator/import/import_error.h"
#include "simulator/import/model_names.h"
#include "simulator/report/utf8.h"

namespace sim {

namespace {

// Of one row: more is a slip of the pen.
constexpr int kMostPlaced = 10000;
constexpr int kDeepestLevel = 1000;
constexpr std::size_t kNoColumn = static_cast<std::size_t>(-1);

struct CsvRow {
    std::size_t line = 0;
    std::vector<std::wstring> fields;

    // Without blanks around it; empty beyond the row's end.
    std::wstring_view Field(std::size_t column) const {
        if (column >= fields.size()) return {};
        const std::wstring_view text = fields[column];
        const std::size_t begin = text.find_first_not_of(L" \t");
        return begin == text.npos ? std::wstring_view()
                                  : text.substr(begin, text.find_last_not_of(L" \t") + 1 - begin);
    }
};

std::wstring CsvText(const std::filesystem::path& file, const std::string& label) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw ImportError(label + ": cannot be read");
    std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.erase(0, 3);
    if (IsUtf8(bytes) && bytes.find('\0') == std::string::npos) return Wide(bytes);
    std::optional<std::wstring> text = FromCodePage(bytes, kGbkPage);
    if (!text || text->find(L'\0') != std::wstring::npos) throw ImportError(label, 1, "text in UTF-8 or GBK");
    return *std::move(text);
}

class CsvReader {
public:
    CsvReader(std::wstring_view text, const std::string& label) : text_(text), label_(label) {
        // The separator is the first one that stands in the titles.
        const std::size_t first = text_.find_first_of(L",;\t\n");
        if (first != text_.npos && text_[first] != L'\n') separator_ = text_[first];
    }

    // False at the end.
    bool Next(CsvRow& row) {
        row = {line_, {}};
        if (at_ >= text_.size()) return false;
        for (;;) {
            row.fields.push_back(Field());
            if (at_ < text_.size() && text_[at_] == separator_) {
                ++at_;
                continue;
            }
            if (at_ < text_.size() && text_[at_] == L'\r') ++at_;
            if (at_ < text_.size() && text_[at_] != L'\n')
                throw ImportError(label_, line_, "a separator or the end of the line after a quote");
            if (at_ < text_.size()) ++at_;
            ++line_;
            return true;
        }
    }

private:
    std::wstring Field() {
        if (at_ == text_.size() || text_[at_] != L'"') {
            const std::size_t begin = at_;
            while (at_ < text_.size() && text_[at_] != separator_ && text_[at_] != L'\n' &&
                   text_[at_] != L'\r')
                ++at_;
            return std::wstring(text_.substr(begin, at_ - begin));
        }
        const std::size_t opened = line_;
        std::wstring field;
        for (++at_;; ++at_) {
            if (at_ == text_.size()) throw ImportError(label_, opened, "a closing quote");
            if (text_[at_] == L'"' && text_.substr(at_ + 1, 1) != L"\"") break;
            if (text_[at_] == L'"') ++at_;
            if (text_[at_] == L'\n') ++line_;
            field += text_[at_];
        }
        ++at_;
        return field;
    }

    std::wstring_view text_;
    const std::string& label_;
    wchar_t separator_ = L',';
    std::size_t at_ = 0;
    std::size_t line_ = 1;
};

struct TypeWord {
    std::wstring_view text;
    ModelKind kind;
    ModelSubtype subtype;
};

constexpr std::array<TypeWord, 12> kTypeWords = {{
    {L"PART", ModelKind::kPart, ModelSubtype::kSolidPart},
    {L"ASSEMBLY", ModelKind::kAssembly, ModelSubtype::kDesignAssembly},
    {L"SHEETMETAL", ModelKind::kPart, ModelSubtype::kSheetmetal},
    {L"SKELETON", ModelKind::kPart, ModelSubtype::kSkeleton},
    {L"PRT", ModelKind::kPart, ModelSubtype::kSolidPart},
    {L"ASM", ModelKind::kAssembly, ModelSubtype::kDesignAssembly},
    {L"零件", ModelKind::kPart, ModelSubtype::kSolidPart},
    {L"组件", ModelKind::kAssembly, ModelSubtype::kDesignAssembly},
    {L"装配", ModelKind::kAssembly, ModelSubtype::kDesignAssembly},
    {L"钣金", ModelKind::kPart, ModelSubtype::kSheetmetal},
    {L"钣金件", ModelKind::kPart, ModelSubtype::kSheetmetal},
    {L"骨架", ModelKind::kPart, ModelSubtype::kSkeleton},
}};

// What stands in which column; kNoColumn: in none.
struct CsvColumns {
    std::size_t level, parent, name, type, number;
    std::vector<std::pair<std::size_t, std::wstring>> parameters;
};

class CsvStructureReader {
public:
    explicit CsvStructureReader(const std::filesystem::path& file) {
        structure_.file = Utf8(file.filename().wstring());
        text_ = CsvText(file, structure_.file);
    }

    ImportedStructure Read() {
        CsvReader reader(text_, structure_.file);
        CsvRow row;
        if (!reader.Next(row)) Fail(1, "a first line with the titles of the columns");
        ReadTitles(row);
        while (reader.Next(row)) {
            const bool isBlank = std::ranges::all_of(row.fields, [](const std::wstring& field) {
                return field.find_first_not_of(L" \t") == field.npos;
            });
            if (!isBlank) ReadRow(row);
        }
        if (structure_.products.empty()) Fail(row.line, "a row with a model");
        columns_.level == kNoColumn ? PlaceByParent() : PlaceByLevel();
        SettleKinds();
        return std::move(structure_);
    }

private:
    // A row that places a model; `above` is a row's place, kNoColumn: none.
    struct Place {
        std::size_t product;
        int count;
        int level;
        std::wstring parent;
        std::size_t line;
        std::vector<std::size_t> below = {};
    };

    [[noreturn]] void Fail(std::size_t line, const std::string& expected) const {
        throw ImportError(structure_.file, line, expected);
    }

    void ReadTitles(const CsvRow& row) {
        std::vector<std::wstring> titles;
        for (std::size_t i = 0; i < row.fields.size(); ++i) titles.push_back(UpperName(row.Field(i)));
        const auto find = [&titles](std::initializer_list<std::wstring_view> words) {
            for (const std::wstring_view word : words)
                if (const auto found = std::ranges::find(titles, word); found != titles.end())
                    return static_cast<std::size_t>(found - titles.begin());
            return kNoColumn;
        };
        columns_ = {find({L"LEVEL", L"层级"}),
                    find({L"PARENT", L"上级"}),
                    find({L"NAME", L"模型名称", L"名称"}),
                    find({L"TYPE", L"类型"}),
                    find({L"NUMBER", L"模型数量", L"数量"}),
                    {}};
        if (columns_.name == kNoColumn) Fail(row.line, "a column \"name\"");
        if ((columns_.level == kNoColumn) == (columns_.parent == kNoColumn))
            Fail(row.line, "either a column \"level\" or a column \"parent\"");
        for (std::size_t i = 0; i < titles.size(); ++i) AddParameterColumn(row, i);
    }

    void AddParameterColumn(const CsvRow& row, std::size_t column) {
        const std::array<std::size_t, 5> others = {columns_.level, columns_.parent, columns_.name,
                                                   columns_.type, columns_.number};
        if (std::ranges::find(others, column) != others.end() || row.Field(column).empty()) return;
        std::wstring name = ParameterName(row.Field(column));
        const bool isTaken = std::ranges::any_of(columns_.parameters, [&](const auto& other) {
            return UpperName(other.second) == UpperName(name);
        });
        if (name.empty() || isTaken)
            Fail(row.line, "a name of its own for the parameter in column " + std::to_string(column + 1));
        if (name != row.Field(column))
            structure_.notes.push_back("the parameter \"" + Utf8(row.Field(column)) + "\" is called " +
                                       Utf8(name));
        columns_.parameters.emplace_back(column, std::move(name));
    }

    // A whole number; `usual` for an empty field.
    int NumberIn(const CsvRow& row, std::size_t column, int usual, int least, int most) const {
        const std::string text = Utf8(row.Field(column));
        if (text.empty()) return usual;
        int number = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || end != text.data() + text.size() || number < least || number > most)
            Fail(row.line, "a whole number from " + std::to_string(least) + " to " + std::to_string(most) +
                               ", not \"" + text + "\"");
        return number;
    }

    void ReadRow(const CsvRow& row) {
        if (row.Field(columns_.name).empty()) Fail(row.line, "the name of a model");
        Place place{ProductOf(row), NumberIn(row, columns_.number, 1, 1, kMostPlaced), 0,
                    UpperName(row.Field(columns_.parent)), row.line};
        if (columns_.level != kNoColumn) {
            if (row.Field(columns_.level).empty()) Fail(row.line, "a level");
            place.level = NumberIn(row, columns_.level, 0, 0, kDeepestLevel);
        }
        places_.push_back(std::move(place));
        ImportedProduct& product = structure_.products[places_.back().product];
        for (const auto& [column, name] : columns_.parameters) SetParameter(product, row, column, name);
    }

    // The first value counts.
    void SetParameter(ImportedProduct& product, const CsvRow& row, std::size_t column,
                      const std::wstring& name) {
        const std::wstring value(row.Field(column));
        if (value.empty()) return;
        const auto known =
            std::ranges::find(product.parameters, name, &std::pair<std::wstring, std::wstring>::first);
        if (known == product.parameters.end()) {
            product.parameters.emplace_back(name, value);
        } else if (known->second != value) {
            structure_.notes.push_back("line " + std::to_string(row.line) + ": " + Utf8(name) + " of " +
                                       Utf8(product.name) + " stays \"" + Utf8(known->second) +
                                       "\", as it is above");
        }
    }

    std::size_t ProductOf(const CsvRow& row) {
        std::wstring name(row.Field(columns_.name));
        std::wstring type = UpperName(row.Field(columns_.type));
        const std::optional<ModelFile> file = ParseModelFileName(name);
        if (file && (file->kind == ModelKind::kPart || file->kind == ModelKind::kAssembly)) {
            name = file->name;
            if (type.empty()) type = UpperName(file->extension);
        }
        const auto word = std::ranges::find(kTypeWords, type, &TypeWord::text);
        if (!type.empty() && word == kTypeWords.end())
            Fail(row.line, "the type part, assembly, sheetmetal or skeleton, not \"" + Utf8(type) + "\"");
        const bool isTyped = word != kTypeWords.end();
        const auto [known, isNew] =
            products_.try_emplace({UpperName(name), isTyped ? std::optional(word->kind) : std::nullopt},
                                  structure_.products.size());
        if (isNew) {
            ImportedProduct product;
            product.name = std::move(name);
            product.line = row.line;
            if (isTyped) {
                product.kind = word->kind;
                product.subtype = word->subtype;
            }
            structure_.products.push_back(std::move(product));
            isTyped_.push_back(isTyped);
        }
        return known->second;
    }

    void PlaceByParent() {
        for (const Place& place : places_) {
            if (place.parent.empty()) continue;
            const std::optional<ModelFile> file = ParseModelFileName(place.parent);
            const std::wstring name = file ? file->name : place.parent;
            auto parent = products_.find({name, ModelKind::kAssembly});
            if (parent == products_.end()) parent = products_.find({name, std::nullopt});
            if (parent == products_.end())
                Fail(place.line, "a parent that is the name of an assembly in another row, not \"" +
                                     Utf8(place.parent) + "\"");
            structure_.products[parent->second].components.push_back(
                {place.product, place.count, IdentityMatrix()});
        }
    }

    // Where a model is listed again, its components may be left out, but they may not be other ones.
    void PlaceByLevel() {
        std::vector<std::size_t> above;  // the last row of each level
        const int base = places_.front().level;
        for (std::size_t i = 0; i < places_.size(); ++i) {
            const int level = places_[i].level - base;
            if (level < 0 || static_cast<std::size_t>(level) > above.size())
                Fail(places_[i].line, "a level from " + std::to_string(base) + " to " +
                                          std::to_string(static_cast<std::size_t>(base) + above.size()));
            above.resize(static_cast<std::size_t>(level));
            if (!above.empty()) places_[above.back()].below.push_back(i);
            above.push_back(i);
        }
        std::map<std::size_t, const Place*> listed;
        for (const Place& place : places_) {
            if (place.below.empty()) continue;
            const auto [first, isNew] = listed.try_emplace(place.product, &place);
            if (!isNew && !AreSame(*first->second, place))
                Fail(place.line, "the components that " + Utf8(structure_.products[place.product].name) +
                                     " has in line " + std::to_string(first->second->line));
            if (!isNew) continue;
            for (const std::size_t i : place.below)
                structure_.products[place.product].components.push_back(
                    {places_[i].product, places_[i].count, IdentityMatrix()});
        }
    }

    bool AreSame(const Place& one, const Place& other) const {
        return std::ranges::equal(one.below, other.below, [this](std::size_t a, std::size_t b) {
            return places_[a].product == places_[b].product && places_[a].count == places_[b].count;
        });
    }

    void SettleKinds() {
        for (std::size_t i = 0; i < structure_.products.size(); ++i) {
            ImportedProduct& product = structure_.products[i];
            if (product.components.empty()) continue;
            if (isTyped_[i] && product.kind != ModelKind::kAssembly)
                Fail(product.line, "the type assembly: " + Utf8(product.name) + " has components");
            product.kind = ModelKind::kAssembly;
            product.subtype = ModelSubtype::kDesignAssembly;
        }
    }

    std::wstring text_;
    ImportedStructure structure_;
    CsvColumns columns_{};
    std::vector<Place> places_;
    // By the name in upper case and the kind, if the row says so.
    std::map<std::pair<std::wstring, std::optional<ModelKind>>, std::size_t> products_;
    std::vector<bool> isTyped_;
};

}  // namespace

ImportedStructure ReadCsvStructure(const std::filesystem::path& file) {
    return CsvStructureReader(file).Read();
}

}  // namespace sim
