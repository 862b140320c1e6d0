// Views along the axes of a model.
#pragma once

#include <array>
#include <optional>

#include <ProView.h>

namespace kv {

// As the host has it: rows 0 to 2 are the model's axes on the screen, times the scale of the view; row 3 is
// the shift.
using ViewMatrix = std::array<std::array<double, 4>, 4>;

// The nearest view that looks along an axis and has another one upright; scale and shift stay. Its rotation
// is a signed permutation of determinant 1.
//
// Each row goes to the column of its largest entry by amount, with that entry's sign; a later column wins
// only by more than 1e-8. Where two rows want one column, the one with the smaller entry there moves to the
// column that is left, and of entries within 1e-5 the later row moves; it keeps the sign of its entry there.
// In a rotation that is never near zero, and no three rows want one column.
//
// Nothing for a matrix that is no rotation: a row without length or with an entry that is no number.
[[nodiscard]] std::optional<ViewMatrix> SnappedView(const ViewMatrix& view);

// The same rotation without scale and shift, as ProViewMatrixSet is documented to take it. `view` is no
// degenerate one.
[[nodiscard]] ViewMatrix NormalisedView(const ViewMatrix& view);

// Whether both show the same picture but for rounding.
[[nodiscard]] bool IsSameView(const ViewMatrix& one, const ViewMatrix& other);

// The view of the current model's window, and a new one for it. Errors: those of ProViewMatrixGet and
// ProViewMatrixSet.
//
// model  that the window shows; null for the current one, which the assembly of a manufacturing model is not
[[nodiscard]] ProError CurrentViewGet(ViewMatrix& view, ProMdl model = nullptr);
[[nodiscard]] ProError CurrentViewSet(const ViewMatrix& view, ProMdl model = nullptr);

// Puts back a view with scale and shift; a host that takes no such matrix turns at least. The same errors.
[[nodiscard]] ProError CurrentViewReturn(const ViewMatrix& view, ProMdl model);

}  // namespace kv
