// The plug-in's picture in its dialogs.
#pragma once

namespace kv {

// Draws the picture into a drawing area that is on the screen.
void ShowPicture(const char* dialog, const char* area);

}  // namespace kv
