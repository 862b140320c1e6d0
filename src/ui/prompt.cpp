// Messages and prompts on the toolkit's message calls.

#include "ui/prompt.h"

#include <algorithm>

#include <ProMessage.h>

#include "base/status.h"
#include "base/text.h"

namespace kv {

static constexpr wchar_t kMessageFile[] = L"kvmsg_display.txt";
static constexpr wchar_t kPickPromptFile[] = L"msg_display.txt";
static constexpr int kLongestAnswer = 127;

std::wstring MenuText(const char* key) {
    ProLine text = {};
    const ProError status =
        WithMenuFile([&](wchar_t* file) { return ProMessageToBuffer(text, file, HostName(key)); });
    return Failed(status) || text[0] == L'\0' ? WideName(key) : std::wstring(text);
}

ProError DisplayMessage(const char* key, const wchar_t* argument) {
    return ProMessageDisplay(HostText(kMessageFile), HostName(key), HostText(argument));
}

ProError DisplayPickPrompt(const char* key) {
    return ProMessageDisplay(HostText(kPickPromptFile), HostName(key), nullptr);
}

ProError ReadMessageString(int length, const std::wstring& fallback, std::wstring& text) {
    wchar_t answer[kLongestAnswer + 1] = {};
    const ProError status = ProMessageStringRead(std::clamp(length, 0, kLongestAnswer), answer);
    if (status == PRO_TK_MSG_USER_QUIT) return status;
    text = Failed(status) ? fallback : std::wstring(answer);
    return PRO_TK_NO_ERROR;
}

ProError ReadMessageDouble(double& number) {
    return ProMessageDoubleRead(nullptr, &number);
}

}  // namespace kv
