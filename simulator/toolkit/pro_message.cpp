#include <ProMessage.h>

#include <algorithm>
#include <cmath>
#include <cstdarg>
#include <cwchar>
#include <utility>

#include "simulator/memory/host_memory.h"
#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/ui_call.h"

using namespace sim;

namespace {

constexpr int kLongestEntry = 127;

// The arguments that the message uses. Every one is passed as a pointer, so the unused ones between them can
// be passed over. False: one is null.
bool ReadArguments(const MessageText& message, va_list& arguments, std::map<int, MessageValue>& values) {
    std::vector<MessageConversion> conversions;
    std::string fault;
    if (!FindConversions(message.Shown(), conversions, fault)) return false;
    int count = 0;
    for (const MessageConversion& conversion : conversions) count = std::max(count, conversion.argument + 1);
    for (int i = 0; i < count; ++i) {
        const void* value = va_arg(arguments, void*);
        const auto use = std::find_if(conversions.begin(), conversions.end(),
                                      [i](const MessageConversion& c) { return c.argument == i; });
        if (use == conversions.end()) continue;
        if (value == nullptr) return false;
        switch (use->type) {
            case 'd':
                values[i] = *static_cast<const int*>(value);
                break;
            case 'f':
                values[i] = *static_cast<const double*>(value);
                break;
            case 's':
                values[i] = Wide(static_cast<const char*>(value));
                break;
            default:
                values[i] = std::wstring(static_cast<const wchar_t*>(value));
                break;
        }
    }
    return true;
}

ProError Compose(Session& host, const wchar_t* file, const char* key, va_list& arguments,
                 FormattedMessage& message) {
    const ProError status = CheckKey(host, file, key, PRO_TK_E_NOT_FOUND);
    if (status != PRO_TK_NO_ERROR) return status;
    const MessageText& text = *host.texts.FindMessage(file, key);
    std::map<int, MessageValue> values;
    const bool composed =
        ReadArguments(text, arguments, values) && ComposeMessage(text.Shown(), values, message);
    if (composed) return PRO_TK_NO_ERROR;
    return Refuse(host, PRO_TK_MSG_FMT_ERROR,
                  "an argument of the message " + Named(key) + " is null or malformed");
}

// A whole entry that is one finite number, with a point as the decimal sign.
bool IsNumber(const std::wstring& text, double& number) {
    wchar_t* end = nullptr;
    number = std::wcstod(text.c_str(), &end);
    return end != text.c_str() && *end == L'\0' && std::isfinite(number);
}

}  // namespace

