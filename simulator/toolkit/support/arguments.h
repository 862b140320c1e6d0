// Checks of what the plug-in hands to a host function. What a real host would not survive is a violation too:
// a model that is none, or NULL.

#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include <ProObjects.h>
#include <ProSelection.h>

#include "simulator/session/session.h"

namespace sim {

// A pointer in a trace as the place that it is, also when it points at text.
inline const void* Place(const void* pointer) {
    return pointer;
}

// The model behind a handle. NULL, a handle of no model in memory, or of one that this command has erased, is
// a violation.
SimModel* FindModel(Session& host, const void* handle);
// The same for a handle that is passed as this kind; another kind is a violation.
SimModel* FindModelOf(Session& host, const void* handle, ModelKind kind);
// A part or an assembly.
SimModel* FindSolid(Session& host, const void* handle);

// The feature behind an item; null when there is none. An item that was never filled, or whose feature or
// owner is gone, is a violation.
const Feature* FindFeature(Session& host, const ProModelitem* item);

// A text input of a buffer type of `size` characters. Nothing for NULL, and, with a violation, for a text
// that does not end within that size.
std::optional<std::wstring_view> TextInput(Session& host, const wchar_t* text, std::size_t size);

// The kind with this model or file type number.
std::optional<ModelKind> KindFromType(int type);

void CopyMatrix(const Matrix& from, ProMatrix to);
Matrix MatrixFrom(ProMatrix matrix);

// The picked item behind a selection; null for NULL and, with a violation, for a selection that does not
// exist or whose model is gone.
const Pick* FindPick(Session& host, ProSelection selection);

// The assembly that the pick's path begins in; null without a path.
SimModel* RootOf(Session& host, const Pick& pick);

// A component path as it was filled: its member, and the member's place in the path's top assembly. Nothing,
// with a violation for a path that was never filled, for one that leads nowhere.
struct PathEnd {
    SimModel* model;
    Matrix placement;
};
std::optional<PathEnd> FindPathEnd(Session& host, const ProAsmcomppath* path);
std::optional<PathEnd> FindPathEnd(SimModel& top, const int* ids, int count);

// A folder as the host writes it into a ProPath. False when it does not fit.
[[nodiscard]] bool FillPath(const std::filesystem::path& path, bool withSeparator, wchar_t* buffer);

}  // namespace sim
