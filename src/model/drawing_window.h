// Windows that a run opens for drawings, and the windows that the user has.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <ProMdl.h>
#include <ProWindows.h>

namespace kv {

// The models that the host's windows show. Costs a call for every window that there may be.
std::vector<ProMdl> ShownModels();

// The user's windows as a run finds them. The host does not list windows by itself: they are looked for
// before the first window of our own is opened.
class UserWindows {
public:
    UserWindows();
    UserWindows(const UserWindows&) = delete;
    UserWindows& operator=(const UserWindows&) = delete;
    // Makes the window that was current at the start current and active again.
    ~UserWindows();

    // A window that may be current while another one is closed.
    int Resting() const;
    // Whether a window of the user's shows the model.
    bool Show(ProMdl model);

private:
    int current_ = PRO_VALUE_UNUSED;
    std::optional<std::vector<ProMdl>> models_;  // of the windows; none before they were looked for
};

// Shows a drawing in a current window of its own, and closes that window again unless the user had it open.
class DrawingWindow {
public:
    explicit DrawingWindow(UserWindows& user) : user_(user) {}
    DrawingWindow(const DrawingWindow&) = delete;
    DrawingWindow& operator=(const DrawingWindow&) = delete;
    ~DrawingWindow();

    // Errors: those of the window calls; PRO_TK_NOT_DISPLAYED when the window shows something else.
    [[nodiscard]] ProError Open(const std::wstring& name, ProMdl drawing);

private:
    UserWindows& user_;
    int window_ = PRO_VALUE_UNUSED;
    bool isOurs_ = false;
};

}  // namespace kv
