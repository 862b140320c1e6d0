// Right-click entries, installed in two steps: the first right-click after start-up adds buttons to the
// host's action menu, every later one fills the selection menu that the host has just made.

#include "host/popup_menu.h"

#include <cstring>
#include <string>

#include <ProNotify.h>
#include <ProPopupmenu.h>

#include "base/host_callback.h"
#include "base/status.h"
#include "base/text.h"
#include "folders/kv_open_drw.h"
#include "host/access_rules.h"
#include "host/command_table.h"
#include "ui/prompt.h"

namespace kv {

static constexpr char kActionMenu[] = "ActionMenu";
static constexpr char kSelectionMenu[] = "Sel Obj Menu";
static constexpr char kOpenDrawing[] = "KvOpenDrw";
static constexpr char kOpenDrawingHelp[] = "KvOpenDrw_Help";

// A command of the command table that has right-click entries too.
struct PopupRow {
    const char* name;
    AccessRule available;  // in the action menu
    const char* actionMenuButton;
    const char* plainButton;  // its name where the host takes ASCII only
    const wchar_t* label;     // in the selection menu
    PopupRule shown;          // in the selection menu
};

// clang-format off
static constexpr PopupRow kPopups[] = {
    // name            available    action menu button    plain button           label                 shown
    {"KvIsolate",      AccessSolid, "独立显示",           "KvIsolateAction",     L"独立显示(kv)",      AccessSelComponent},
    {"KvHideReverse",  AccessSolid, "反向隐藏",           "KvHideReverseAction", L"反转显示(kv)",      AccessSelComponent},
    {"KvShowAllComp",  AccessSolid, "全部显示",           "KvShowAllCompAction", L"全部显示(kv)",      AccessSelComponent},
    {"KvMdlNameCopy",  AccessPart,  "复制模型名称(kv)",   "KvMdlNameCopyAction", L"复制模型名称(kv)",  AccessSelItem},
    {"KvMdlRename",    AccessPart,  "快速重命名(kv)",     "KvMdlRenameAction",   L"快速重命名(kv)",    AccessSelItem},
};
// clang-format on

static ProError InstallPopupCommands(const char* menuName);
static ProError OnSelObjMenuCreate(const char* menuName);
static void AddActionButton(const PopupRow& row);
static void AddPopupButton(ProPopupMenuId menu, const PopupRow& row);
static void AddOpenDrawing(ProPopupMenuId menu);
static void SetPopupHandler(ProPopupmenuCreatePostAction handler);

void WatchPopupMenus() {
    SetPopupHandler(HostCallback<InstallPopupCommands>);
}

static ProError InstallPopupCommands(const char*) {
    for (const PopupRow& row : kPopups) AddActionButton(row);
    SetPopupHandler(HostCallback<OnSelObjMenuCreate>);
    return PRO_TK_NO_ERROR;
}

static ProError OnSelObjMenuCreate(const char* menuName) {
    if (menuName == nullptr || std::strcmp(menuName, kSelectionMenu) != 0) return PRO_TK_NO_ERROR;
    ProPopupMenuId menu = 0;
    const ProError status = ProPopupmenuIdGet(menuName, &menu);
    if (Failed(status)) return status;
    for (const PopupRow& row : kPopups) AddPopupButton(menu, row);
    AddOpenDrawing(menu);
    return PRO_TK_NO_ERROR;
}

// The command is in the menu already: the host then keeps the rule and priority of its first registration,
// and only the button is new.
static void AddActionButton(const PopupRow& row) {
    const CommandRow* command = FindCommand(row.name);
    uiCmdCmdId id = nullptr;
    if (command == nullptr) return;
    if (Failed(CommandIdGet(row.name, command->action, uiProe2ndImmediate, row.available, id))) return;
    const ProError status = AddMenuButton(kActionMenu, row.actionMenuButton, row.name, command->helpKey, id);
    // The label is the same: it comes from the menu file.
    const bool isRefused = Failed(status) && status != PRO_TK_E_FOUND;
    if (isRefused) AddMenuButton(kActionMenu, row.plainButton, row.name, command->helpKey, id);
}

static void AddPopupButton(ProPopupMenuId menu, const PopupRow& row) {
    const CommandRow* command = FindCommand(row.name);
    uiCmdCmdId id = nullptr;
    if (command == nullptr || Failed(ProCmdCmdIdFind(HostName(row.name), &id))) return;
    const std::wstring help = WideName(command->helpKey);
    ProPopupmenuButtonAdd(menu, PRO_VALUE_UNUSED, HostName(row.name), HostText(row.label),
                          HostText(help.c_str()), id, row.shown, nullptr);
}

// This command has no row in the command table. The first right-click registers it, later ones find it.
static void AddOpenDrawing(ProPopupMenuId menu) {
    uiCmdCmdId id = nullptr;
    if (Failed(CommandIdGet(kOpenDrawing, HostAction<KvOpenDrw>, uiProeImmediate, AccessPart, id))) return;
    // An entry without a label could not be told from a gap: a missing text is its key.
    const std::wstring label = MenuText(kOpenDrawing);
    const std::wstring help = MenuText(kOpenDrawingHelp);
    ProPopupmenuButtonAdd(menu, PRO_VALUE_UNUSED, HostName(kOpenDrawing), HostText(label.c_str()),
                          HostText(help.c_str()), id, AccessSelItem, nullptr);
    AddMenuButton(kActionMenu, kOpenDrawing, kOpenDrawing, kOpenDrawingHelp, id);
}

// The host takes every kind of handler as one type; it is called as what the notification says it is.
static void SetPopupHandler(ProPopupmenuCreatePostAction handler) {
    const auto untyped = reinterpret_cast<void (*)()>(handler);
    ProNotificationSet(PRO_POPUPMENU_CREATE_POST, reinterpret_cast<ProFunction>(untyped));
}

}  // namespace kv
