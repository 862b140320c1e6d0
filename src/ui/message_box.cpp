// Message boxes on the Windows call.

#include "ui/message_box.h"

#include <windows.h>

#include "ui/progress_window.h"

namespace kv {

static constexpr wchar_t kCaption[] = L"Korvane";

// Nothing of ours may cover a box.
static int Show(const wchar_t* text, UINT form) {
    ProgressWindowHide();
    return MessageBoxW(nullptr, text, kCaption, form | MB_TOPMOST);
}

void ShowMessage(const wchar_t* text) {
    Show(text, 0);
}

void ShowInformation(const wchar_t* text) {
    Show(text, MB_ICONINFORMATION);
}

void ShowWarning(const wchar_t* text) {
    Show(text, MB_ICONEXCLAMATION);
}

bool AskUser(const wchar_t* text) {
    return Show(text, MB_YESNO | MB_ICONQUESTION) == IDYES;
}

UserAnswer AskUserOrCancel(const wchar_t* text) {
    const int answer = Show(text, MB_YESNOCANCEL | MB_ICONQUESTION);
    if (answer == IDYES) return UserAnswer::Yes;
    return answer == IDNO ? UserAnswer::No : UserAnswer::Cancel;
}

ProError ShowFailure(const wchar_t* text, ProError status) {
    ShowMessage(text);
    return status;
}

}  // namespace kv
