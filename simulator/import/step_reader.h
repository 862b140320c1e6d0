// The text of a STEP file, read front to back: statements, keywords, values. Nothing is kept but the block of
// the file that is being read.

#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace sim {

struct StepReference {
    std::uint64_t id = 0;
};

// .MILLI. without its points.
struct StepWord {
    std::string text;
};

// What is left out, "$" and "*", holds nothing. A text is as it stands between its quotes.
struct StepValue {
    std::variant<std::monostate, StepReference, double, std::string, StepWord, std::vector<StepValue>>
        content;
};

class StepReader {
public:
    // Throws ImportError, like everything here: "file:line: expected ...".
    explicit StepReader(const std::filesystem::path& file);

    // Goes on to the next instance and stands behind its "#12 =". Nothing: the file has come to its end.
    std::optional<std::uint64_t> NextInstance();
    // Of the instance, one of:
    //   SkipStatement()
    //   Keyword(), Values(), EndStatement()
    //   Opens('('), as long as not Opens(')'): Keyword() and Values() or SkipValues(); EndStatement()
    void SkipStatement();
    std::string Keyword();
    std::vector<StepValue> Values();
    void SkipValues();
    bool Opens(char bracket);
    void EndStatement();

    std::size_t Line() const { return line_; }
    [[noreturn]] void Fail(const std::string& expected) const;

private:
    int Peek() {
        if (at_ == end_ && !Fill()) return -1;
        return static_cast<unsigned char>(*at_);
    }
    int Take();
    bool Fill();
    void SkipBlanks();
    void SkipComment();
    void SkipText();
    void SkipTo(char end);
    void Expect(char c, const std::string& expected);
    std::uint64_t Number();
    double Real();
    std::string Text();
    std::string Until(char end);
    StepValue Value(int depth);
    std::vector<StepValue> List(int depth);

    std::string label_;
    std::ifstream stream_;
    std::vector<char> block_;
    const char* at_ = nullptr;
    const char* end_ = nullptr;
    std::size_t line_ = 1;
};

}  // namespace sim
