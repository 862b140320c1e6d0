// What lies on the user's desk: the windows, which of them is current, what is selected, and what waits until
// the running command has returned.

#pragma once

#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "cad/model_store.h"
#include "ui/user.h"

namespace sim {

// The mode that the host is in when the model's window is current.
int ModeOf(const SimModel& model);

class Desk {
public:
    explicit Desk(ModelStore& models);
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    // ---- Windows. The base window, 0, always exists; a window without a model is empty.
    // The user opens the model: in its window, else an empty one, else a new one; that window becomes
    // current.
    int Open(SimModel& model);
    // The model's window, made if need be as above; the current window stays.
    int WindowFor(SimModel& model);
    // Puts the model into its own window or, if it has none, into the current one.
    void Display(SimModel& model);
    bool HasWindow(int window) const;
    SimModel* ModelIn(int window) const;
    // True for a model with a window, and for the assembly of such a manufacturing model.
    bool IsShown(const SimModel& model);
    int CurrentWindow();
    std::size_t WindowCount() const { return windows_.size(); }
    void CountRepaint() { ++repaints_; }
    int Repaints() const { return repaints_; }

    // ---- What takes effect when the command has returned
    void ActivateLater(int window) { pendingWindow_ = window; }
    void EraseLater(SimModel& model);
    // True for a model that a command has erased and that must not be used any more.
    bool IsDoomed(const SimModel& model) const { return !doomed_.empty() && doomed_.contains(&model); }
    // Call it when a command has returned. A model that another one in memory refers to stays there.
    void ApplyPending();

    // ---- Selection
    std::vector<Pick> selected;      // the selection buffer
    bool canAccessSelection = true;  // false: no selection tool is active

    // A selection handle is a number that is never used twice, so that a stale one is always noticed.
    void* NewSelection(const Pick& pick);
    const Pick* FindSelection(const void* handle) const;
    void DropSelection(const void* handle);
    // The handles that the last interactive selection gave out.
    std::vector<void*> lastPicked;

    // ---- Surfaces that visits have handed out
    void HandOut(const SurfaceItem& surface) { surfaces_.insert(&surface); }
    const SurfaceItem* FindSurface(const void* handle) const;

private:
    void FollowStore();
    void MakeCurrent(int window);
    void Forget(const SimModel& model);

    ModelStore& models_;
    std::vector<SimModel*> windows_ = {nullptr};  // by window number
    int currentWindow_ = 0;
    int pendingWindow_ = -1;
    int repaints_ = 0;
    std::vector<SimModel*> toErase_;
    std::unordered_set<const SimModel*> doomed_;
    std::unordered_map<std::uintptr_t, Pick> selections_;
    std::uintptr_t nextSelection_ = 0x5E1000;
    std::unordered_set<const void*> surfaces_;
};

}  // namespace sim
