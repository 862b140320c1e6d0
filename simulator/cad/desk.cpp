#include "cad/desk.h"

#include <algorithm>
#include <bit>

namespace sim {

namespace {

// Numbers of the host's modes.
constexpr int kModePart = 1;
constexpr int kModeSheetmetal = 2;
constexpr int kModeAssembly = 5;
constexpr int kModeDrawing = 6;
constexpr int kModeManufacture = 7;
constexpr int kModeMould = 8;
constexpr int kModeFormat = 12;

}  // namespace

int ModeOf(const SimModel& model) {
    switch (model.Kind()) {
        case ModelKind::kPart:
            return model.Subtype() == ModelSubtype::kSheetmetal ? kModeSheetmetal : kModePart;
        case ModelKind::kAssembly:
            return kModeAssembly;
        case ModelKind::kDrawing:
            return kModeDrawing;
        case ModelKind::kFormat:
            return kModeFormat;
        case ModelKind::kManufacturing:
            break;
    }
    return model.Subtype() == ModelSubtype::kMould ? kModeMould : kModeManufacture;
}

Desk::Desk(ModelStore& models) : models_(models) {
    // Enough that the result of a usual selection stays where it is when the next one is made.
    lastPicked.reserve(256);
    models_.onErase = [this](const SimModel& model) { Forget(model); };
}

// ---- Windows

bool Desk::HasWindow(int window) const {
    return window >= 0 && static_cast<std::size_t>(window) < windows_.size();
}

SimModel* Desk::ModelIn(int window) const {
    return HasWindow(window) ? windows_[static_cast<std::size_t>(window)] : nullptr;
}

// The store's current model is what the user sees; whoever arranges a session may set it directly.
void Desk::FollowStore() {
    const auto place = static_cast<std::size_t>(currentWindow_);
    if (windows_[place] == models_.current) return;
    const auto own = std::ranges::find(windows_, models_.current);
    if (models_.current != nullptr && own != windows_.end())
        currentWindow_ = static_cast<int>(own - windows_.begin());
    else
        windows_[place] = models_.current;
}

int Desk::CurrentWindow() {
    FollowStore();
    return currentWindow_;
}

int Desk::WindowFor(SimModel& model) {
    FollowStore();
    auto place = std::ranges::find(windows_, &model);
    if (place == windows_.end()) place = std::ranges::find(windows_, nullptr);
    if (place == windows_.end()) place = windows_.insert(windows_.end(), nullptr);
    *place = &model;
    const int window = static_cast<int>(place - windows_.begin());
    // An empty current window that has just been filled shows its model.
    if (window == currentWindow_) MakeCurrent(window);
    return window;
}

int Desk::Open(SimModel& model) {
    const int window = WindowFor(model);
    MakeCurrent(window);
    return window;
}

void Desk::Display(SimModel& model) {
    FollowStore();
    if (std::ranges::find(windows_, &model) != windows_.end()) return;
    windows_[static_cast<std::size_t>(currentWindow_)] = &model;
    MakeCurrent(currentWindow_);
}

bool Desk::IsShown(const SimModel& model) {
    FollowStore();
    return std::ranges::any_of(windows_, [&model](const SimModel* shown) {
        return shown != nullptr && (shown == &model || shown->MfgAssembly() == &model);
    });
}

void Desk::MakeCurrent(int window) {
    currentWindow_ = window;
    models_.current = windows_[static_cast<std::size_t>(window)];
    models_.currentMode = models_.current == nullptr ? -1 : ModeOf(*models_.current);
}

// ---- After the command

void Desk::EraseLater(SimModel& model) {
    if (doomed_.insert(&model).second) toErase_.push_back(&model);
}

void Desk::ApplyPending() {
    if (pendingWindow_ >= 0) {
        FollowStore();
        MakeCurrent(pendingWindow_);
    }
    pendingWindow_ = -1;
    // The last user of a model may be erased after the model itself was to be: go round until nothing more
    // goes.
    std::vector<SimModel*> left;
    for (bool anyErased = true; anyErased; std::swap(toErase_, left)) {
        left.clear();
        for (SimModel* model : toErase_)
            if (!models_.Erase(*model)) left.push_back(model);
        anyErased = left.size() < toErase_.size();
    }
    toErase_.clear();
    doomed_.clear();
}

void Desk::Forget(const SimModel& model) {
    for (SimModel*& shown : windows_)
        if (shown == &model) shown = nullptr;
    std::erase_if(selected, [&model](const Pick& pick) { return pick.model == &model; });
    for (const auto& surface : model.Surfaces()) surfaces_.erase(surface.get());
}

// ---- Selection and surfaces

void* Desk::NewSelection(const Pick& pick) {
    nextSelection_ += 16;
    selections_[nextSelection_] = pick;
    return std::bit_cast<void*>(nextSelection_);
}

const Pick* Desk::FindSelection(const void* handle) const {
    const auto found = selections_.find(reinterpret_cast<std::uintptr_t>(handle));
    return found == selections_.end() ? nullptr : &found->second;
}

void Desk::DropSelection(const void* handle) {
    selections_.erase(reinterpret_cast<std::uintptr_t>(handle));
}

const SurfaceItem* Desk::FindSurface(const void* handle) const {
    return surfaces_.contains(handle) ? static_cast<const SurfaceItem*>(handle) : nullptr;
}

}  // namespace sim