extern "C" {

ProError ProMessageDisplay(ProFileName file_name, ProCharLine message_name, ...) {
    static const CallSite kSite("ProMessageDisplay",
                                {PRO_TK_E_NOT_FOUND, PRO_TK_MSG_NOT_FOUND, PRO_TK_MSG_NO_TRANS,
                                 PRO_TK_MSG_FMT_ERROR, PRO_TK_MSG_TOO_LONG});
    va_list arguments;
    va_start(arguments, message_name);
    const ProError status = Traced(kSite, {file_name, message_name}, [&](Session& host) -> ProError {
        FormattedMessage message;
        const ProError composed = Compose(host, file_name, message_name, arguments, message);
        if (composed != PRO_TK_NO_ERROR) return composed;
        host.user.messageArea.push_back(message.text);
        host.screen.prompt = Prompt{message.text, message.defaultText, message.hasDefault};
        return PRO_TK_NO_ERROR;
    });
    va_end(arguments);
    return status;
}

ProError ProMessageToBuffer(ProLine translated_msg, ProFileName file_name, ProCharLine message_name, ...) {
    static const CallSite kSite("ProMessageToBuffer",
                                {PRO_TK_E_NOT_FOUND, PRO_TK_MSG_NOT_FOUND, PRO_TK_MSG_NO_TRANS,
                                 PRO_TK_MSG_FMT_ERROR, PRO_TK_MSG_TOO_LONG});
    va_list arguments;
    va_start(arguments, message_name);
    const ProError status = Traced(
        kSite, {Out(translated_msg, PRO_LINE_SIZE), file_name, message_name}, [&](Session& host) -> ProError {
            if (translated_msg == nullptr) return Refuse(host, PRO_TK_GENERAL_ERROR, "the buffer is null");
            FormattedMessage message;
            const ProError composed = Compose(host, file_name, message_name, arguments, message);
            if (composed != PRO_TK_NO_ERROR) return composed;
            if (FillBuffer<wchar_t>(message.text, translated_msg, PRO_LINE_SIZE)) return PRO_TK_NO_ERROR;
            message.text.resize(PRO_LINE_SIZE - 1);
            if (!FillBuffer<wchar_t>(message.text, translated_msg, PRO_LINE_SIZE))
                return PRO_TK_GENERAL_ERROR;
            return Refuse(host, PRO_TK_MSG_TOO_LONG,
                          "the message " + Named(message_name) + " is longer than 80 characters");
        });
    va_end(arguments);
    return status;
}

ProError ProMessageStringRead(int max_buffer_length, wchar_t* buffer) {
    static const CallSite kSite("ProMessageStringRead", {PRO_TK_MSG_USER_QUIT});
    const bool isLength = max_buffer_length >= 1 && max_buffer_length <= kLongestEntry;
    const std::size_t size = isLength ? static_cast<std::size_t>(max_buffer_length) + 1 : 0;
    return Traced(kSite, {max_buffer_length, Out(buffer, size)}, [&](Session& host) -> ProError {
        const std::optional<Prompt> prompt = std::exchange(host.screen.prompt, std::nullopt);
        if (buffer == nullptr || !isLength)
            return Refuse(host, PRO_TK_GENERAL_ERROR, "the buffer takes 1 to 127 characters");
        if (!prompt) return Refuse(host, PRO_TK_GENERAL_ERROR, "no prompt has been shown");
        if (host.user.prompts.empty()) {
            host.user.Problem("unexpected prompt \"" + Utf8(prompt->text) + "\"");
            return PRO_TK_MSG_USER_QUIT;
        }
        const PromptAnswer answer = std::move(host.user.prompts.front());
        host.user.prompts.pop_front();
        if (answer.kind == PromptAnswer::Kind::kEscape) return PRO_TK_MSG_USER_QUIT;
        // Enter on what is offered is no entry: the program takes its default.
        if (answer.kind == PromptAnswer::Kind::kEnter || answer.text.empty()) return PRO_TK_GENERAL_ERROR;
        if (FillBuffer<wchar_t>(answer.text, buffer, size)) return PRO_TK_NO_ERROR;
        host.user.Problem("the prompt \"" + Utf8(prompt->text) + "\" takes " +
                          std::to_string(max_buffer_length) + " characters at most");
        return PRO_TK_MSG_USER_QUIT;
    });
}

ProError ProMessageDoubleRead(double range[2], double* answer) {
    static const CallSite kSite("ProMessageDoubleRead", {PRO_TK_MSG_USER_QUIT});
    return Traced(kSite, {static_cast<const void*>(range), Out(answer)}, [&](Session& host) -> ProError {
        const std::optional<Prompt> prompt = std::exchange(host.screen.prompt, std::nullopt);
        if (answer == nullptr) return Refuse(host, PRO_TK_GENERAL_ERROR, "the answer is null");
        if (!prompt) return Refuse(host, PRO_TK_GENERAL_ERROR, "no prompt has been shown");
        // What is no number, or out of range, is asked for again.
        while (!host.user.prompts.empty()) {
            const PromptAnswer entry = std::move(host.user.prompts.front());
            host.user.prompts.pop_front();
            if (entry.kind == PromptAnswer::Kind::kEscape) return PRO_TK_MSG_USER_QUIT;
            if (entry.kind == PromptAnswer::Kind::kEnter || entry.text.empty()) return PRO_TK_GENERAL_ERROR;
            double number = 0;
            if (!IsNumber(entry.text, number)) continue;
            if (range != nullptr && (number < range[0] || number > range[1])) continue;
            *answer = number;
            return PRO_TK_NO_ERROR;
        }
        host.user.Problem("unexpected prompt \"" + Utf8(prompt->text) + "\"");
        return PRO_TK_MSG_USER_QUIT;
    });
}

}  // extern "C"
