#include "simulator/layout/text_tree.h"

#include <system_error>

#include "simulator/report/utf8.h"

namespace sim {

namespace fs = std::filesystem;

fs::path TextTree::LanguageFolder() const {
    return NeutralFolder() / Wide(language);
}

fs::path TextTree::FindFile(const fs::path& relative) const {
    std::error_code error;
    for (const fs::path& file : {LanguageFolder() / relative, NeutralFolder() / relative})
        if (fs::is_regular_file(file, error)) return file;
    return {};
}

const IconFolder* TextTree::FindIcon(std::string_view file) const {
    if (iconFolders_.empty()) {
        iconFolders_.emplace_back(NeutralFolder() / "resource");
        iconFolders_.emplace_back(LanguageFolder() / "resource");
    }
    for (const IconFolder& folder : iconFolders_)
        if (folder.Has(file)) return &folder;
    return nullptr;
}

const MessageFile* TextTree::Messages(std::wstring_view file) {
    const std::wstring name(file);
    if (const auto known = messageFiles_.find(name); known != messageFiles_.end()) return known->second.get();
    return LoadMessages(name);
}

const MessageFile* TextTree::LoadMessages(const std::wstring& file) {
    std::unique_ptr<MessageFile>& messages = messageFiles_[file];
    // A name with capitals may be tried: where the host refuses it, that is no more than a missing file.
    if (upperCaseMessageFileRefused && MessageFileNameFault(file, false) != MessageFileNameFault(file, true))
        return nullptr;
    if (const std::string fault = MessageFileNameFault(file, true); !fault.empty()) {
        report_.Violation("the message file name \"" + Utf8(file) + "\" is " + fault);
        return nullptr;
    }
    const fs::path path = FindFile(file);
    if (path.empty()) {
        report_.Violation("there is no message file \"" + Utf8(file) + "\"");
        return nullptr;
    }
    std::vector<std::string> errors;
    messages = std::make_unique<MessageFile>(ReadMessageFile(path, errors));
    for (const std::string& error : errors) report_.Violation(error);
    for (const auto& [key, text] : messages->texts) {
        const auto [owner, isNew] = keyOwners_.try_emplace(key, file);
        // Windows finds a file in any letter case.
        if (!isNew && UpperName(owner->second) != UpperName(file))
            report_.Violation("the message key \"" + key + "\" is in " + Utf8(owner->second) + " and in " +
                              Utf8(file));
    }
    return messages.get();
}

const MessageText* TextTree::FindMessage(std::wstring_view file, std::string_view key) {
    const MessageFile* messages = Messages(file);
    if (messages == nullptr) return nullptr;
    const auto text = messages->texts.find(key);
    return text == messages->texts.end() ? nullptr : &text->second;
}

}  // namespace sim
