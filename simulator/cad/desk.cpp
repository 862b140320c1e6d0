#include "simulator/cad/desk.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include "simulator/report/utf8.h"

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
    const auto place = static_cast<std::size_t>(window);
    return window >= 0 && place < windows_.size() && windows_[place].isOpen;
}

SimModel* Desk::ModelIn(int window) const {
    return HasWindow(window) ? windows_[static_cast<std::size_t>(window)].model : nullptr;
}

void Desk::Put(int window, SimModel* model) {
    SimModel*& shown = windows_[static_cast<std::size_t>(window)].model;
    if (shown != nullptr) windowOf_.erase(shown);
    shown = model;
    if (model == nullptr) {
        emptyWindows_.insert(window);
        return;
    }
    emptyWindows_.erase(window);
    windowOf_[model] = window;
}

// The store's current model is what the user sees; whoever arranges a session may set it directly.
void Desk::FollowStore() {
    SimModel* model = models_.current;
    if (ModelIn(activeWindow_) == model) return;
    const auto own = windowOf_.find(model);
    if (own != windowOf_.end())
        activeWindow_ = own->second;
    else
        Put(activeWindow_, model);
}

int Desk::CurrentWindow() {
    FollowStore();
    return setWindow_.value_or(activeWindow_);
}

void Desk::SetCurrent(int window) {
    FollowStore();
    setWindow_ = window;
}

int Desk::WindowFor(SimModel& model) {
    FollowStore();
    if (const auto own = windowOf_.find(&model); own != windowOf_.end()) return own->second;
    int window = static_cast<int>(windows_.size());
    if (emptyWindows_.empty())
        windows_.emplace_back();
    else
        window = *emptyWindows_.begin();
    Put(window, &model);
    opened_.push_back(window);
    // An empty active window that has just been filled shows its model.
    if (window == activeWindow_) MakeActive(window);
    return window;
}

int Desk::OwnWindowFor(SimModel& model) {
    const int window = WindowFor(model);
    std::erase(opened_, window);
    return window;
}

int Desk::Open(SimModel& model) {
    const int window = WindowFor(model);
    MakeActive(window);
    setWindow_.reset();
    return window;
}

void Desk::Display(SimModel& model) {
    FollowStore();
    if (windowOf_.contains(&model)) return;
    const int window = CurrentWindow();
    Put(window, &model);
    if (window == activeWindow_) MakeActive(window);
}

bool Desk::Delete(int window) {
    if (window == CurrentWindow()) return false;
    Close(window);
    return true;
}

void Desk::Close(int window) {
    if (!HasWindow(window)) return;
    Put(window, nullptr);
    if (pendingWindow_ == window) pendingWindow_ = -1;
    if (window != 0) {
        windows_[static_cast<std::size_t>(window)].isOpen = false;
        emptyWindows_.erase(window);
        if (setWindow_ == window) setWindow_.reset();
    }
    if (window == activeWindow_) MakeActive(0);
}

bool Desk::IsShown(const SimModel& model) {
    FollowStore();
    return windowOf_.contains(&model) || std::ranges::any_of(windowOf_, [&model](const auto& shown) {
               return shown.first->MfgAssembly() == &model;
           });
}

void Desk::MakeActive(int window) {
    activeWindow_ = window;
    models_.current = ModelIn(window);
    models_.currentMode = models_.current == nullptr ? -1 : ModeOf(*models_.current);
}

// ---- The activated model

void Desk::Activate(SimModel& model) {
    activated_ = &model;
    activatedIn_ = models_.current;
}

SimModel* Desk::Active() {
    const bool holds = activated_ != nullptr && activatedIn_ == models_.current;
    return holds ? activated_ : models_.current;
}

SimModel* Desk::Top() {
    SimModel* top = models_.current;
    return top != nullptr && top->MfgAssembly() != nullptr ? top->MfgAssembly() : top;
}

// ---- After the command

void Desk::EraseLater(SimModel& model) {
    if (doomed_.insert(&model).second) toErase_.push_back(&model);
}

void Desk::ApplyPending() {
    if (HasWindow(pendingWindow_)) MakeActive(pendingWindow_);
    pendingWindow_ = -1;
    setWindow_.reset();
    for (const int window : toClose_) Close(window);
    toClose_.clear();
    EraseWaiting();
}

