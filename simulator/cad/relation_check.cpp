#include "simulator/cad/relation_check.h"

#include <algorithm>
#include <cwctype>
#include <iterator>
#include <set>
#include <stdexcept>

#include "simulator/report/utf8.h"

namespace sim {

namespace {

constexpr std::wstring_view kFunctions[] = {
    L"ABS",
    L"ACOS",
    L"ASIN",
    L"ATAN",
    L"ATAN2",
    L"BOUND",
    L"CEIL",
    L"COS",
    L"COSH",
    L"DEAD",
    L"EVALGRAPH",
    L"EXISTS",
    L"EXP",
    L"EXTRACT",
    L"FLOOR",
    L"IF",
    L"ITOS",
    L"LN",
    L"LOG",
    L"MASS",
    L"MAX",
    L"MIN",
    L"MOD",
    L"MP_MASS",
    L"MP_VOLUME",
    L"NEAR",
    L"POW",
    L"REL_MODEL_NAME",
    L"REL_MODEL_TYPE",
    L"RTOS",
    L"SEARCH",
    L"SIGN",
    L"SIN",
    L"SINH",
    L"SQRT",
    L"STRING_LENGTH",
    L"TAN",
    L"TANH",
};
constexpr std::wstring_view kConstants[] = {L"PI", L"G", L"YES", L"NO", L"TRUE", L"FALSE"};
// Longer operators first, so that "<=" is not read as "<".
constexpr std::wstring_view kOperators[] = {L"==", L"!=", L"<>", L"~=", L"<=", L">=", L"<", L">",
                                            L"&",  L"|",  L"+",  L"-",  L"*",  L"/",  L"^", L"~"};
constexpr int kDeepestBracket = 100;

struct Fault : std::runtime_error {
    using std::runtime_error::runtime_error;
};

bool IsNameStart(wchar_t c) {
    return std::iswalpha(c) != 0 || c == L'_' || c == L'$' || c > 0x7F;
}
bool IsDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

template <typename List>
bool Contains(const List& list, std::wstring_view name) {
    return std::ranges::find(list, name) != std::end(list);
}

// "d12", "sd3": only the model makes such names.
bool LooksLikeDimension(std::wstring_view upper) {
    const std::size_t letters = upper.find_first_of(L"0123456789");
    return (letters == 1 || letters == 2) && upper.find_first_not_of(L"0123456789", letters) == upper.npos &&
           (upper.substr(0, letters) == L"D" || upper.substr(1, letters - 1) == L"D");
}

// One line, read from left to right.
class LineReader {
public:
    LineReader(std::wstring_view text, const RelationNames& names, const std::set<std::wstring>& assigned)
        : text_(text), names_(names), assigned_(assigned) {}

