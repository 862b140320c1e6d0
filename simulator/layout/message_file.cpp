#include "simulator/layout/message_file.h"

#include <algorithm>
#include <cwchar>
#include <cwctype>
#include <optional>
#include <utility>

#include "simulator/layout/text_file.h"
#include "simulator/report/utf8.h"

namespace sim {

namespace {

constexpr std::size_t kLongestLine = 4096;
constexpr std::size_t kLongestKey = 80;
constexpr std::size_t kLongestFileName = 30;
constexpr int kWidest = 255;
constexpr std::wstring_view kDefaultMark = L"|||";

constexpr std::pair<wchar_t, MessageClass> kClasses[] = {{L'P', MessageClass::kPrompt},
                                                         {L'I', MessageClass::kInformation},
                                                         {L'W', MessageClass::kWarning},
                                                         {L'E', MessageClass::kError},
                                                         {L'C', MessageClass::kCritical}};

std::vector<std::wstring> SplitLines(const std::wstring& text) {
    std::vector<std::wstring> lines;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = std::min(text.find(L'\n', start), text.size());
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

// Reads the number at `at`, which moves behind it; -1: there is none.
int TakeNumber(std::wstring_view text, std::size_t& at) {
    int number = -1;
    while (at < text.size() && text[at] >= L'0' && text[at] <= L'9' && number < 1000)
        number = std::max(number, 0) * 10 + (text[at++] - L'0');
    return number;
}

// Reads "(8.2)" at `at` into the conversion. Answers what was expected, empty when all is well.
std::string TakeFormat(std::wstring_view text, std::size_t& at, MessageConversion& conversion) {
    if (at == text.size() || text[at] != L'(') return {};
    conversion.width = TakeNumber(text, ++at);
    if (conversion.width < 0 || conversion.width > kWidest) return "a width from 0 to 255 after (";
    if (at < text.size() && text[at] == L'.') {
        conversion.precision = TakeNumber(text, ++at);
        if (conversion.precision < 0 || conversion.precision > kWidest)
            return "a precision from 0 to 255 after the point";
    }
    if (at == text.size() || text[at] != L')') return ") after the width";
    ++at;
    return {};
}

// Reads the conversion whose "%" stands at `at`, which moves behind it.
std::string TakeConversion(std::wstring_view text, std::size_t& at, MessageConversion& conversion) {
    conversion.start = at++;
    if (at == text.size() || text[at] < L'0' || text[at] > L'9')
        return "an argument number from 0 to 9 after %";
    conversion.argument = text[at++] - L'0';
    if (std::string fault = TakeFormat(text, at, conversion); !fault.empty()) return fault;
    if (at == text.size() || std::wstring_view(L"dfsw").find(text[at]) == std::wstring_view::npos)
        return "d, f, s or w as the conversion's type";
    conversion.type = static_cast<char>(text[at++]);
    conversion.length = at - conversion.start;
    return {};
}

// Conversions of a text; on a fault `at` is its offset and `fault` what was expected.
bool ReadConversions(std::wstring_view text, std::vector<MessageConversion>& conversions, std::size_t& at,
                     std::string& fault) {
    at = 0;
    while ((at = text.find(L'%', at)) != std::wstring_view::npos) {
        MessageConversion conversion;
        fault = TakeConversion(text, at, conversion);
        if (!fault.empty()) return false;
        conversions.push_back(conversion);
    }
    return true;
}

class MessageParser {
public:
    MessageParser(MessageFile& file, std::vector<std::string>& errors) : file_(file), errors_(errors) {}

    void Run(const std::vector<std::wstring>& lines) {
        for (std::size_t i = 0; i < lines.size(); ++i)
            if (lines[i].size() > kLongestLine) Add(i, kLongestLine, "at most 4096 characters in a line");
        for (std::size_t i = 0; i < lines.size(); i += 4) {
            if (lines.size() - i < 4) {
                Add(lines.size(), 0, "groups of four lines: key, text, translation, blank line");
                return;
            }
            // A shifted group would make every later line a fault: one report is enough.
            if (!ReadGroup(lines, i)) return;
        }
    }

private:
    void Add(std::size_t line, std::size_t column, const std::string& expected) {
        errors_.push_back(FindingPlace(file_.path, static_cast<int>(line) + 1, static_cast<int>(column) + 1) +
                          "expected " + expected);
    }

    // False when the lines are not where they belong.
    bool ReadGroup(const std::vector<std::wstring>& lines, std::size_t first) {
        if (lines[first].empty() || !lines[first + 3].empty()) {
            if (lines[first].empty())
                Add(first, 0, "a key");
            else
                Add(first + 3, 0, "a blank line after the translation");
            return false;
        }
        MessageText text;
        text.line = static_cast<int>(first) + 1;
        text.original = lines[first + 1];
        text.translation = lines[first + 2];
        if (!ReadKey(lines[first], first, text)) return true;
        if (text.original.empty()) Add(first + 1, 0, "the text of " + text.key);
        CheckText(text.original, first + 1);
        CheckText(text.translation, first + 2);
        CheckSameArguments(text, first + 2);
        const auto [same, isNew] = file_.texts.try_emplace(text.key, text);
        if (!isNew)
            Add(first, 0,
                "a key that is new, " + text.key + " stands in line " + std::to_string(same->second.line));
        return true;
    }

    bool ReadKey(std::wstring_view line, std::size_t index, MessageText& text) {
        std::size_t start = 0;
        if (line.starts_with(L"%C")) {
            const wchar_t letter = line.size() > 2 ? line[2] : L' ';
            const auto* known = std::find_if(std::begin(kClasses), std::end(kClasses),
                                             [letter](const auto& entry) { return letter == entry.first; });
            if (known == std::end(kClasses)) {
                Add(index, 2, "P, I, W, E or C after %C");
                return false;
            }
            text.kind = known->second;
            start = 3;
        }
        text.key = Utf8(line.substr(start));
        if (text.key.empty() || text.key.front() == ' ') {
            Add(index, start, "a key directly after the class");
            return false;
        }
        if (text.key.size() > kLongestKey) Add(index, start + kLongestKey, "a key of at most 80 characters");
        return true;
    }

    void CheckText(std::wstring_view text, std::size_t line) {
        std::vector<MessageConversion> conversions;
        std::size_t at = 0;
        std::string fault;
        if (!ReadConversions(text, conversions, at, fault)) Add(line, at, fault);
        for (const MessageConversion& one : conversions)
            for (const MessageConversion& other : conversions)
                if (one.argument == other.argument && one.type != other.type && one.start < other.start)
                    Add(line, other.start, "one type for argument " + std::to_string(one.argument));
        const std::size_t mark = text.find(kDefaultMark);
        if (mark == std::wstring_view::npos) return;
        const std::size_t second = text.find(kDefaultMark, mark + kDefaultMark.size());
        if (second != std::wstring_view::npos) Add(line, second, "one ||| a text");
    }

    // The caller passes one list of pointers, whichever of the two lines is shown.
    void CheckSameArguments(const MessageText& text, std::size_t line) {
        std::vector<MessageConversion> original, translated;
        std::size_t at = 0;
        std::string fault;
        if (text.translation.empty() || !ReadConversions(text.original, original, at, fault)) return;
        if (!ReadConversions(text.translation, translated, at, fault)) return;
        for (const MessageConversion& conversion : translated) {
            const bool known =
                std::any_of(original.begin(), original.end(), [&](const MessageConversion& other) {
                    return other.argument == conversion.argument && other.type == conversion.type;
                });
            if (!known) Add(line, conversion.start, "the arguments of the line above");
        }
    }

    MessageFile& file_;
    std::vector<std::string>& errors_;
};

std::wstring Formatted(const MessageConversion& conversion, const MessageValue& value) {
    std::wstring format = L"%";
    if (conversion.width >= 0) format += std::to_wstring(conversion.width);
    if (conversion.precision >= 0) format += L"." + std::to_wstring(conversion.precision);
    wchar_t buffer[1024] = {};  // the largest real, with all decimals
    if (const int* number = std::get_if<int>(&value)) {
        std::swprintf(buffer, std::size(buffer), (format + L"d").c_str(), *number);
        return buffer;
    }
    if (const double* real = std::get_if<double>(&value)) {
        std::swprintf(buffer, std::size(buffer), (format + L"f").c_str(), *real);
        return buffer;
    }
    std::wstring text = std::get<std::wstring>(value);
    if (conversion.precision >= 0)
        text.resize(std::min(text.size(), static_cast<std::size_t>(conversion.precision)));
    if (conversion.width > static_cast<int>(text.size()))
        text.insert(0, static_cast<std::size_t>(conversion.width) - text.size(), L' ');
    return text;
}

bool TypeFits(char type, const MessageValue& value) {
    if (type == 'd') return std::holds_alternative<int>(value);
    if (type == 'f') return std::holds_alternative<double>(value);
    return std::holds_alternative<std::wstring>(value);
}

bool FormatPart(std::wstring_view text, const std::map<int, MessageValue>& values, std::wstring& result) {
    std::vector<MessageConversion> conversions;
    std::string fault;
    if (!FindConversions(text, conversions, fault)) return false;
    std::size_t done = 0;
    for (const MessageConversion& conversion : conversions) {
        const auto value = values.find(conversion.argument);
        if (value == values.end() || !TypeFits(conversion.type, value->second)) return false;
        result += text.substr(done, conversion.start - done);
        result += Formatted(conversion, value->second);
        done = conversion.start + conversion.length;
    }
    result += text.substr(done);
    return true;
}

}  // namespace

MessageFile ParseMessageFile(std::string_view bytes, const std::filesystem::path& file,
                             std::vector<std::string>& errors) {
    MessageFile messages;
    messages.path = file;
    if (const std::optional<std::wstring> text = DecodeTextFile(bytes, file, errors))
        MessageParser(messages, errors).Run(SplitLines(*text));
    return messages;
}

MessageFile ReadMessageFile(const std::filesystem::path& file, std::vector<std::string>& errors) {
    const std::optional<std::string> bytes = ReadBytes(file);
    if (bytes) return ParseMessageFile(*bytes, file, errors);
    errors.push_back(FindingPlace(file, 1, 1) + "expected a file that can be read");
    return {file, {}};
}

std::string MessageFileNameFault(std::wstring_view name, bool upperCaseAllowed) {
    if (name.size() > kLongestFileName) return "longer than 30 characters";
    if (name.size() < 5 || name[name.size() - 4] != L'.') return "without a three-character extension";
    if (name.find_first_of(L"\\/:") != std::wstring_view::npos) return "with a path";
    const bool upper =
        std::any_of(name.begin(), name.end(), [](wchar_t c) { return c >= L'A' && c <= L'Z'; });
    return upper && !upperCaseAllowed ? "with capital letters" : "";
}

bool FindConversions(std::wstring_view text, std::vector<MessageConversion>& conversions,
                     std::string& fault) {
    std::size_t at = 0;
    return ReadConversions(text, conversions, at, fault);
}

bool ComposeMessage(std::wstring_view text, const std::map<int, MessageValue>& values,
                    FormattedMessage& message) {
    message = {};
    const std::size_t mark = text.find(kDefaultMark);
    message.hasDefault = mark != std::wstring_view::npos;
    if (!FormatPart(text.substr(0, mark), values, message.text)) return false;
    return !message.hasDefault ||
           FormatPart(text.substr(mark + kDefaultMark.size()), values, message.defaultText);
}

}  // namespace sim
