// The host's message files and its message area: short messages and prompts.
#pragma once

#include <string>

#include <ProToolkit.h>

#include "base/status.h"
#include "base/text.h"

namespace kv {

// Message file of the menu: labels, help texts and descriptions by key. There are hosts that refuse a name
// with capitals; Windows finds the file by the second name as well.
inline constexpr wchar_t kMenuFile[] = L"kvMenu.txt";
inline constexpr wchar_t kMenuFileInSmallLetters[] = L"kvmenu.txt";

// What `call` answers that gets the menu's file; where it fails with the one name, with the other.
template <typename Call>
ProError WithMenuFile(Call call) {
    const ProError status = call(HostText(kMenuFile));
    const bool isUnknown = Failed(status) && status != PRO_TK_E_FOUND;
    return isUnknown ? call(HostText(kMenuFileInSmallLetters)) : status;
}

// The text of a key of the menu file; the key itself when the host has none for it.
std::wstring MenuText(const char* key);

// Shows the message of a key of the plug-in's message file; `argument` replaces its "%0w". Errors: those of
// ProMessageDisplay.
ProError DisplayMessage(const char* key, const wchar_t* argument = nullptr);

// Asks in the message area for a pick, by a key of the message file of such prompts. Errors: those of
// ProMessageDisplay.
ProError DisplayPickPrompt(const char* key);

// Reads a text of at most `length` characters (127 or less) after a prompt was shown.
//
// fallback  the default that the prompt offered: the host answers plain Enter with a failure
// Errors    PRO_TK_MSG_USER_QUIT alone, which ends the command quietly
[[nodiscard]] ProError ReadMessageString(int length, const std::wstring& fallback, std::wstring& text);

// Reads a real number of any size after a prompt was shown. Errors: PRO_TK_MSG_USER_QUIT for Esc,
// PRO_TK_GENERAL_ERROR for Enter without an entry.
[[nodiscard]] ProError ReadMessageDouble(double& number);

}  // namespace kv
