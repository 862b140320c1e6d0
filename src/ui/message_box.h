// Message boxes: captioned "Korvane", without owner, above every window.
#pragma once

#include <ProToolkit.h>

namespace kv {

// A form of box to pass on to a shared check.
using MessageBoxForm = void (*)(const wchar_t* text);

void ShowMessage(const wchar_t* text);

// The same with the information sign.
void ShowInformation(const wchar_t* text);

// The same with the exclamation sign.
void ShowWarning(const wchar_t* text);

// Asks a question; true for yes.
[[nodiscard]] bool AskUser(const wchar_t* text);

// Asks a question that can be left open: the close box of the box means that as well.
enum class UserAnswer { Yes, No, Cancel };
[[nodiscard]] UserAnswer AskUserOrCancel(const wchar_t* text);

// Shows `text` and gives `status` back, for the return statement of a step that failed.
ProError ShowFailure(const wchar_t* text, ProError status);

}  // namespace kv