void Desk::EraseWaiting() {
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

void Desk::EraseNotShown() {
    FollowStore();
    std::unordered_set<const SimModel*> kept;
    std::vector<SimModel*> open;
    for (const Window& window : windows_)
        if (window.model != nullptr && kept.insert(window.model).second) open.push_back(window.model);
    while (!open.empty()) {
        SimModel* model = open.back();
        open.pop_back();
        for (SimModel* below : model->ModelsBelow())
            if (kept.insert(below).second) open.push_back(below);
    }
    // A model goes after the last one that uses it.
    for (SimModel* model : models_.All())
        if (!kept.contains(model) && model->UserCount() == 0) open.push_back(model);
    while (!open.empty()) {
        SimModel* model = open.back();
        open.pop_back();
        const std::vector<SimModel*> below = model->ModelsBelow();
        if (!models_.Erase(*model)) continue;
        for (SimModel* next : below)
            if (!kept.contains(next) && next->UserCount() == 0) open.push_back(next);
    }
    std::erase_if(toErase_, [this](const SimModel* model) { return !doomed_.contains(model); });
}

void Desk::Forget(const SimModel& model) {
    if (const auto own = windowOf_.find(&model); own != windowOf_.end()) Put(own->second, nullptr);
    std::erase_if(selected, [&model](const Pick& pick) { return pick.model == &model; });
    std::erase_if(systems_, [&model](const auto& system) { return system.first.first == &model; });
    if (activated_ == &model) activated_ = nullptr;
    doomed_.erase(&model);
    views_.erase(&model);
    sheetsBefore_.erase(&model);
    for (const auto& surface : model.Surfaces()) surfaces_.erase(surface.get());
}

// ---- What a command left behind

void Desk::StartCommand() {
    opened_.clear();
    sheetsBefore_.clear();
    leftovers_.clear();
}

void Desk::EndCommand() {
    FollowStore();
    leftovers_.clear();
    // What takes effect now makes the active window current again: ask before it does.
    NoteWindowLeftCurrent();
    ApplyPending();
    NoteLeftOpen();
}

void Desk::TurnToSheet(SimModel& drawing, int sheet) {
    sheetsBefore_.try_emplace(&drawing, drawing.CurrentSheet());
    drawing.SetCurrentSheet(sheet);
}

std::string Desk::Described(int window) const {
    const SimModel* model = ModelIn(window);
    return model == nullptr ? "an empty window" : "the window of " + Utf8(model->Name());
}

void Desk::NoteWindowLeftCurrent() {
    const int next = HasWindow(pendingWindow_) ? pendingWindow_ : activeWindow_;
    if (setWindow_ && *setWindow_ != next) leftovers_.push_back(Described(*setWindow_) + " was left current");
}

void Desk::NoteLeftOpen() {
    for (const int window : opened_)
        if (ModelIn(window) != nullptr && window != activeWindow_)
            leftovers_.push_back(Described(window) + " was left open");
    for (const auto& [drawing, sheet] : sheetsBefore_)
        if (drawing->CurrentSheet() != sheet)
            leftovers_.push_back("the drawing " + Utf8(drawing->Name()) + " was left on sheet " +
                                 std::to_string(drawing->CurrentSheet()));
}

// ---- Selection and surfaces

void Desk::ReplaceSelected(std::wstring_view file) {
    const auto parts = ParseModelFileName(file);
    if (!parts || selected.size() != 1 || selected[0].path.empty() || Top() == nullptr) return;
    SimModel* owner = Top();
    const std::vector<int>& path = selected[0].path;
    for (std::size_t i = 0; i + 1 < path.size() && owner != nullptr; ++i) {
        const Feature* feature = owner->FindFeature(path[i]);
        owner = feature == nullptr ? nullptr : feature->component;
    }
    Feature* component = owner == nullptr ? nullptr : owner->FindFeature(path.back());
    SimModel* model = nullptr;
    const bool isThere =
        models_.NewestFile(parts->name, parts->kind, models_.WorkingDirectory()).version != 0;
    if (component == nullptr || component->component == nullptr || !isThere) return;
    if (models_.Retrieve(parts->name, parts->kind, model) != PRO_TK_NO_ERROR) return;
    if (model == owner || model->HasBelow(*owner)) return;
    owner->ReplaceComponent(*component, *model);
    selected.clear();
}

static const SimModel& ShownBy(const SimModel& model) {
    return model.MfgAssembly() == nullptr ? model : *model.MfgAssembly();
}

const Matrix& Desk::ViewOf(const SimModel& model) const {
    static constexpr double kScale = 0.5;
    static constexpr double kLevel = 0.70710678118654752 * kScale;
    static constexpr double kThird = 0.57735026918962576 * kScale;
    static constexpr double kSixth = 0.40824829046386302 * kScale;
    static constexpr Matrix kFromCorner = {{{kLevel, -kSixth, kThird, 0},
                                            {kLevel, kSixth, -kThird, 0},
                                            {0, 2 * kSixth, kThird, 0},
                                            {500, 400, 0, 1}}};
    const auto found = views_.find(&ShownBy(model));
    return found == views_.end() ? kFromCorner : found->second;
}

void Desk::SetView(const SimModel& model, const Matrix& view) {
    views_[&ShownBy(model)] = view;
}

void Desk::Refit(const SimModel& model) {
    static constexpr double kFittedScale = 0.25;
    Matrix view = ViewOf(model);
    for (std::size_t row = 0; row < 3; ++row) {
        const double length = std::hypot(view[row][0], view[row][1], view[row][2]);
        for (std::size_t column = 0; column < 3; ++column) view[row][column] *= kFittedScale / length;
    }
    view[3] = {500, 400, 0, 1};
    SetView(model, view);
}

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

void* Desk::HandOut(const SimModel& model, const CoordinateSystem& system) {
    std::uintptr_t& handle = systems_[{&model, system.id}];
    if (handle == 0) handle = nextSystem_ += 16;
    return std::bit_cast<void*>(handle);
}

const CoordinateSystem* Desk::FindCoordinateSystem(const SimModel& model, const void* handle) const {
    const auto number = reinterpret_cast<std::uintptr_t>(handle);
    for (auto system = systems_.lower_bound({&model, 0});
         system != systems_.end() && system->first.first == &model; ++system)
        if (system->second == number) return model.FindCoordinateSystem(system->first.second);
    return nullptr;
}

const SurfaceItem* Desk::FindSurface(const void* handle) const {
    return surfaces_.contains(handle) ? static_cast<const SurfaceItem*>(handle) : nullptr;
}

}  // namespace sim
