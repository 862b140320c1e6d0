// The plug-in's text tree as the host looks things up in it: layouts, message files, icons.

#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/layout/icon_file.h"
#include "simulator/layout/message_file.h"
#include "simulator/report/report.h"

namespace sim {

class TextTree {
public:
    // `directory`: the registered text directory, the folder that holds `text`.
    TextTree(std::filesystem::path directory, Report& report)
        : directory_(std::move(directory)), report_(report) {}
    TextTree(const TextTree&) = delete;
    TextTree& operator=(const TextTree&) = delete;

    std::string language = "chinese_cn";
    // Message file names with capitals, which the documents do not allow, are accepted unless refused here:
    // then there is no such file.
    bool upperCaseMessageFileRefused = false;

    const std::filesystem::path& Directory() const { return directory_; }
    // The folder `text` itself, and the one of the language in it.
    std::filesystem::path NeutralFolder() const { return directory_ / "text"; }
    std::filesystem::path LanguageFolder() const;

    // text/<language>/<relative>, else text/<relative>; empty: neither is there.
    std::filesystem::path FindFile(const std::filesystem::path& relative) const;
    // The folder that has the icon, text/resource or text/<language>/resource; null: neither.
    const IconFolder* FindIcon(std::string_view file) const;
    // The message file of that name in the session's language, parsed once a session. Null: no such file.
    // What the parser finds wrong is a violation, once.
    const MessageFile* Messages(std::wstring_view file);
    // Text of a key, null: no such file or key.
    const MessageText* FindMessage(std::wstring_view file, std::string_view key);

private:
    const MessageFile* LoadMessages(const std::wstring& file);

    std::filesystem::path directory_;
    Report& report_;
    mutable std::vector<IconFolder> iconFolders_;  // listed when the first icon is looked for
    std::map<std::wstring, std::unique_ptr<MessageFile>> messageFiles_;  // null: there is no such file
    std::map<std::string, std::wstring> keyOwners_;                      // which file brought a key
};

}  // namespace sim
