// Dialogs drawn for people: as indented text, and as a picture of the window.

#pragma once

#include <string>

#include "simulator/layout/dialog.h"

namespace sim {

// What a component shows: the entry of a field, the label of the chosen entry or of a button.
std::wstring ShownText(const Component& component);

// The dialog as indented text in layout order: frames, labels, values, what is greyed or hidden.
std::string DialogText(const Dialog& dialog);

// The dialog as an SVG file, laid out by its grids, in the look of a plain Windows dialog.
std::string DialogSvg(const Dialog& dialog);

}  // namespace sim
