// NewPart, NewAsm, NewSmt: a new component from the host's template.
#pragma once

#include <ProToolkit.h>

namespace kv {

ProError NewPart();
ProError NewAsm();
ProError NewSmt();

}  // namespace kv
