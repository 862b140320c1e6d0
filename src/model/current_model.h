// The model that a command works on.
#pragma once

#include <ProMdl.h>

#include "ui/message_box.h"

namespace kv {

// The current model and its type. Errors: PRO_TK_BAD_CONTEXT without one.
[[nodiscard]] ProError CurrentModelGet(ProMdl& model, ProMdlType& type);

// Replaces a manufacturing model by its assembly. Errors: those of ProMdlTypeGet and ProMfgAssemGet.
[[nodiscard]] ProError SolidOf(ProMdl& model, ProMdlType& type);

// The current model with a manufacturing model replaced by its assembly. Errors: also those of
// ProMfgAssemGet.
[[nodiscard]] ProError CurrentSolidGet(ProMdl& model, ProMdlType& type);

// The current assembly, or the assembly of a current manufacturing model. For any other model `refusal` is
// shown by `show` and the answer is PRO_TK_INVALID_TYPE.
[[nodiscard]] ProError CurrentAssemblyGet(const wchar_t* refusal, ProMdl& assembly,
                                          MessageBoxForm show = ShowMessage);

// The activated assembly, which may be a component of the current one, or the assembly of an activated
// manufacturing model. For any other model, and when the host tells none, `refusal` is shown and the answer
// is PRO_TK_INVALID_TYPE.
[[nodiscard]] ProError ActiveAssemblyGet(const wchar_t* refusal, ProMdl& assembly);

}  // namespace kv
