// What a session of the host's user interface knows: dialogs, commands, menus, popup menus, notifications,
// messages.

#pragma once

#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <ProMenuBar.h>
#include <ProNotify.h>
#include <ProPopupmenu.h>
#include <ProToolkitErrors.h>
#include <ProUI.h>
#include <ProUICmd.h>

#include "simulator/cad/desk.h"
#include "simulator/layout/dialog.h"
#include "simulator/layout/text_tree.h"
#include "simulator/memory/host_memory.h"
#include "simulator/report/report.h"
#include "simulator/ui/user.h"

namespace sim {

struct Command {
    std::string name;
    uiCmdCmdActFn action = nullptr;
    uiCmdPriority priority = 0;
    uiCmdAccessFn access = nullptr;
    bool inNonActiveWindow = false;
    bool inAccessoryWindow = false;
    std::string icon;         // file name; empty: none set
    bool designated = false;  // offered for the ribbon, with the keys below
    std::string labelKey, helpKey, descriptionKey;
    std::wstring messageFile;

    uiCmdCmdId Id() { return reinterpret_cast<uiCmdCmdId>(this); }
};

struct MenuButton {
    std::string name;
    std::string labelKey, helpKey;
    std::wstring messageFile;
    Command* command = nullptr;
};

struct Menu {
    std::string name;
    std::string labelKey;
    std::wstring messageFile;
    bool ofHost = false;
    std::vector<MenuButton> buttons;
};

struct PopupButton {
    std::string name;
    std::wstring label, help;
    Command* command = nullptr;
    ProPopupmenuAccessFunction access = nullptr;
    ProAppData data = nullptr;
    // Known once the popup is open: the lower one of the command's and the button's own answer.
    uiCmdAccessState state = ACCESS_UNAVAILABLE;
};

struct PopupMenu {
    int id = 0;
    std::string name;
    std::vector<PopupButton> buttons;
};

// One push button as the menu bar shows it.
struct MenuRow {
    std::string menu, button, command;
    std::wstring label, help;  // in the session's language
    uiCmdAccessState access;
};

// A prompt in the message area that waits for its answer.
struct Prompt {
    std::wstring text;
    std::wstring defaultText;
    bool hasDefault = false;
};

// Uses that the documents do not cover or refuse and that are accepted unless refused here.
struct InterfaceStrictness {
    bool nonAsciiButtonNameRefused = false;  // push buttons named in another script
    bool unsetCellRefused = false;           // reading a table cell whose label was never set
};

// What of the host the interface works on.
struct InterfaceParts {
    Report& report;
    HostMemory& memory;
    Desk& desk;
    TextTree& texts;
    User& user;
};

class Interface {
public:
    explicit Interface(const InterfaceParts& parts);
    ~Interface();
    Interface(const Interface&) = delete;
    Interface& operator=(const Interface&) = delete;

    InterfaceStrictness strict;

    // ---- Dialogs
    // Null, and the reason in `fault`: name taken, no such layout, layout with errors. Without a resource the
    // dialog is empty.
    Dialog* LoadDialog(std::string_view sessionName, std::string_view resource, std::string& fault);
    Dialog* FindDialog(std::string_view sessionName);
    bool DestroyDialog(std::string_view sessionName);
    std::vector<std::string> OpenDialogs() const;
    // An image file of the text tree; empty: there is none.
    std::string ImageBytes(const std::string& name) const;
    // The dialog that has the key focus now; null: none.
    Dialog* ActiveDialog() const { return active_.empty() ? nullptr : active_.back(); }
    // Shows the dialog, lets the user play, and answers the status that the plug-in ended it with.
    int Activate(Dialog& dialog);
    // Runs an action of the plug-in. `component` is the dialog's own name for actions of the dialog.
    void RunAction(Dialog& dialog, const std::string& component, const DialogAction& action);

    // ---- Commands
    // Null: the name is taken.
    Command* AddCommand(std::string_view name);
    Command* FindCommand(std::string_view name);
    // Null: not an id of this session.
    Command* CommandFromId(uiCmdCmdId id);
    const std::vector<std::unique_ptr<Command>>& Commands() const { return commands_; }
    // The command's access function now; AVAILABLE without one.
    uiCmdAccessState Availability(const Command& command);
    // The user starts a command. One that is not available is refused with a problem (CANT_ACCESS), so is an
    // unknown one (E_NOT_FOUND) and any while a dialog is open (E_BUSY). Otherwise the answer is the action's
    // own. Macros that the action loaded are played afterwards, last in first out: all are recorded, the one
    // for replacing a component does that.
    ProError RunCommand(std::string_view name);
    bool IsCommandRunning() const { return commandsRunning_ > 0; }
    std::vector<std::wstring> loadedMacros;
    std::string release;  // of the host, as it tells it

    // ---- Menus
    Menu* FindMenu(std::string_view name);
    Menu* AddMenu(std::string_view name, std::string_view neighbour, bool after);
    const std::deque<Menu>& Menus() const { return menus_; }
    // All push buttons of all menus, in order, with texts and availability.
    std::vector<MenuRow> MenuRows();

    // ---- Popup menus
    // The host makes the popup menu, tells the plug-in (notification 72) and asks for every button's
    // availability; the buttons' access functions get what is selected on the desk. Answers the open popup,
    // with hidden entries; it stays open until an entry is chosen, it is closed, or another one opens.
    const PopupMenu& OpenPopup(std::string_view name);
    // The user chooses an entry by its name or label; refused with a problem when it is not shown as
    // available.
    ProError ChoosePopupEntry(std::string_view entry);
    void ClosePopup() { popup_.reset(); }
    PopupMenu* CurrentPopup() { return popup_ ? &*popup_ : nullptr; }
    PopupMenu* FindPopup(int id);

    // ---- Notifications: the callback set for a type, null when none is
    std::map<ProNotifyType, ProFunction> notifications;

    // ---- Message area
    std::optional<Prompt> prompt;

private:
    struct NameBuffers;

    void RunAppAction(Dialog& dialog);
    // What an access function answered; what no access function may answer is a violation.
    uiCmdAccessState CheckedState(int state, const std::string& whose);
    uiCmdAccessState AskCommand(const Command& command);
    ProError StartCommand(Command& command);
    void AskPopupButtons(PopupMenu& popup);
    void PlayMacros();

    Report& report_;
    HostMemory& memory_;
    Desk& desk_;
    TextTree& texts_;
    User& user_;

    std::map<std::string, std::unique_ptr<Dialog>, std::less<>> dialogs_;
    std::vector<Dialog*> active_;
    std::vector<std::unique_ptr<NameBuffers>> nameBuffers_;  // one a level of nested actions
    std::size_t actionDepth_ = 0;

    std::vector<std::unique_ptr<Command>> commands_;
    std::map<std::string, Command*, std::less<>> commandsByName_;
    int commandsRunning_ = 0;

    std::deque<Menu> menus_;
    std::optional<PopupMenu> popup_;
    int nextPopupId_ = 1;
};

}  // namespace sim
