// Availability of commands and of right-click entries.
//
// The host asks these rules whenever it refreshes a menu. Being noexcept is part of their types: nothing may
// be thrown into the host.
#pragma once

#include <ProPopupmenu.h>
#include <ProUICmd.h>

namespace kv {

using AccessRule = uiCmdAccessState (*)(uiCmdAccessMode mode) noexcept;

// Available in some of the host's modes, greyed in the others and without a mode.
uiCmdAccessState AccessSolid(uiCmdAccessMode) noexcept;    // assembly, mould
uiCmdAccessState AccessModel(uiCmdAccessMode) noexcept;    // part, sheet metal, assembly, mould
uiCmdAccessState AccessPart(uiCmdAccessMode) noexcept;     // part, sheet metal, assembly
uiCmdAccessState AccessDrawing(uiCmdAccessMode) noexcept;  // drawing
uiCmdAccessState AccessAlways(uiCmdAccessMode) noexcept;

using PopupRule = uiCmdAccessState (*)(uiCmdCmdId command, ProAppData data, ProSelection* buffer) noexcept;

// Available for certain selections, hidden for all others, greyed when the selection cannot be read.
uiCmdAccessState AccessSelComponent(uiCmdCmdId, ProAppData, ProSelection*) noexcept;  // a model comes first
uiCmdAccessState AccessSelItem(uiCmdCmdId, ProAppData, ProSelection*) noexcept;  // one model or geometry item

}  // namespace kv
