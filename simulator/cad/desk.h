// What lies on the user's desk: the windows, which of them is current, what is selected, and what waits until
// the running command has returned.

#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "simulator/cad/model_store.h"
#include "simulator/cad/pick.h"

namespace sim {

// The mode that the host is in when the model's window is current.
int ModeOf(const SimModel& model);

class Desk {
public:
    explicit Desk(ModelStore& models);
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    // ---- Windows
    // The base window, 0, always exists; a window without a model is empty. Of the windows one is active, the
    // one that the user works in, and one is current, the one that calls draw and export in: the active one
    // until a command sets another. Numbers of closed windows are not used again.

    // The user opens the model: in its window, else an empty one, else a new one; that window becomes active
    // and current.
    int Open(SimModel& model);
    // The model's window, made if need be as above; the current window stays.
    int WindowFor(SimModel& model);
    // The same for a window that the host opens by itself: it is the user's from then on.
    int OwnWindowFor(SimModel& model);
    // Puts the model into its own window or, if it has none, into the current one.
    void Display(SimModel& model);
    bool HasWindow(int window) const;
    void SetCurrent(int window);
    // Closes the window, of the base window only its contents go. The current one is refused.
    [[nodiscard]] bool Delete(int window);
    SimModel* ModelIn(int window) const;
    // True for a model with a window, and for the assembly of such a manufacturing model.
    bool IsShown(const SimModel& model);
    int CurrentWindow();
    void CountRepaint() { ++repaints_; }
    int Repaints() const { return repaints_; }
    void CountRefresh() { ++refreshes_; }
    int Refreshes() const { return refreshes_; }
    // How the model's window shows it: from model to screen, with scale and shift. Seen from (1, -1, 1)
    // with z upwards until somebody turns it.
    // A manufacturing model shows its assembly.
    const Matrix& ViewOf(const SimModel& model) const;
    void SetView(const SimModel& model, const Matrix& view);
    // Shows the whole model as it is turned.
    void Refit(const SimModel& model);

    // ---- The activated model
    // The user activates a component of the open assembly, until another model is opened.
    void Activate(SimModel& model);
    // That one, else the model of the active window; null without one.
    SimModel* Active();
    // What component paths begin in: the open assembly, or that of an open manufacturing model.
    SimModel* Top();

    // ---- What takes effect when the command has returned
    void ActivateLater(int window) { pendingWindow_ = window; }
    void CloseCurrentLater() { toClose_.push_back(CurrentWindow()); }
    void EraseLater(SimModel& model);
    // Erases what waits: the command goes on, but the host has had control.
    void EraseWaiting();
    // True for a model that a command has erased and that must not be used any more.
    bool IsDoomed(const SimModel& model) const { return !doomed_.empty() && doomed_.contains(&model); }

    // Takes every model out of memory, at once, that is in no window and below none that is.
    void EraseNotShown();

    // ---- From a command's start to its end
    void StartCommand();
    // Notes what the command left behind; what it put off takes effect. A model that another one in memory
    // refers to stays there.
    void EndCommand();
    // Makes a sheet of a drawing current, for a command that should go back to the one before.
    void TurnToSheet(SimModel& drawing, int sheet);
    // What the last command left behind, one line each, in words: another window current than the active one,
    // windows that it opened and that are not active, drawings on another sheet.
    const std::vector<std::string>& Leftovers() const { return leftovers_; }

    // ---- Selection
    std::vector<Pick> selected;      // the selection buffer
    bool canAccessSelection = true;  // false: no selection tool is active

    // The user replaces the selected component by the model of a file in the working directory, "pump.prt".
    // Nothing happens unless one component is selected, there is such a file, and it does not hold the
    // assembly.
    void ReplaceSelected(std::wstring_view file);

    // A selection handle is a number that is never used twice, so that a stale one is always noticed.
    void* NewSelection(const Pick& pick);
    const Pick* FindSelection(const void* handle) const;
    void DropSelection(const void* handle);
    // The handles that the last interactive selection gave out.
    std::vector<void*> lastPicked;

    // ---- Surfaces and coordinate systems that visits have handed out
    void HandOut(const SurfaceItem& surface) { surfaces_.insert(&surface); }
    const SurfaceItem* FindSurface(const void* handle) const;
    // The same handle for the same coordinate system.
    void* HandOut(const SimModel& model, const CoordinateSystem& system);
    // Null: none in memory has this handle.
    const CoordinateSystem* FindCoordinateSystem(const SimModel& model, const void* handle) const;

private:
    struct Window {
        SimModel* model = nullptr;
        bool isOpen = true;
    };

    void FollowStore();
    void Put(int window, SimModel* model);
    void Close(int window);
    void MakeActive(int window);
    void Forget(const SimModel& model);
    std::string Described(int window) const;
    void NoteWindowLeftCurrent();
    void ApplyPending();
    void NoteLeftOpen();

    ModelStore& models_;
    std::vector<Window> windows_ = {{}};                 // by window number
    std::unordered_map<const SimModel*, int> windowOf_;  // of the models that have one
    std::set<int> emptyWindows_ = {0};
    int activeWindow_ = 0;
    std::optional<int> setWindow_;  // the current window, when a command has set one
    int pendingWindow_ = -1;
    std::vector<int> toClose_;
    std::vector<int> opened_;                                // windows that the command filled
    std::unordered_map<const SimModel*, int> sheetsBefore_;  // of drawings that the command turned
    std::vector<std::string> leftovers_;
    int repaints_ = 0;
    int refreshes_ = 0;
    std::unordered_map<const SimModel*, Matrix> views_;  // of the models that were turned
    std::vector<SimModel*> toErase_;
    std::unordered_set<const SimModel*> doomed_;
    std::unordered_map<std::uintptr_t, Pick> selections_;
    std::uintptr_t nextSelection_ = 0x5E1000;
    std::unordered_set<const void*> surfaces_;
    std::map<std::pair<const SimModel*, int>, std::uintptr_t> systems_;  // handles, by model and identifier
    std::uintptr_t nextSystem_ = 0xC51000;
    SimModel* activated_ = nullptr;
    SimModel* activatedIn_ = nullptr;  // the model that was open then
};

}  // namespace sim
