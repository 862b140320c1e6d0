#include "simulator/ui/interface.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <system_error>
#include <utility>

#include "simulator/layout/text_file.h"
#include "simulator/report/call_plugin.h"
#include "simulator/report/utf8.h"
#include "simulator/ui/replace_macro.h"
#include "simulator/ui/sim_dialog.h"

namespace sim {

namespace fs = std::filesystem;

// The two names that an action gets. The memory is the host's own and used again, and what an action leaves
// behind in it is wiped, so that a plug-in that keeps a pointer reads nonsense.
struct Interface::NameBuffers {
    static constexpr std::size_t kSize = 1024;
    std::array<char, kSize> dialog = {};
    std::array<char, kSize> component = {};

    static void Fill(std::array<char, kSize>& buffer, std::string_view text) {
        buffer.fill('\0');
        text.copy(buffer.data(), kSize - 1);
    }
    void Wipe() {
        for (auto* buffer : {&dialog, &component})
            std::memset(buffer->data(), '?', std::strlen(buffer->data()));
    }
};

namespace {

// Runs `undo` when it goes out of scope, also when a callback threw.
template <typename Undo>
class AtEnd {
public:
    explicit AtEnd(Undo undo) : undo_(std::move(undo)) {}
    AtEnd(const AtEnd&) = delete;
    AtEnd& operator=(const AtEnd&) = delete;
    ~AtEnd() { undo_(); }

private:
    Undo undo_;
};

// Windows finds a file in any letter case; this tells whether the name on disk is exactly the one asked for.
bool IsExactName(const fs::path& file) {
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(file.parent_path(), error))
        if (entry.path().filename() == file.filename()) return true;
    return false;
}

}  // namespace

Interface::Interface(const InterfaceParts& parts)
    : report_(parts.report),
      memory_(parts.memory),
      desk_(parts.desk),
      texts_(parts.texts),
      user_(parts.user) {
    for (const char* name : {"Help", "ActionMenu"}) {
        menus_.push_back({});
        menus_.back().name = name;
        menus_.back().ofHost = true;
    }
}

Interface::~Interface() = default;

// ---- Dialogs

Dialog* Interface::LoadDialog(std::string_view sessionName, std::string_view resource, std::string& fault) {
    if (FindDialog(sessionName) != nullptr) {
        fault = "the dialog \"" + std::string(sessionName) + "\" exists already";
        return nullptr;
    }
    ResFile layout;
    if (!resource.empty()) {
        const fs::path file = texts_.FindFile(fs::path("resource") / (Wide(resource) + L".res"));
        if (file.empty() || !IsExactName(file)) {
            fault = "there is no layout \"" + std::string(resource) + ".res\"";
            return nullptr;
        }
        std::vector<std::string> errors;
        layout = ReadResFile(file, errors);
        for (const std::string& error : errors) fault += (fault.empty() ? "" : "\n") + error;
        if (!errors.empty()) return nullptr;
    }
    auto dialog =
        std::make_unique<Dialog>(std::string(sessionName), std::string(resource), std::move(layout));
    return (dialogs_[std::string(sessionName)] = std::move(dialog)).get();
}

Dialog* Interface::FindDialog(std::string_view sessionName) {
    const auto dialog = dialogs_.find(sessionName);
    return dialog == dialogs_.end() ? nullptr : dialog->second.get();
}

bool Interface::DestroyDialog(std::string_view sessionName) {
    const auto dialog = dialogs_.find(sessionName);
    if (dialog == dialogs_.end()) return false;
    dialogs_.erase(dialog);
    return true;
}

std::vector<std::string> Interface::OpenDialogs() const {
    std::vector<std::string> names;
    for (const auto& [name, dialog] : dialogs_) names.push_back(name);
    return names;
}

std::string Interface::ImageBytes(const std::string& name) const {
    const fs::path file = texts_.FindFile(fs::path("resource") / Wide(name));
    return file.empty() ? std::string() : ReadBytes(file).value_or(std::string());
}

int Interface::Activate(Dialog& dialog) {
    dialog.active = true;
    dialog.exitAsked = false;
    dialog.exitStatus = 0;
    active_.push_back(&dialog);
    const AtEnd hide([this, &dialog] {
        dialog.active = false;
        active_.pop_back();
    });

    for (const auto& component : dialog.Components()) {
        const auto shown = component->actions.find(DialogEvent::kShown);
        if (shown != component->actions.end()) RunAction(dialog, component->name, shown->second);
    }
    SimDialog player(*this, user_, dialog);
    const auto scripts = user_.dialogs.find(dialog.Name());
    if (scripts == user_.dialogs.end() || scripts->second.empty()) {
        user_.Problem("unexpected dialog \"" + dialog.Name() + "\": a block \"dialog " + dialog.Name() +
                      "\" of the user script answers it");
    } else {
        const auto script = std::move(scripts->second.front());
        scripts->second.pop_front();
        script(player);
    }
    if (!dialog.exitAsked) player.Close();
    // A plug-in whose exit was made to fail is not to blame.
    const bool exitFailed = report_.FaultedFunction() == "ProUIDialogExit";
    if (!dialog.exitAsked && !exitFailed)
        report_.Violation("the dialog \"" + dialog.Name() + "\" cannot be closed");
    return dialog.exitStatus;
}

