#include "simulator/layout/res_file.h"

#include <algorithm>
#include <cmath>
#include <cwchar>
#include <set>
#include <utility>

#include "simulator/layout/res_check.h"
#include "simulator/layout/text_file.h"
#include "simulator/report/utf8.h"

namespace sim {

namespace {

struct KindWord {
    ComponentKind kind;
    std::string_view word;
};

constexpr KindWord kKinds[] = {
    {ComponentKind::kCascadeButton, "CascadeButton"},
    {ComponentKind::kCheckButton, "CheckButton"},
    {ComponentKind::kDrawingArea, "DrawingArea"},
    {ComponentKind::kInputPanel, "InputPanel"},
    {ComponentKind::kLabel, "Label"},
    {ComponentKind::kLayout, "SubLayout"},
    {ComponentKind::kLayout, "Layout"},
    {ComponentKind::kList, "List"},
    {ComponentKind::kMenuBar, "MenuBar"},
    {ComponentKind::kMenuPane, "MenuPane"},
    {ComponentKind::kOptionMenu, "OptionMenu"},
    {ComponentKind::kProgressBar, "ProgressBar"},
    {ComponentKind::kPushButton, "PushButton"},
    {ComponentKind::kRadioGroup, "RadioGroup"},
    {ComponentKind::kSeparator, "Separator"},
    {ComponentKind::kSlider, "Slider"},
    {ComponentKind::kSpinBox, "SpinBox"},
    {ComponentKind::kTab, "Tab"},
    {ComponentKind::kTable, "Table"},
    {ComponentKind::kTextArea, "TextArea"},
    {ComponentKind::kThumbWheel, "ThumbWheel"},
    {ComponentKind::kTree, "Tree"},
};

constexpr std::pair<ContainerType, std::string_view> kContainers[] = {
    {ContainerType::kDialog, "Dialog"},     {ContainerType::kLayout, "Layout"},
    {ContainerType::kMenuPane, "MenuPane"}, {ContainerType::kCascadeButton, "CascadeButton"},
    {ContainerType::kTable, "TableLayout"}, {ContainerType::kTree, "Tree"},
};

constexpr double kLargestNumber = 2147483647;
constexpr int kDeepestGrid = 50;

bool IsName(std::wstring_view word) {
    return !word.empty() && std::all_of(word.begin(), word.end(), [](wchar_t c) {
        return (c >= L'0' && c <= L'9') || (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z') || c == L'_';
    });
}

// ---- Reading

struct SyntaxError {
    ResPlace place;
    std::string expected;
};

struct Token {
    enum class Type { kOpen, kClose, kText, kWord, kEnd };
    Type type = Type::kEnd;
    std::wstring text;
    ResPlace place;
};

class Lexer {
public:
    explicit Lexer(std::wstring text) : text_(std::move(text)) { Advance(); }

    const Token& Peek() const { return token_; }
    Token Take() {
        Token taken = std::exchange(token_, {});
        Advance();
        return taken;
    }

private:
    void Advance() {
        while (at_ < text_.size() && IsBetweenTokens()) Next();
        token_ = {Token::Type::kEnd, {}, place_};
        if (at_ == text_.size()) return;
        if (text_[at_] == L'(' || text_[at_] == L')') {
            token_.type = text_[at_] == L'(' ? Token::Type::kOpen : Token::Type::kClose;
            Next();
        } else if (text_[at_] == L'"') {
            ReadText();
        } else {
            ReadWord();
        }
    }

    // Blanks, and lines that begin with an exclamation mark.
    bool IsBetweenTokens() {
        if (place_.column == 1) inComment_ = text_[at_] == L'!';
        return inComment_ || text_[at_] == L' ' || text_[at_] == L'\t' || text_[at_] == L'\n';
    }

    void ReadText() {
        token_.type = Token::Type::kText;
        Next();
        while (at_ < text_.size() && text_[at_] != L'"') {
            if (text_[at_] == L'\n') throw SyntaxError{token_.place, "a closing quote on the same line"};
            if (text_[at_] != L'\\') {
                token_.text += text_[at_];
                Next();
                continue;
            }
            const ResPlace escape = place_;
            Next();
            const wchar_t code = at_ < text_.size() ? text_[at_] : L'\0';
            if (code != L'"' && code != L'\\' && code != L'n')
                throw SyntaxError{escape, "\\\", \\\\ or \\n after a backslash"};
            token_.text += code == L'n' ? L'\n' : code;
            Next();
        }
        if (at_ == text_.size()) throw SyntaxError{token_.place, "a closing quote"};
        Next();
    }

    void ReadWord() {
        token_.type = Token::Type::kWord;
        while (at_ < text_.size() &&
               std::wstring_view(L" \t\n()\"").find(text_[at_]) == std::wstring_view::npos) {
            token_.text += text_[at_];
            Next();
        }
    }

    void Next() {
        const wchar_t passed = text_[at_++];
        if (passed == L'\n') {
            ++place_.line;
            place_.column = 1;
        } else if (passed < 0xDC00 ||
                   passed > 0xDFFF) {  // the second half of a pair is no character of its own
            ++place_.column;
        }
    }

    std::wstring text_;
    std::size_t at_ = 0;
    ResPlace place_{1, 1};
    bool inComment_ = false;
    Token token_;
};

std::string Found(const Token& token) {
    switch (token.type) {
        case Token::Type::kOpen:
            return ", found (";
        case Token::Type::kClose:
            return ", found )";
        case Token::Type::kText:
            return ", found a text";
        case Token::Type::kWord:
            return ", found " + Utf8(token.text);
        case Token::Type::kEnd:
            return ", found the end of the file";
    }
    return {};
}

class Reader {
public:
    Reader(std::wstring text, ResFindings& findings) : lexer_(std::move(text)), findings_(findings) {}

    std::vector<ResContainer> ReadFile() {
        std::vector<ResContainer> containers;
        containers.push_back(ReadContainer());
        while (lexer_.Peek().type != Token::Type::kEnd) containers.push_back(ReadContainer());
        return containers;
    }

private:
    [[noreturn]] static void Fail(const Token& token, const std::string& expected) {
        throw SyntaxError{token.place, expected + Found(token)};
    }

    void Open(const std::string& what) {
        if (lexer_.Peek().type != Token::Type::kOpen) Fail(lexer_.Peek(), "( before " + what);
        lexer_.Take();
    }

    void Close(const std::string& what) {
        if (lexer_.Peek().type != Token::Type::kClose) Fail(lexer_.Peek(), ") after " + what);
        lexer_.Take();
    }

    Token TakeWord(const std::string& what) {
        if (lexer_.Peek().type != Token::Type::kWord) Fail(lexer_.Peek(), what);
        return lexer_.Take();
    }

    Token TakeKeyword(std::string_view keyword) {
        Token word = TakeWord("the keyword " + std::string(keyword));
        if (Utf8(word.text) != keyword) Fail(word, "the keyword " + std::string(keyword));
        return word;
    }

    std::string TakeName(const std::string& what) {
        const Token word = TakeWord(what);
        if (!IsName(word.text)) Fail(word, what + " of letters, digits and underscores");
        return Utf8(word.text);
    }

    ResContainer ReadContainer() {
        ResContainer container;
        container.place = lexer_.Peek().place;
        Open("a container statement");
        const Token word = TakeWord("a container type");
        const std::string typeWord = Utf8(word.text);
        const auto* type = std::find_if(std::begin(kContainers), std::end(kContainers),
                                        [&](const auto& entry) { return entry.second == typeWord; });
        if (type == std::end(kContainers))
            Fail(word, "Dialog, Layout, TableLayout, MenuPane, CascadeButton or Tree");
        container.type = type->first;
        container.name = TakeName("the container's name");
        ReadComponents(container);
        ReadResources(container);
        Close("the statement of " + container.name);
        return container;
    }

    void ReadComponents(ResContainer& container) {
        Open("Components");
        TakeKeyword("Components");
        while (lexer_.Peek().type == Token::Type::kOpen) {
            lexer_.Take();
            ResComponent component;
            const Token word = TakeWord("a component type");
            const std::string kindWord = Utf8(word.text);
            const auto* kind = std::find_if(std::begin(kKinds), std::end(kKinds),
                                            [&](const KindWord& k) { return k.word == kindWord; });
            if (kind == std::end(kKinds)) Fail(word, "a component type");
            component.kind = kind->kind;
            component.place = lexer_.Peek().place;
            component.name = TakeName("a component name");
            while (lexer_.Peek().type == Token::Type::kWord) {
                const Token child = lexer_.Peek();
                if (component.kind != ComponentKind::kTab && component.kind != ComponentKind::kMenuBar &&
                    component.kind != ComponentKind::kCascadeButton)
                    Fail(child, ") after " + component.name);
                component.children.push_back(TakeName("a child's name"));
            }
            Close("the component " + component.name);
            container.components.push_back(std::move(component));
        }
        Close("the components");
    }

    void ReadResources(ResContainer& container) {
        Open("Resources");
        TakeKeyword("Resources");
        while (lexer_.Peek().type == Token::Type::kOpen) {
            lexer_.Take();
            const Token word = TakeWord("an attribute");
            if (word.text == L".Layout") {
                Open("Grid");
                container.grid = ReadGrid();
                Close("the layout");
                break;  // the layout is the last resource
            }
            ReadAssignment(container, word);
        }
        Close("the resources; .Layout is the last of them");
    }

    void ReadAssignment(ResContainer& container, const Token& word) {
        const std::size_t dot = word.text.find(L'.');
        if (dot == std::wstring::npos || !IsName(word.text.substr(dot + 1)))
            Fail(word, "component.Attribute or .Attribute");
        const std::string owner = Utf8(word.text.substr(0, dot));
        const std::string attribute = Utf8(word.text.substr(dot + 1));
        ResAttribute read;
        read.place = word.place;
        while (lexer_.Peek().type != Token::Type::kClose) read.values.push_back(ReadValue());
        lexer_.Take();

        ResAttributes* attributes = owner.empty() ? &container.attributes : nullptr;
        for (ResComponent& component : container.components)
            if (!owner.empty() && component.name == owner) attributes = &component.attributes;
        if (attributes == nullptr) {
            findings_.emplace_back(word.place, "a component of " + container.name + ", found " + owner);
            return;
        }
        if (!attributes->try_emplace(attribute, std::move(read)).second)
            findings_.emplace_back(word.place, "one value a component and attribute, " + Utf8(word.text) +
                                                   " has been given already");
    }

    ResValue ReadValue() {
        const Token token = lexer_.Take();
        ResValue value;
        value.place = token.place;
        value.text = token.text;
        if (token.type == Token::Type::kText) return value;
        if (token.type != Token::Type::kWord) Fail(token, "a value");
        if (token.text == L"True" || token.text == L"False") {
            value.type = ResValue::Type::kBoolean;
            value.number = token.text == L"True" ? 1 : 0;
            return value;
        }
        const bool numeric = token.text.find_first_not_of(L"+-0123456789.eE") == std::wstring::npos &&
                             token.text.find_first_of(L"0123456789") != std::wstring::npos;
        if (numeric) {
            wchar_t* end = nullptr;
            value.number = std::wcstod(token.text.c_str(), &end);
            if (*end != L'\0' || !(std::abs(value.number) <= kLargestNumber)) Fail(token, "a number");
            const bool whole = token.text.find_first_of(L".eE") == std::wstring::npos;
            value.type = whole ? ResValue::Type::kInteger : ResValue::Type::kReal;
            return value;
        }
        if (!IsName(token.text)) Fail(token, "a number, True, False, a text in quotes or a name");
        value.type = ResValue::Type::kName;
        return value;
    }

    std::vector<bool> ReadStretches(std::string_view keyword) {
        Open(std::string(keyword));
        const Token word = TakeWord(std::string(keyword));
        const bool known = Utf8(word.text) == keyword || (keyword == "Cols" && word.text == L"Columns");
        if (!known) Fail(word, std::string(keyword));
        std::vector<bool> stretches;
        while (lexer_.Peek().type == Token::Type::kWord) {
            const Token figure = lexer_.Take();
            if (figure.text != L"0" && figure.text != L"1") Fail(figure, "0 or 1");
            stretches.push_back(figure.text == L"1");
        }
        Close("the figures of " + std::string(keyword));
        if (stretches.empty()) Fail(word, "at least one figure after " + std::string(keyword));
        return stretches;
    }

    std::size_t TakeIndex(std::size_t count) {
        const Token word = TakeWord("a row and a column");
        std::size_t index = 0;
        for (const wchar_t c : word.text) {
            if (c < L'0' || c > L'9' || index > 1000) Fail(word, "a row and a column");
            index = index * 10 + static_cast<std::size_t>(c - L'0');
        }
        if (index < 1 || index > count) Fail(word, "1 to " + std::to_string(count));
        return index - 1;
    }

    // After "(" of "(Grid".
    ResGrid ReadGrid() {
        const Token gridWord = TakeKeyword("Grid");
        if (++gridDepth_ > kDeepestGrid) Fail(gridWord, "grids nested less deeply");
        ResGrid grid;
        grid.rowStretches = ReadStretches("Rows");
        grid.columnStretches = ReadStretches("Cols");
        const std::size_t columns = grid.columnStretches.size();
        const std::size_t room = grid.rowStretches.size() * columns;
        // Where the next cell goes: row by row, unless Pos says otherwise.
        std::size_t next = 0;
        bool isMoved = false;
        std::set<std::size_t> taken;
        while (lexer_.Peek().type != Token::Type::kClose) {
            const Token first = lexer_.Peek();
            ResCell cell;
            cell.place = first.place;
            if (!ReadCell(grid, cell, next)) {
                isMoved = true;
                continue;
            }
            if (next >= room) Fail(first, ") after " + std::to_string(room) + " cells");
            if (!taken.insert(next).second) Fail(first, "a free cell");
            cell.row = static_cast<int>(next / columns);
            cell.column = static_cast<int>(next % columns);
            ++next;
            grid.cells.push_back(std::move(cell));
        }
        lexer_.Take();
        --gridDepth_;
        if (!isMoved && next != 0 && next != room)
            throw SyntaxError{gridWord.place, std::to_string(room) + " cells, found " + std::to_string(next)};
        return grid;
    }

    // False for a statement that is no cell but moves the place of the next one.
    bool ReadCell(const ResGrid& grid, ResCell& cell, std::size_t& next) {
        if (lexer_.Peek().type != Token::Type::kOpen) {
            cell.component = TakeName("a component, a nested grid or )");
            return true;
        }
        lexer_.Take();
        if (lexer_.Peek().type != Token::Type::kWord || lexer_.Peek().text != L"Pos") {
            cell.grid.push_back(ReadGrid());
            return true;
        }
        lexer_.Take();
        const std::size_t row = TakeIndex(grid.rowStretches.size());
        next = row * grid.columnStretches.size() + TakeIndex(grid.columnStretches.size());
        Close("the position");
        if (lexer_.Peek().type == Token::Type::kClose) Fail(lexer_.Peek(), "a cell after Pos");
        return false;
    }

    Lexer lexer_;
    int gridDepth_ = 0;
    ResFindings& findings_;
};

}  // namespace

std::string_view KindName(ComponentKind kind) {
    return std::find_if(std::begin(kKinds), std::end(kKinds),
                        [kind](const KindWord& k) { return k.kind == kind; })
        ->word;
}

std::string_view ContainerName(ContainerType type) {
    return std::find_if(std::begin(kContainers), std::end(kContainers),
                        [type](const auto& entry) { return entry.first == type; })
        ->second;
}

const ResContainer* ResFile::Find(std::string_view name) const {
    const auto container = std::find_if(containers.begin(), containers.end(),
                                        [&](const ResContainer& c) { return c.name == name; });
    return container == containers.end() ? nullptr : &*container;
}

ResFile ParseResFile(std::string_view bytes, const std::filesystem::path& file,
                     std::vector<std::string>& errors) {
    ResFile layout;
    std::optional<std::wstring> text = DecodeTextFile(bytes, file, errors);
    if (!text) return layout;

    ResFindings findings;
    try {
        layout.containers = Reader(std::move(*text), findings).ReadFile();
        CheckResFile(layout, Utf8(file.stem().wstring()), findings);
    } catch (const SyntaxError& error) {
        findings.emplace_back(error.place, error.expected);
    }
    std::stable_sort(findings.begin(), findings.end(), [](const auto& a, const auto& b) {
        return std::pair(a.first.line, a.first.column) < std::pair(b.first.line, b.first.column);
    });
    for (const auto& [place, expected] : findings)
        errors.push_back(FindingPlace(file, place.line, place.column) + "expected " + expected);
    return layout;
}

ResFile ReadResFile(const std::filesystem::path& file, std::vector<std::string>& errors) {
    const std::optional<std::string> bytes = ReadBytes(file);
    if (bytes) return ParseResFile(*bytes, file, errors);
    errors.push_back(FindingPlace(file, 1, 1) + "expected a file that can be read");
    return {};
}

}  // namespace sim
