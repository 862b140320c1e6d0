#include "simulator/ui/text_tree_check.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <system_error>

#include "simulator/layout/icon_file.h"
#include "simulator/layout/res_attributes.h"
#include "simulator/layout/text_file.h"
#include "simulator/layout/text_tree.h"
#include "simulator/report/utf8.h"
#include "simulator/ui/interface.h"

namespace sim {

namespace fs = std::filesystem;

namespace {

constexpr std::size_t kLongestText = 80;
constexpr unsigned kSmallIcon = 16;
constexpr unsigned kLargeIcon = 32;

std::string Name(const fs::path& path) {
    return Utf8(path.wstring());
}

std::vector<fs::path> FilesIn(const fs::path& folder, const wchar_t* extension) {
    std::vector<fs::path> files;
    std::error_code error;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder, error))
        if (entry.is_regular_file(error) &&
            UpperName(entry.path().extension().wstring()) == UpperName(extension))
            files.push_back(entry.path());
    std::sort(files.begin(), files.end());
    return files;
}

class TreeCheck {
public:
    TreeCheck(const Interface& screen, const TextTree& texts)
        : screen_(screen), texts_(texts), text_(texts_.NeutralFolder()), own_(texts_.LanguageFolder()) {}

    std::vector<std::string> Run() {
        CheckLayouts();
        CheckMessageFiles();
        CheckCommands();
        CheckMenus();
        return std::move(problems_);
    }

private:
    using Files = std::map<std::wstring, MessageFile>;

    // A text that several commands share is reported once.
    void Add(const std::string& problem) {
        if (std::find(problems_.begin(), problems_.end(), problem) == problems_.end())
            problems_.push_back(problem);
    }

    void CheckLayouts() {
        for (const fs::path& folder : {text_ / "resource", own_ / "resource"})
            for (const fs::path& file : FilesIn(folder, L".res"))
                for (const auto& [place, name] : UnmetAttributes(ReadResFile(file, problems_)))
                    Add(FindingPlace(file, place.line, place.column) +
                        "warning: no file in use has the attribute " + name);
    }

    Files ReadFolder(const fs::path& folder) {
        Files files;
        for (const fs::path& file : FilesIn(folder, L".txt")) {
            const std::wstring name = file.filename().wstring();
            const std::string fault = MessageFileNameFault(name, !texts_.upperCaseMessageFileRefused);
            if (!fault.empty()) Add(Name(file) + ": the name is " + fault);
            files[name] = ReadMessageFile(file, problems_);
        }
        CheckKeysAreUnique(files);
        return files;
    }

    void CheckKeysAreUnique(const Files& files) {
        std::map<std::string, fs::path> owners;
        for (const auto& [name, file] : files)
            for (const auto& [key, text] : file.texts)
                if (const auto [owner, isNew] = owners.try_emplace(key, file.path); !isNew)
                    Add(Name(file.path) + ": the key \"" + key + "\" is in " + Name(owner->second) +
                        " as well");
    }

    void CheckMessageFiles() {
        neutral_ = ReadFolder(text_);
        translated_ = ReadFolder(own_);
        if (neutral_.empty()) Add(Name(text_) + ": no message file");
        CheckSameKeys(neutral_, own_, translated_);
        CheckSameKeys(translated_, text_, neutral_);
    }

    void CheckSameKeys(const Files& files, const fs::path& otherFolder, const Files& others) {
        for (const auto& [name, file] : files) {
            const auto other = others.find(name);
            if (other == others.end()) {
                Add(Name(otherFolder / name) + ": the file is missing");
                continue;
            }
            for (const auto& [key, text] : file.texts) CheckSameMessage(text, other->second);
        }
    }

    // The caller passes the same arguments in every language.
    void CheckSameMessage(const MessageText& text, const MessageFile& other) {
        const auto same = other.texts.find(text.key);
        if (same == other.texts.end()) {
            Add(Name(other.path) + ": the key \"" + text.key + "\" is missing");
            return;
        }
        if (same->second.kind != text.kind)
            Add(Name(other.path) + ": the key \"" + text.key +
                "\" has another class than in the other language");
        if (Arguments(same->second.Shown()) != Arguments(text.Shown()))
            Add(Name(other.path) + ": the key \"" + text.key +
                "\" takes other arguments than in the other language");
    }

    static std::set<std::pair<int, char>> Arguments(std::wstring_view text) {
        std::vector<MessageConversion> conversions;
        std::string fault;
        FindConversions(text, conversions, fault);
        std::set<std::pair<int, char>> arguments;
        for (const MessageConversion& conversion : conversions)
            arguments.insert({conversion.argument, conversion.type});
        return arguments;
    }

    void CheckCommands() {
        for (const auto& command : screen_.Commands()) {
            CheckIcon(*command);
            if (!command->designated) continue;
            for (const std::string& key : {command->labelKey, command->helpKey, command->descriptionKey})
                CheckMenuText(command->messageFile, key, "command " + command->name);
        }
    }

    void CheckMenus() {
        for (const Menu& menu : screen_.Menus()) {
            if (!menu.ofHost) CheckMenuText(menu.messageFile, menu.labelKey, "menu " + menu.name);
            for (const MenuButton& button : menu.buttons)
                for (const std::string& key : {button.labelKey, button.helpKey})
                    CheckMenuText(button.messageFile, key, "button " + button.name);
        }
    }

    // Menus, help lines and the customise dialog show one line.
    void CheckMenuText(const std::wstring& file, const std::string& key, const std::string& where) {
        CheckMenuTextIn(text_, neutral_, file, key, where);
        CheckMenuTextIn(own_, translated_, file, key, where);
    }

    void CheckMenuTextIn(const fs::path& folder, const Files& files, const std::wstring& file,
                         const std::string& key, const std::string& where) {
        const std::string place = Name(folder / file) + ": ";
        const auto messages = files.find(file);
        if (messages == files.end()) return Add(place + "the file is missing, " + where + " needs it");
        const auto text = messages->second.texts.find(key);
        if (text == messages->second.texts.end())
            return Add(place + "the key \"" + key + "\" of " + where + " is missing");
        const std::wstring& shown = text->second.Shown();
        if (shown.empty()) Add(place + "the key \"" + key + "\" of " + where + " has no text");
        if (shown.size() > kLongestText)
            Add(place + "the text of \"" + key + "\" is longer than 80 characters");
    }

    void CheckIcon(const Command& command) {
        if (command.icon.empty()) return Add("command " + command.name + ": no icon");
        CheckIconFile(command, command.icon, kSmallIcon);
        CheckIconFile(command, LargeIconName(command.icon), kLargeIcon);
    }

    void CheckIconFile(const Command& command, const std::string& name, unsigned side) {
        const IconFolder* folder = texts_.FindIcon(name);
        const std::string fault = folder == nullptr ? "is missing" : folder->Fault(name, side);
        if (!fault.empty()) Add("command " + command.name + ": the icon file " + name + " " + fault);
    }

    const Interface& screen_;
    const TextTree& texts_;
    fs::path text_;
    fs::path own_;
    Files neutral_;
    Files translated_;
    std::vector<std::string> problems_;
};

}  // namespace

std::vector<std::string> CheckTextTree(const Interface& screen, const TextTree& texts) {
    return TreeCheck(screen, texts).Run();
}

}  // namespace sim
