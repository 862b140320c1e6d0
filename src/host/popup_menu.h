// The plug-in's entries in the host's right-click menus.
#pragma once

namespace kv {

// Lets the next right-click install the entries.
void WatchPopupMenus();

}  // namespace kv
