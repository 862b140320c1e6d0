// The plug-in's picture in its dialogs.
#pragma once

#include <ProToolkit.h>

namespace kv {

// What a drawing area runs when it is shown.
void ShowPicture(char* dialog, char* component, ProAppData data) noexcept;

}  // namespace kv