void Interface::RunAction(Dialog& dialog, const std::string& component, const DialogAction& action) {
    if (action.run == nullptr) return;
    if (actionDepth_ == nameBuffers_.size()) nameBuffers_.push_back(std::make_unique<NameBuffers>());
    NameBuffers& names = *nameBuffers_[actionDepth_];
    NameBuffers::Fill(names.dialog, dialog.Name());
    NameBuffers::Fill(names.component, component);
    ++actionDepth_;
    ++dialog.actionsRunning;
    {
        const AtEnd leave([&] {
            --actionDepth_;
            --dialog.actionsRunning;
            names.Wipe();
        });
        const DialogAction now = action;  // it may set itself anew
        CallPlugin(report_, now.run, names.dialog.data(), names.component.data(), now.data);
    }
    RunAppAction(dialog);
}

// Control is back at the dialog: what waits is erased, and an application action runs once.
void Interface::RunAppAction(Dialog& dialog) {
    if (dialog.actionsRunning > 0 || !dialog.active || dialog.exitAsked || !dialog.appAction) return;
    desk_.EraseWaiting();
    const DialogAction next = *std::exchange(dialog.appAction, std::nullopt);
    RunAction(dialog, dialog.Name(), next);
}

// ---- Commands

Command* Interface::AddCommand(std::string_view name) {
    if (FindCommand(name) != nullptr) return nullptr;
    commands_.push_back(std::make_unique<Command>());
    Command* command = commands_.back().get();
    command->name = name;
    return commandsByName_[command->name] = command;
}

Command* Interface::FindCommand(std::string_view name) {
    const auto command = commandsByName_.find(name);
    return command == commandsByName_.end() ? nullptr : command->second;
}

Command* Interface::CommandFromId(uiCmdCmdId id) {
    const auto command = std::find_if(commands_.begin(), commands_.end(),
                                      [id](const std::unique_ptr<Command>& c) { return c->Id() == id; });
    return command == commands_.end() ? nullptr : command->get();
}

uiCmdAccessState Interface::CheckedState(int state, const std::string& whose) {
    if (state >= ACCESS_REMOVE && state <= ACCESS_AVAILABLE) return static_cast<uiCmdAccessState>(state);
    report_.Violation("the access function of \"" + whose + "\" answers " + std::to_string(state));
    return ACCESS_UNAVAILABLE;
}

uiCmdAccessState Interface::AskCommand(const Command& command) {
    if (command.access == nullptr) return ACCESS_AVAILABLE;
    return CheckedState(CallPlugin(report_, command.access, MODE_BLIND), command.name);
}

uiCmdAccessState Interface::Availability(const Command& command) {
    try {
        return AskCommand(command);
    } catch (...) {
        report_.Violation("an exception crossed the access function of \"" + command.name + "\"");
        return ACCESS_UNAVAILABLE;
    }
}

ProError Interface::RunCommand(std::string_view name) {
    Command* command = FindCommand(name);
    if (command == nullptr) {
        user_.Problem("there is no command \"" + std::string(name) + "\"");
        return PRO_TK_E_NOT_FOUND;
    }
    if (!active_.empty()) {
        user_.Problem("the command \"" + command->name + "\" cannot start, the dialog \"" +
                      ActiveDialog()->Name() + "\" is open");
        return PRO_TK_E_BUSY;
    }
    if (Availability(*command) != ACCESS_AVAILABLE) {
        user_.Problem("the command \"" + command->name + "\" is not available");
        return PRO_TK_CANT_ACCESS;
    }
    return StartCommand(*command);
}

ProError Interface::StartCommand(Command& command) {
    int answer = PRO_TK_GENERAL_ERROR;
    ++commandsRunning_;
    try {
        answer = CallPlugin(report_, command.action, command.Id(), nullptr, nullptr);
    } catch (...) {
        report_.Violation("an exception crossed the command \"" + command.name + "\"");
    }
    --commandsRunning_;
    prompt.reset();
    desk_.EndCommand();
    PlayMacros();
    return static_cast<ProError>(answer);
}

