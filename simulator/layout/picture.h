// Dialogs drawn for people: as indented text, and as a picture of the window.

#pragma once

#include <functional>
#include <string>
#include <vector>

#include "simulator/layout/dialog.h"

namespace sim {

// What a component shows: the entry of a field, the label of the chosen entry or of a button.
std::wstring ShownText(const Component& component);

// The dialog as indented text in layout order: frames, labels, values, what is greyed or hidden.
std::string DialogText(const Dialog& dialog);

// The bytes of an image file that a drawing area shows; empty: none.
using ImageReader = std::function<std::string(const std::string& name)>;

// The dialog as an SVG file, laid out by its grids, in the look of a plain Windows dialog, with all that is
// filled in, ticked, chosen and drawn.
std::string DialogSvg(const Dialog& dialog, const ImageReader& images = {});

// Fills the fields of each column up with blanks to the widest of them, as a terminal shows them. All lines
// have as many fields.
void AlignColumns(std::vector<std::vector<std::string>>& lines);

}  // namespace sim