    bool AtEnd() {
        SkipBlanks();
        return at_ == text_.size();
    }
    bool Take(std::wstring_view mark) {
        SkipBlanks();
        if (!text_.substr(at_).starts_with(mark)) return false;
        at_ += mark.size();
        return true;
    }
    // A name with what stands behind its colons, "d1:5"; empty: there is none here.
    std::wstring Name() {
        SkipBlanks();
        const std::size_t start = at_;
        if (at_ == text_.size() || !IsNameStart(text_[at_])) return {};
        while (at_ < text_.size() && (IsNameStart(text_[at_]) || IsDigit(text_[at_]) || text_[at_] == L':'))
            ++at_;
        return std::wstring(text_.substr(start, at_ - start));
    }
    void Expression(int depth = 0) {
        if (depth > kDeepestBracket) throw Fault("less than 100 brackets");
        Operand(depth);
        while (TakeOperator()) Operand(depth);
    }
    void Expect(std::wstring_view mark) {
        if (!Take(mark)) throw Fault(Utf8(mark));
    }
    void ExpectEnd() {
        if (!AtEnd()) throw Fault("an operator or the end of the line");
    }

private:
    void SkipBlanks() {
        while (at_ < text_.size() && (text_[at_] == L' ' || text_[at_] == L'\t' || text_[at_] == L'\r'))
            ++at_;
    }
    bool TakeOperator() {
        return std::ranges::any_of(kOperators, [this](std::wstring_view mark) { return Take(mark); });
    }
    void Operand(int depth) {
        while (Take(L"-") || Take(L"+") || Take(L"!") || Take(L"~")) {
        }
        if (Take(L"(")) {
            Expression(depth + 1);
            Expect(L")");
        } else if (Take(L"\"")) {
            Text(L'"');
        } else if (Take(L"'")) {
            Text(L'\'');
        } else if (!Number()) {
            NameOrFunction(depth);
        }
    }
    void Text(wchar_t quote) {
        const std::size_t end = text_.find(quote, at_);
        if (end == std::wstring_view::npos) throw Fault("the end of a text");
        at_ = end + 1;
    }
    std::size_t Digits() {
        const std::size_t start = at_;
        while (at_ < text_.size() && IsDigit(text_[at_])) ++at_;
        return at_ - start;
    }
    bool Number() {
        const std::size_t start = at_;
        std::size_t digits = Digits();
        if (at_ < text_.size() && text_[at_] == L'.') {
            ++at_;
            digits += Digits();
        }
        if (digits == 0) {
            at_ = start;
            return false;
        }
        if (at_ < text_.size() && (text_[at_] == L'e' || text_[at_] == L'E')) {
            ++at_;
            if (at_ < text_.size() && (text_[at_] == L'+' || text_[at_] == L'-')) ++at_;
            if (Digits() == 0) throw Fault("an exponent");
        }
        return true;
    }
    void NameOrFunction(int depth) {
        const std::wstring name = Name();
        if (name.empty()) throw Fault("a number, a text, a name or a bracket");
        const std::wstring upper = UpperName(name);
        if (Take(L"(")) {
            if (!Contains(kFunctions, upper)) throw Fault("a function that the host has, not " + Utf8(name));
            Arguments(depth);
            return;
        }
        // What stands behind a colon belongs to another model, which is not looked at.
        const bool isKnown = upper.find(L':') != upper.npos || Contains(kConstants, upper) ||
                             assigned_.contains(upper) || names_.isParameter(name) ||
                             names_.isDimension(name);
        if (!isKnown) throw Fault("a parameter or dimension of the model, not " + Utf8(name));
    }
    void Arguments(int depth) {
        if (Take(L")")) return;
        do Expression(depth + 1);
        while (Take(L","));
        Expect(L")");
    }

    std::wstring_view text_;
    const RelationNames& names_;
    const std::set<std::wstring>& assigned_;
    std::size_t at_ = 0;
};

class RelationReader {
public:
    explicit RelationReader(const RelationNames& names) : names_(names) {}

    void ReadAll(const std::vector<std::wstring>& lines) {
        std::wstring text;
        for (const std::wstring& line : lines) {
            ++number_;
            text += line;
            const bool goesOn = text.ends_with(L'\\');
            if (goesOn) {
                text.back() = L' ';
                continue;
            }
            Read(text);
            text.clear();
        }
        if (!text.empty()) throw Fault("the line that goes on");
        if (!open_.empty()) throw Fault("an ENDIF");
    }
    // Of the line that was read last, from 1.
    std::size_t LineNumber() const { return number_; }
    std::vector<std::wstring> TakeAssigned() { return std::move(assigned_); }

private:
    void Read(std::wstring_view text) {
        LineReader line(text, names_, known_);
        if (line.AtEnd() || line.Take(L"/*")) return;
        const std::wstring name = line.Name();
        const std::wstring word = UpperName(name);
        if (word == L"IF") {
            open_.push_back(false);
            line.Expression();
        } else if (word == L"ELSE") {
            if (open_.empty() || open_.back()) throw Fault("no ELSE here");
            open_.back() = true;
        } else if (word == L"ENDIF") {
            if (open_.empty()) throw Fault("no ENDIF here");
            open_.pop_back();
        } else {
            Assign(line, name, word);
        }
        line.ExpectEnd();
    }
    void Assign(LineReader& line, const std::wstring& name, const std::wstring& upper) {
        if (name.empty()) throw Fault("a name at the beginning");
        if (LooksLikeDimension(upper) && !names_.isDimension(name))
            throw Fault("a dimension of the model, not " + Utf8(name));
        line.Expect(L"=");
        line.Expression();
        known_.insert(upper);
        assigned_.push_back(name);
    }

    const RelationNames& names_;
    std::size_t number_ = 0;
    std::vector<bool> open_;  // of each IF: its ELSE has come
    std::set<std::wstring> known_;
    std::vector<std::wstring> assigned_;
};

}  // namespace

RelationReading ReadRelations(const std::vector<std::wstring>& lines, const RelationNames& names) {
    RelationReader reader(names);
    try {
        reader.ReadAll(lines);
    } catch (const Fault& fault) {
        return {"line " + std::to_string(reader.LineNumber()) + ": expected " + fault.what(), {}};
    }
    return {{}, reader.TakeAssigned()};
}

}  // namespace sim
