// Windows for drawings: those that the user gets, those that a run opens, and those that the user has.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <ProMdl.h>
#include <ProWindows.h>

namespace kv {

// The models that the host's windows show. Costs a call for every window that there may be.
std::vector<ProMdl> ShownModels();

// What else happens to a window that ShowDrawing has found or opened.
enum class DrawingDisplay {
    Plain,
    Repainted,  // the drawing is displayed anew
    Current,    // the window is the one that calls work in from now on
};

// Shows a drawing in a window, which becomes the active one when the command has returned. On a failure the
// window goes again unless the drawing had one. Errors: those of the window calls and ProMdlDisplay.
[[nodiscard]] ProError ShowDrawing(const std::wstring& name, ProMdl drawing, DrawingDisplay display);

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
