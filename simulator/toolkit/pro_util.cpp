#include <ProUtil.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "report/utf8.h"
#include "session/traced.h"
#include "toolkit/arguments.h"
#include "toolkit/host_memory.h"

using namespace sim;

namespace fs = std::filesystem;

namespace {

ProError FreeList(Session& host, BlockKind kind, const void* list, int count) {
    const HostBlock* block = host.memory.Find({kind}, list);
    if (block == nullptr) return PRO_TK_GENERAL_ERROR;
    if (block->step != static_cast<std::size_t>(count))
        host.report.Violation("frees " + std::to_string(count) + " of " + std::to_string(block->step) +
                              " strings");
    host.memory.Release(kind, list);
    return PRO_TK_NO_ERROR;
}

ProError FreeString(Session& host, BlockKind kind, const void* text) {
    return host.memory.Release(kind, text) ? PRO_TK_NO_ERROR : PRO_TK_GENERAL_ERROR;
}

// What the two choice dialogs have in common. The title is the label, or the host's own words without one.
struct Choice {
    std::wstring title;
    fs::path start;
};

std::optional<Choice> ReadChoice(Session& host, const wchar_t* label, const wchar_t* defaultTitle,
                                 const wchar_t* defaultPath) {
    Choice choice{defaultTitle, host.models.WorkingDirectory()};
    if (label != nullptr) {
        const auto text = TextInput(host, label, PRO_NAME_SIZE);
        if (!text) return std::nullopt;
        choice.title = *text;
    }
    if (defaultPath != nullptr) {
        const auto text = TextInput(host, defaultPath, PRO_PATH_SIZE);
        if (!text) return std::nullopt;
        choice.start /= fs::path(*text);
    }
    return choice;
}

// The user's next answer to a choice; nothing when it is Cancel or was not arranged.
std::optional<fs::path> TakeAnswer(Session& host, const Choice& choice,
                                   std::deque<std::optional<std::wstring>>& answers) {
    host.user.questions.push_back(choice.title);
    if (answers.empty()) {
        host.user.Problem("is asked \"" + Utf8(choice.title) + "\", and nobody said what to choose");
        return std::nullopt;
    }
    const std::optional<std::wstring> answer = std::move(answers.front());
    answers.pop_front();
    if (!answer) return std::nullopt;
    fs::path path = (choice.start / fs::path(*answer)).lexically_normal();
    return path.make_preferred();
}

// True when the file's name, without a version, fits one of the masks, such as "*.drw,*.frm".
bool FitsMasks(const fs::path& file, std::wstring_view masks) {
    if (masks.empty()) return true;
    fs::path name = file.filename();
    const std::wstring last = name.extension().wstring();
    const bool hasVersion = last.size() > 1 && std::ranges::all_of(last.substr(1), [](wchar_t c) {
                                return c >= L'0' && c <= L'9';
                            });
    if (hasVersion) name = name.stem();
    const std::wstring extension = UpperName(name.extension().wstring());
    while (true) {
        const std::size_t comma = masks.find(L',');
        const std::wstring mask = UpperName(masks.substr(0, comma));
        if (mask == L"*" || mask == L"*.*" || mask == L"*" + extension) return true;
        if (comma == std::wstring_view::npos) return false;
        masks.remove_prefix(comma + 1);
    }
}

}  // namespace

// ---- Freeing

ProError ProStringarrayFree(char** str_arr, int ct) {
    static const CallSite kSite("ProStringarrayFree", {}, true);
    return Traced(kSite, {str_arr, ct},
                  [&](Session& host) { return FreeList(host, BlockKind::kTextArray, str_arr, ct); });
}

ProError ProWstringarrayFree(wchar_t** wstr_arr, int ct) {
    static const CallSite kSite("ProWstringarrayFree", {}, true);
    return Traced(kSite, {wstr_arr, ct},
                  [&](Session& host) { return FreeList(host, BlockKind::kStringArray, wstr_arr, ct); });
}

ProError ProStringFree(char* str) {
    static const CallSite kSite("ProStringFree", {}, true);
    return Traced(kSite, {Output(str)},
                  [&](Session& host) { return FreeString(host, BlockKind::kText, str); });
}

ProError ProWstringFree(wchar_t* wstr) {
    static const CallSite kSite("ProWstringFree", {}, true);
    return Traced(kSite, {Output(wstr)},
                  [&](Session& host) { return FreeString(host, BlockKind::kString, wstr); });
}

// ---- Directories

ProError ProDirectoryCurrentGet(ProPath path) {
    static const CallSite kSite("ProDirectoryCurrentGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {Output(path)}, [&](Session& host) -> ProError {
        if (path == nullptr) return PRO_TK_BAD_INPUTS;
        return FillPath(host.models.WorkingDirectory(), true, path) ? PRO_TK_NO_ERROR : PRO_TK_GENERAL_ERROR;
    });
}