void Interface::PlayMacros() {
    for (auto macro = loadedMacros.rbegin(); macro != loadedMacros.rend(); ++macro) {
        if (const auto file = ReplacingFile(*macro, release)) desk_.ReplaceSelected(*file);
        user_.macros.push_back(std::move(*macro));
    }
    loadedMacros.clear();
}

// ---- Menus

Menu* Interface::FindMenu(std::string_view name) {
    const auto menu =
        std::find_if(menus_.begin(), menus_.end(), [&](const Menu& m) { return m.name == name; });
    return menu == menus_.end() ? nullptr : &*menu;
}

Menu* Interface::AddMenu(std::string_view name, std::string_view neighbour, bool after) {
    const auto beside =
        std::find_if(menus_.begin(), menus_.end(), [&](const Menu& m) { return m.name == neighbour; });
    if (beside == menus_.end() || FindMenu(name) != nullptr) return nullptr;
    Menu menu;
    menu.name = name;
    return &*menus_.insert(after ? beside + 1 : beside, std::move(menu));
}

std::vector<MenuRow> Interface::MenuRows() {
    std::vector<MenuRow> rows;
    for (const Menu& menu : menus_) {
        for (const MenuButton& button : menu.buttons) {
            const MessageText* label = texts_.FindMessage(button.messageFile, button.labelKey);
            const MessageText* help = texts_.FindMessage(button.messageFile, button.helpKey);
            rows.push_back({menu.name, button.name, button.command->name,
                            label == nullptr ? Wide(button.labelKey) : label->Shown(),
                            help == nullptr ? Wide(button.helpKey) : help->Shown(),
                            Availability(*button.command)});
        }
    }
    return rows;
}

// ---- Popup menus

const PopupMenu& Interface::OpenPopup(std::string_view name) {
    popup_.emplace();
    popup_->id = nextPopupId_++;
    popup_->name = name;
    try {
        const auto created = notifications.find(PRO_POPUPMENU_CREATE_POST);
        if (created != notifications.end() && created->second != nullptr) {
            // The real type of a callback depends on what it is registered for.
            const auto handler =
                reinterpret_cast<ProPopupmenuCreatePostAction>(reinterpret_cast<void (*)()>(created->second));
            std::string handedName = popup_->name;
            CallPlugin(report_, handler, static_cast<const char*>(handedName.c_str()));
            handedName.assign(handedName.size(), '?');
        }
        AskPopupButtons(*popup_);
    } catch (...) {
        report_.Violation("an exception crossed the popup menu \"" + popup_->name + "\"");
    }
    return *popup_;
}

void Interface::AskPopupButtons(PopupMenu& popup) {
    std::vector<const void*> handles;
    for (const Pick& pick : desk_.selected) handles.push_back(desk_.NewSelection(pick));
    auto* selections = static_cast<ProSelection*>(
        NewHostArrayBytes(memory_, handles.data(), handles.size(), sizeof(ProSelection)));
    const AtEnd giveBack([&] {
        for (const void* handle : handles) desk_.DropSelection(handle);
        memory_.Release(BlockKind::kArray, selections);
    });
    for (PopupButton& button : popup.buttons) {
        button.state = AskCommand(*button.command);
        if (button.access == nullptr) continue;
        const int own = CallPlugin(report_, button.access, button.command->Id(), button.data, selections);
        button.state = std::min(button.state, CheckedState(own, button.name));
    }
}

ProError Interface::ChoosePopupEntry(std::string_view entry) {
    if (!popup_) {
        user_.Problem("no popup menu is open to choose \"" + std::string(entry) + "\" from");
        return PRO_TK_E_NOT_FOUND;
    }
    const auto button =
        std::find_if(popup_->buttons.begin(), popup_->buttons.end(),
                     [&](const PopupButton& b) { return b.name == entry || b.label == Wide(entry); });
    const bool shown = button != popup_->buttons.end() && button->state > ACCESS_INVISIBLE;
    if (!shown || button->state != ACCESS_AVAILABLE) {
        user_.Problem("the popup menu \"" + popup_->name +
                      (shown ? "\" shows greyed: \"" : "\" does not show \"") + std::string(entry) + "\"" +
                      (desk_.selected.empty() ? ": nothing is selected" : ""));
        return shown ? PRO_TK_CANT_ACCESS : PRO_TK_E_NOT_FOUND;
    }
    Command& command = *button->command;
    popup_.reset();
    return StartCommand(command);
}

PopupMenu* Interface::FindPopup(int id) {
    return popup_ && popup_->id == id ? &*popup_ : nullptr;
}

}  // namespace sim
