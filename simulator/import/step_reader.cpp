#include "simulator/import/step_reader.h"

#include <array>
#include <charconv>
#include <cmath>

#include "simulator/import/import_error.h"
#include "simulator/report/utf8.h"

namespace sim {

namespace {

constexpr std::size_t kBlock = std::size_t{1} << 20;
// Deeper brackets than any entity of the standard has.
constexpr int kDeepest = 32;
// A text or a keyword beyond this is none: a quote or a bracket is missing.
constexpr std::size_t kLongestStepText = std::size_t{1} << 20;

constexpr std::string_view kStart = "ISO-10303-21";
constexpr std::string_view kFinish = "END-ISO-10303-21";

constexpr bool IsKeywordPart(int c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' ||
           c == '-' || c == '!';
}

// The bytes that need a look while a statement is passed over.
constexpr std::array<bool, 256> kMatters = [] {
    std::array<bool, 256> table{};
    for (const char c : {';', '(', ')', '\'', '/', '\n'}) table[static_cast<unsigned char>(c)] = true;
    return table;
}();

}  // namespace

StepReader::StepReader(const std::filesystem::path& file)
    : label_(Utf8(file.filename().wstring())), stream_(file, std::ios::binary), block_(kBlock) {
    if (!stream_) throw ImportError(label_ + ": cannot be read");
    if (Peek() == 0xEF) at_ += 3 <= end_ - at_ ? 3 : 0;
    SkipBlanks();
    if (!IsKeywordPart(Peek()) || Keyword() != kStart) Fail(std::string(kStart) + "; at the beginning");
    EndStatement();
}

std::optional<std::uint64_t> StepReader::NextInstance() {
    for (;;) {
        SkipBlanks();
        if (Peek() == '#') {
            Take();
            const std::uint64_t id = Number();
            SkipBlanks();
            Expect('=', "\"=\" after the number of the instance");
            SkipBlanks();
            return id;
        }
        if (Peek() < 0) Fail(std::string(kFinish) + "; at the end: the file breaks off");
        if (IsKeywordPart(Peek()) && Keyword() == kFinish) return std::nullopt;
        SkipStatement();
    }
}

void StepReader::SkipStatement() {
    SkipTo(';');
}

std::string StepReader::Keyword() {
    SkipBlanks();
    std::string word;
    while (IsKeywordPart(Peek()) && word.size() < kLongestStepText) word += static_cast<char>(Take());
    if (word.empty()) Fail("the name of an entity");
    return word;
}

std::vector<StepValue> StepReader::Values() {
    return List(0);
}

void StepReader::SkipValues() {
    if (!Opens('(')) Fail("\"(\"");
    SkipTo(')');
}

bool StepReader::Opens(char bracket) {
    SkipBlanks();
    if (Peek() != bracket) return false;
    Take();
    return true;
}

void StepReader::EndStatement() {
    SkipBlanks();
    Expect(';', "\";\" at the end of the statement");
}

void StepReader::Fail(const std::string& expected) const {
    throw ImportError(label_, line_, expected);
}

// ---- Bytes

int StepReader::Take() {
    const int c = Peek();
    if (c >= 0) ++at_;
    if (c == '\n') ++line_;
    return c;
}

bool StepReader::Fill() {
    stream_.read(block_.data(), static_cast<std::streamsize>(block_.size()));
    at_ = block_.data();
    end_ = at_ + stream_.gcount();
    return at_ != end_;
}

void StepReader::SkipBlanks() {
    for (;;) {
        const int c = Peek();
        if (c == '/')
            SkipComment();
        else if (c >= 0 && c <= ' ')
            Take();
        else
            return;
    }
}

void StepReader::SkipComment() {
    Take();
    if (Peek() != '*') Fail("\"/*\"");
    for (int before = Take(), c = Take();; before = c, c = Take()) {
        if (c < 0) Fail("\"*/\" after a comment");
        if (before == '*' && c == '/') return;
    }
}

// Behind the opening quote. A quote inside stands twice and so ends one text and begins another.
void StepReader::SkipText() {
    for (int c = Take(); c != '\''; c = Take())
        if (c < 0) Fail("a closing quote");
}

// Up to the mark and over it, brackets in between in pairs.
void StepReader::SkipTo(char end) {
    int open = 0;
    for (;;) {
        while (at_ != end_ && !kMatters[static_cast<unsigned char>(*at_)]) ++at_;
        const int c = Peek();
        if (c < 0) Fail(std::string("\"") + end + "\"");
        if (c == '/') {
            SkipComment();
            continue;
        }
        if (!kMatters[static_cast<std::size_t>(c)]) continue;
        Take();
        if (c == '\'') SkipText();
        if (c == end && open == 0) return;
        if (c == ';') Fail("\")\" before the end of the statement");
        open += c == '(' ? 1 : c == ')' ? -1 : 0;
    }
}

void StepReader::Expect(char c, const std::string& expected) {
    if (Peek() != c) Fail(expected);
    Take();
}

// ---- Values

std::uint64_t StepReader::Number() {
    std::uint64_t number = 0;
    int digits = 0;
    for (; Peek() >= '0' && Peek() <= '9'; ++digits)
        number = number * 10 + static_cast<unsigned>(Take() - '0');
    if (digits == 0 || digits > 18) Fail("the number of an instance, of at most 18 digits");
    return number;
}

double StepReader::Real() {
    std::string text;
    while (std::string_view("+-.0123456789Ee").find(static_cast<char>(Peek())) != std::string_view::npos &&
           text.size() < kLongestStepText)
        text += static_cast<char>(Take());
    const char* begin = text.data() + (text.starts_with('+') ? 1 : 0);
    double number = 0;
    const auto [end, error] = std::from_chars(begin, text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number)) Fail("a number");
    return number;
}

std::string StepReader::Until(char end) {
    std::string text;
    for (int c = Take(); c != end; c = Take()) {
        if (c < 0 || text.size() == kLongestStepText) Fail(std::string("a closing ") + end);
        // Long texts are broken into lines anywhere.
        if (c != '\n' && c != '\r') text += static_cast<char>(c);
    }
    return text;
}

std::string StepReader::Text() {
    std::string text = Until('\'');
    while (Peek() == '\'') {
        Take();
        text += "''" + Until('\'');
    }
    return text;
}

StepValue StepReader::Value(int depth) {
    SkipBlanks();
    const int c = Peek();
    if (c == '(') return {List(depth + 1)};
    if (IsKeywordPart(c) && !(c >= '0' && c <= '9') && c != '-') {
        // A value with its type, LENGTH_MEASURE(25.4).
        (void)Keyword();
        std::vector<StepValue> values = List(depth + 1);
        return values.size() == 1 ? std::move(values.front()) : StepValue{std::move(values)};
    }
    if ((c >= '0' && c <= '9') || c == '-' || c == '+') return {Real()};
    Take();
    switch (c) {
        case '$':
        case '*':
            return {};
        case '#':
            return {StepReference{Number()}};
        case '\'':
            return {Text()};
        case '.':
            return {StepWord{Until('.')}};
        case '"':
            return {StepWord{Until('"')}};
        default:
            Fail("a value");
    }
}

std::vector<StepValue> StepReader::List(int depth) {
    if (depth > kDeepest) Fail("at most " + std::to_string(kDeepest) + " brackets in each other");
    if (!Opens('(')) Fail("\"(\"");
    std::vector<StepValue> values;
    if (Opens(')')) return values;
    for (;;) {
        values.push_back(Value(depth));
        if (Opens(')')) return values;
        if (!Opens(',')) Fail("\",\" or \")\" after a value");
    }
}

}  // namespace sim