ProError ProDirectoryChange(ProPath path) {
    static const CallSite kSite("ProDirectoryChange",
                                {PRO_TK_INVALID_DIR, PRO_TK_CANT_ACCESS, PRO_TK_INVALID_NAME});
    return Traced(kSite, {path}, [&](Session& host) -> ProError {
        const auto text = TextInput(host, path, PRO_PATH_SIZE);
        return text ? host.models.ChangeDirectory(*text) : PRO_TK_INVALID_NAME;
    });
}

ProError ProDirectoryChoose(ProName dialog_label, ProPath* shortcut_path_arr, ProName* shortcut_name_arr,
                            ProPath default_path, ProPath r_selected_path) {
    static const CallSite kSite("ProDirectoryChoose", {PRO_TK_USER_ABORT});
    return Traced(
        kSite, {dialog_label, shortcut_path_arr, shortcut_name_arr, default_path, Output(r_selected_path)},
        [&](Session& host) -> ProError {
            const auto choice = ReadChoice(host, dialog_label, L"Select Directory", default_path);
            if (!choice || r_selected_path == nullptr) return PRO_TK_BAD_INPUTS;
            const auto folder = TakeAnswer(host, *choice, host.user.folders);
            if (!folder) return PRO_TK_USER_ABORT;
            std::error_code error;
            if (!fs::is_directory(*folder, error)) {
                host.user.Problem("chooses the folder " + Utf8(folder->wstring()) + ", which does not exist");
                return PRO_TK_USER_ABORT;
            }
            return FillPath(*folder, false, r_selected_path) ? PRO_TK_NO_ERROR : PRO_TK_GENERAL_ERROR;
        });
}

ProError ProFileMdlnameOpen(ProName dialog_label, ProLine filter_string, ProPath* shortcut_path_arr,
                            ProName* shortcut_name_arr, ProPath default_path,
                            ProMdlFileName pre_sel_file_name, ProPath r_selected_file) {
    static const CallSite kSite("ProFileMdlnameOpen", {PRO_TK_USER_ABORT});
    return Traced(kSite,
                  {dialog_label, filter_string, shortcut_path_arr, shortcut_name_arr, default_path,
                   pre_sel_file_name, Output(r_selected_file)},
                  [&](Session& host) -> ProError {
                      const auto choice = ReadChoice(host, dialog_label, L"Open", default_path);
                      const auto masks =
                          TextInput(host, filter_string == nullptr ? L"" : filter_string, PRO_LINE_SIZE);
                      if (!choice || !masks || r_selected_file == nullptr) return PRO_TK_BAD_INPUTS;
                      const auto file = TakeAnswer(host, *choice, host.user.files);
                      if (!file) return PRO_TK_USER_ABORT;
                      std::error_code error;
                      if (!fs::is_regular_file(*file, error) || !FitsMasks(*file, *masks)) {
                          host.user.Problem("chooses the file " + Utf8(file->wstring()) +
                                            ", which the dialog does not list");
                          return PRO_TK_USER_ABORT;
                      }
                      return FillPath(*file, false, r_selected_file) ? PRO_TK_NO_ERROR : PRO_TK_GENERAL_ERROR;
                  });
}

ProError ProToolkitApplTextPathGet(ProPath text_path) {
    static const CallSite kSite("ProToolkitApplTextPathGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {Output(text_path)}, [&](Session& host) -> ProError {
        if (text_path == nullptr) return PRO_TK_BAD_INPUTS;
        return FillPath(host.textDirectory, false, text_path) ? PRO_TK_NO_ERROR : PRO_TK_GENERAL_ERROR;
    });
}

// ---- Options

ProError ProConfigoptArrayGet(ProName option, ProPath** value_array) {
    static const CallSite kSite("ProConfigoptArrayGet", {PRO_TK_E_NOT_FOUND, PRO_TK_BAD_INPUTS});
    return Traced(kSite, {option, value_array}, [&](Session& host) -> ProError {
        const auto name = TextInput(host, option, PRO_NAME_SIZE);
        if (!name || name->empty() || value_array == nullptr) return PRO_TK_BAD_INPUTS;
        const auto values = host.configOptions.find(UpperName(*name));
        if (values == host.configOptions.end() || values->second.empty()) return PRO_TK_E_NOT_FOUND;
        std::vector<std::array<wchar_t, PRO_PATH_SIZE>> paths(values->second.size());
        for (std::size_t i = 0; i < paths.size(); ++i)
            if (!FillBuffer<wchar_t>(values->second[i], paths[i].data(), PRO_PATH_SIZE))
                return PRO_TK_GENERAL_ERROR;
        *value_array = reinterpret_cast<ProPath*>(NewHostArray(host, paths));
        return PRO_TK_NO_ERROR;
    });
}
