// Windows for drawings that are exported, and the windows that the user has.
#pragma once

#include <string>
#include <vector>

#include <ProMdl.h>
#include <ProWindows.h>

namespace kv {

// The user's windows as a run finds them. The host does not list windows by itself.
class UserWindows {
public:
    UserWindows();
    UserWindows(const UserWindows&) = delete;
    UserWindows& operator=(const UserWindows&) = delete;
    // Makes the window that was current at the start current and active again.
    ~UserWindows();

    // A window that may be current while another one is closed.
    int Resting() const { return current_ == PRO_VALUE_UNUSED ? kBaseWindow : current_; }
    bool Show(ProMdl model) const;

private:
    static constexpr int kBaseWindow = 0;
    int current_ = PRO_VALUE_UNUSED;
    std::vector<ProMdl> models_;
};

// Shows a drawing in a current window of its own, and closes that window again unless the user had it open.
class DrawingWindow {
public:
    explicit DrawingWindow(const UserWindows& user) : user_(user) {}
    DrawingWindow(const DrawingWindow&) = delete;
    DrawingWindow& operator=(const DrawingWindow&) = delete;
    ~DrawingWindow();

    // Errors: those of the window calls; PRO_TK_NOT_DISPLAYED when the window shows something else.
    [[nodiscard]] ProError Open(const std::wstring& name, ProMdl drawing);

private:
    const UserWindows& user_;
    int window_ = PRO_VALUE_UNUSED;
    bool isOurs_ = false;
};

}  // namespace kv
