// Checks of what the plug-in hands to a host function. What a real host would not survive is a violation too:
// a model that is none, or NULL.

#pragma once

#include <cstddef>
#include <optional>
#include <string_view>
#include <vector>

#include <ProObjects.h>

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

// The top assembly of a component path. A path that was never filled is a violation.
SimModel* FindPathTop(Session& host, const ProAsmcomppath& path);

// The model at the end of component feature ids from `top` down; null when they lead nowhere.
SimModel* ModelAlong(SimModel& top, const std::vector<int>& ids);

// A text input of a buffer type of `size` characters. Nothing for NULL, and, with a violation, for a text
// that does not end within that size.
std::optional<std::wstring_view> TextInput(Session& host, const wchar_t* text, std::size_t size);

// The kind with this model or file type number.
std::optional<ModelKind> KindFromType(int type);

void CopyMatrix(const Matrix& from, ProMatrix to);

// A folder as the host writes it into a ProPath. False when it does not fit.
[[nodiscard]] bool FillPath(const std::filesystem::path& path, bool withSeparator, wchar_t* buffer);

}  // namespace sim
