// Message files: groups of four lines that give a key its text in one language.

#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace sim {

enum class MessageClass { kNone, kPrompt, kInformation, kWarning, kError, kCritical };

// "%1(8.2)f": the second argument as a real, eight characters wide with two decimals.
struct MessageConversion {
    int argument = 0;
    int width = -1;  // -1: not given
    int precision = -1;
    char type = 'w';        // d int, f double, s char, w wchar_t
    std::size_t start = 0;  // in the text, in characters
    std::size_t length = 0;
};

struct MessageText {
    std::string key;
    MessageClass kind = MessageClass::kNone;
    std::wstring original;     // second line
    std::wstring translation;  // third line, may be empty
    int line = 0;              // of the key

    // What the user reads: the translation, else the original.
    const std::wstring& Shown() const { return translation.empty() ? original : translation; }
};

struct MessageFile {
    std::filesystem::path path;
    std::map<std::string, MessageText, std::less<>> texts;
};

// Every finding is a line "file:line:column: expected ...". Groups that are well-formed stay usable.
MessageFile ParseMessageFile(std::string_view bytes, const std::filesystem::path& file,
                             std::vector<std::string>& errors);
MessageFile ReadMessageFile(const std::filesystem::path& file, std::vector<std::string>& errors);

// Checks a file name against the host's rules: at most 30 characters, lower case, a three-character
// extension. Gives what is wrong, empty when nothing is. `upperCaseAllowed` leaves the letter case out.
std::string MessageFileNameFault(std::wstring_view name, bool upperCaseAllowed);

// The conversions in `text`; false: one of them is malformed, `fault` says where and how.
bool FindConversions(std::wstring_view text, std::vector<MessageConversion>& conversions, std::string& fault);

// An argument as the caller's pointer gave it.
using MessageValue = std::variant<int, double, std::wstring>;

struct FormattedMessage {
    std::wstring text;         // before "|||"
    std::wstring defaultText;  // after it
    bool hasDefault = false;
};

// Replaces the conversions by their values, by argument number. False: a conversion is malformed or its
// argument is missing or of another type.
bool ComposeMessage(std::wstring_view text, const std::map<int, MessageValue>& values,
                    FormattedMessage& message);

}  // namespace sim
