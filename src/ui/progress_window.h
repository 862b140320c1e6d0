// The window that shows how far a long run has come.
//
// It is the plug-in's own: plain Windows, not modal, never made active. The host's windows stay as they are,
// and of the messages that wait only those of this window are handled.
#pragma once

#include <cstddef>
#include <memory>
#include <string>

namespace kv {

struct ProgressState;

// Shows a run of `total` items once it has lasted a second. Where no window can be made the run goes on
// without one.
class ProgressWindow {
public:
    // command  the run's name for the user; its menu label is read only for a window that is shown
    ProgressWindow(const char* command, std::size_t total);
    ProgressWindow(const ProgressWindow&) = delete;
    ProgressWindow& operator=(const ProgressWindow&) = delete;
    ~ProgressWindow();

    // Tells that `done` items are finished and `item` is in work. Costs a look at the clock, and at most ten
    // times a second a repaint.
    void Show(std::size_t done, const std::wstring& item);

    // Whether the user has asked to stop.
    bool Cancelled() const;

private:
    std::unique_ptr<ProgressState> state_;
};

// Takes the window from the screen, for a box that needs the user; the next Show brings it back.
void ProgressWindowHide() noexcept;

// Gives the window class back to Windows, before the plug-in is unloaded.
void ProgressWindowForget() noexcept;

}  // namespace kv
