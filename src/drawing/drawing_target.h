// The model that a new drawing is made of, and its drawing if there is one.
#pragma once

#include <string>

#include <ProMdl.h>

#include "model/drawing_window.h"

namespace kv {

struct DrawingTarget {
    ProMdl model = nullptr;
    ProMdlType type = PRO_MDL_UNUSED;
    std::wstring name;  // of the model and of its drawing
};

// The selected model, else the current one; of a manufacturing model its assembly. Selected items other than
// one are refused with a box and PRO_TK_BAD_CONTEXT. Errors: also the first of the host's.
[[nodiscard]] ProError DrawingTargetGet(DrawingTarget& target);

// Opens the drawing of the target's name and tells its folder in the message area. False when there is none;
// else `status` is that of the window calls.
bool OpenExistingDrawing(const DrawingTarget& target, DrawingDisplay display, ProError& status);

}  // namespace kv
