// Twelve standard views of a model. Plain rules, without a host call.
#pragma once

#include <array>

#include "model/view_snap.h"

namespace kv {

struct StandardView {
    const wchar_t* name;
    ViewMatrix orientation;  // rows of length 1, without shift
};

// The front view first. Names begin with "KV_": those of the host itself are taken by drawings.
//
// main  the front view: row i is the screen vector of the model's axis i. The others are as a drawing has
//       them, "right" seen from the right of the front view, and corners seen from (1, 1, 1), (-1, 1, 1),
//       (-1, 1, -1), (1, 1, -1), (1, -1, 1) and (-1, -1, 1) of it.
std::array<StandardView, 12> StandardViews(const ViewMatrix& main);

// The main view of a box of these extents along X, Y and Z: its largest face is the front, the longer edge of
// that lies level. The viewer and what is up are on positive axes. Of equal ones X comes before Y before Z.
ViewMatrix MainViewOf(const std::array<double, 3>& extents);

}  // namespace kv
