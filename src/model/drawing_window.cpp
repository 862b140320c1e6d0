// Windows for drawings, on the toolkit's window calls.

#include "model/drawing_window.h"

#include <algorithm>

#include "base/status.h"
#include "base/text.h"

namespace kv {

// A long session leaves gaps between the numbers of its windows; after one of this length no further window
// is expected. Too short a gap would make us close a window of the user's.
static constexpr int kLargestGap = 64;

static constexpr int kBaseWindow = 0;

std::vector<ProMdl> ShownModels() {
    std::vector<ProMdl> models;
    int last = kBaseWindow;
    if (Failed(ProWindowCurrentGet(&last))) last = kBaseWindow;
    for (int window = kBaseWindow; window - last <= kLargestGap; ++window) {
        ProMdl model = nullptr;
        if (Failed(ProWindowMdlGet(window, &model))) continue;
        models.push_back(model);
        last = std::max(last, window);
    }
    return models;
}

static ProError DisplayIn(int window, ProMdl drawing, DrawingDisplay display) {
    switch (display) {
        case DrawingDisplay::Repainted:
            return ProMdlDisplay(drawing);
        case DrawingDisplay::Current:
            return ProWindowCurrentSet(window);
        case DrawingDisplay::Plain:
            break;
    }
    return PRO_TK_NO_ERROR;
}

ProError ShowDrawing(const std::wstring& name, ProMdl drawing, DrawingDisplay display) {
    const std::vector<ProMdl> shown = ShownModels();
    const bool wasShown = std::ranges::find(shown, drawing) != shown.end();
    int before = PRO_VALUE_UNUSED;
    if (Failed(ProWindowCurrentGet(&before))) before = kBaseWindow;
    ProMdlName windowName;
    int window = PRO_VALUE_UNUSED;
    ProError status = CopyText(name, windowName);
    if (!Failed(status)) status = ProObjectwindowMdlnameCreate(windowName, PRO_DRAWING, &window);
    if (Failed(status)) return status;
    status = DisplayIn(window, drawing, display);
    if (!Failed(status)) status = ProWindowActivate(window);
    if (!Failed(status)) return status;

    // A window that the user does not get to see is not left behind; the host hands out one that the user
    // has, too.
    if (display == DrawingDisplay::Current) ProWindowCurrentSet(before);
    if (!wasShown) ProWindowDelete(window);
    return status;
}

UserWindows::UserWindows() {
    if (Failed(ProWindowCurrentGet(&current_))) current_ = PRO_VALUE_UNUSED;
}

UserWindows::~UserWindows() {
    if (current_ == PRO_VALUE_UNUSED) return;
    ProWindowCurrentSet(current_);
    ProWindowActivate(current_);
}

int UserWindows::Resting() const {
    return current_ == PRO_VALUE_UNUSED ? kBaseWindow : current_;
}

bool UserWindows::Show(ProMdl model) {
    if (!models_) models_ = ShownModels();
    return std::ranges::find(*models_, model) != models_->end();
}

ProError DrawingWindow::Open(const std::wstring& name, ProMdl drawing) {
    // Afterwards the drawing's own window could not be told from one of the user's.
    isOurs_ = !user_.Show(drawing);
    ProMdlName text;
    ProError status = CopyText(name, text);
    if (!Failed(status)) status = ProObjectwindowMdlnameCreate(text, PRO_DRAWING, &window_);
    if (Failed(status)) {
        window_ = PRO_VALUE_UNUSED;
        return status;
    }

    ProMdl shown = nullptr;
    status = ProWindowCurrentSet(window_);
    if (!Failed(status)) status = ProWindowActivate(window_);
    if (!Failed(status)) status = ProWindowMdlGet(window_, &shown);
    if (Failed(status)) return status;
    return shown == drawing ? PRO_TK_NO_ERROR : PRO_TK_NOT_DISPLAYED;
}

// The current window cannot be deleted: another one has to be current first.
DrawingWindow::~DrawingWindow() {
    if (window_ == PRO_VALUE_UNUSED) return;
    ProWindowCurrentSet(user_.Resting());
    if (!isOurs_ || !Failed(ProWindowDelete(window_))) return;
    // What the next call closes must not be a window of the user's.
    if (Failed(ProWindowCurrentSet(window_))) return;
    ProWindowCurrentClose();
    ProWindowCurrentSet(user_.Resting());
}

}  // namespace kv
