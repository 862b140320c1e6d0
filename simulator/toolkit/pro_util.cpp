#include <ProUtil.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <filesystem>
#include <map>
#include <string>
#include <system_error>
#include <vector>

#include "simulator/memory/host_memory.h"
#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace fs = std::filesystem;

namespace {

// The longest model name that a file may carry.
constexpr std::size_t kLongestFileName = 80;

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

// What a file's name says, read from its end: "pump.asm.3" is pump, asm and version 3.
struct NameParts {
    std::wstring name;
    std::wstring extension;  // empty: none
    int version = -1;        // -1: none
};

NameParts SplitName(const std::wstring& fileName) {
    NameParts parts{fileName, {}, -1};
    std::size_t dot = parts.name.rfind(L'.');
    if (dot == std::wstring::npos) return parts;
    const std::wstring last = parts.name.substr(dot + 1);
    const bool isNumber = !last.empty() && last.size() <= 9 &&
                          std::ranges::all_of(last, [](wchar_t c) { return c >= L'0' && c <= L'9'; });
    if (isNumber) {
        parts.version = std::stoi(last);
        parts.name.resize(dot);
        dot = parts.name.rfind(L'.');
    }
    if (dot == std::wstring::npos) return parts;
    parts.extension = parts.name.substr(dot + 1);
    parts.name.resize(dot);
    return parts;
}

// True when the file's name, without a version, fits one of the masks, such as "*.drw,*.frm".
bool FitsMasks(const fs::path& file, std::wstring_view masks) {
    if (masks.empty()) return true;
    const NameParts parts = SplitName(file.filename().wstring());
    const std::wstring extension = parts.extension.empty() ? L"" : L"." + UpperName(parts.extension);
    while (true) {
        const std::size_t comma = masks.find(L',');
        const std::wstring mask = UpperName(masks.substr(0, comma));
        if (mask == L"*" || mask == L"*.*" || mask == L"*" + extension) return true;
        if (comma == std::wstring_view::npos) return false;
        masks.remove_prefix(comma + 1);
    }
}

// A mask that is longer than a name, or empty, where there are masks at all.
bool IsFaultyFilter(std::wstring_view masks) {
    while (!masks.empty()) {
        const std::size_t comma = std::min(masks.find(L','), masks.size());
        if (comma == 0 || comma >= PRO_NAME_SIZE) return true;
        masks.remove_prefix(std::min(comma + 1, masks.size()));
    }
    return false;
}

struct Listing {
    std::vector<fs::path> files;  // by name, versions in their order
    std::vector<fs::path> folders;
};

Listing List(const fs::path& folder, std::wstring_view masks) {
    std::map<std::pair<std::wstring, int>, fs::path> files;
    Listing listing;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (entry->is_directory(error)) listing.folders.push_back(entry->path());
        if (!entry->is_regular_file(error) || !FitsMasks(entry->path(), masks)) continue;
        const NameParts parts = SplitName(entry->path().filename().wstring());
        files[{UpperName(parts.name) + L'.' + UpperName(parts.extension), parts.version}] = entry->path();
    }
    for (auto& [key, path] : files) listing.files.push_back(std::move(path));
    std::ranges::sort(listing.folders);
    return listing;
}

void KeepNewest(std::vector<fs::path>& files) {
    const auto whole = [](const fs::path& file) {
        const NameParts parts = SplitName(file.filename().wstring());
        return UpperName(parts.name) + L'.' + UpperName(parts.extension);
    };
    std::vector<fs::path> newest;
    std::wstring last;
    for (fs::path& file : files) {
        std::wstring name = whole(file);
        if (!newest.empty() && name == last) newest.pop_back();
        last = std::move(name);
        newest.push_back(std::move(file));
    }
    files = std::move(newest);
}

// The plug-in's own array of paths; null, with a violation, for anything else.
HostBlock* PathArray(Session& host, ProPath** array) {
    HostBlock* block =
        array == nullptr ? nullptr : host.memory.Find({BlockKind::kArray}, *reinterpret_cast<void**>(array));
    if (block == nullptr || block->elementSize == sizeof(ProPath)) return block;
    host.report.Violation("is given an array of something else than paths");
    return nullptr;
}

// Adds what fits into a path's buffer at the array's end; the array may move.
void AppendPaths(Session& host, HostBlock* block, const std::vector<fs::path>& paths, ProPath** array) {
    std::vector<std::array<wchar_t, PRO_PATH_SIZE>> texts;
    for (const fs::path& path : paths) {
        texts.emplace_back();
        if (!FillPath(path, false, texts.back().data())) texts.pop_back();
    }
    if (texts.empty()) return;
    const std::size_t before = block->count;
    HostBlock& grown = host.memory.Resize(*block, before + texts.size());
    std::memcpy(grown.Data() + before * sizeof(ProPath), texts.data(), texts.size() * sizeof(ProPath));
    *array = reinterpret_cast<ProPath*>(grown.Data());
}

// Options that the host has besides those that the session sets: the ones that commands may set.
constexpr std::wstring_view kOptions[] = {
    L"DWG_EXPORT_FORMAT",
    L"DXF_EXPORT_FORMAT",
    L"INTF2D_OUT_ACIS",
    L"MATERIAL_UPDATE_SMT_BEND_TABLE",
    L"OVERRIDE_STORE_BACK",
    L"PRO_FORMAT_DIR",
    L"PRO_MATERIAL_DIR",
    L"PRO_SHEET_MET_DIR",
    L"SAVE_OBJECTS",
    L"START_MODEL_DIR",
    L"TEMPLATE_DESIGNASM",
    L"TEMPLATE_DRAWING",
    L"TEMPLATE_SHEETMETALPART",
    L"TEMPLATE_SOLIDPART",
};

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
    return Traced(kSite, {Place(str)},
                  [&](Session& host) { return FreeString(host, BlockKind::kText, str); });
}

ProError ProWstringFree(wchar_t* wstr) {
    static const CallSite kSite("ProWstringFree", {}, true);
    return Traced(kSite, {Place(wstr)},
                  [&](Session& host) { return FreeString(host, BlockKind::kString, wstr); });
}

ProError ProWstringproarrayFree(wchar_t** ws_array) {
    static const CallSite kSite("ProWstringproarrayFree", {PRO_TK_BAD_INPUTS}, true);
    return Traced(kSite, {ws_array}, [&](Session& host) -> ProError {
        const HostBlock* block = host.memory.Find({BlockKind::kArray}, ws_array);
        if (block == nullptr) return PRO_TK_BAD_INPUTS;
        if (block->elementSize != sizeof(wchar_t*)) {
            host.report.Violation("is given an array of something else than strings");
            return PRO_TK_BAD_INPUTS;
        }
        for (std::size_t i = 0; i < block->count; ++i) host.memory.Release(BlockKind::kString, ws_array[i]);
        host.memory.Release(BlockKind::kArray, ws_array);
        return PRO_TK_NO_ERROR;
    });
}

// ---- Directories

ProError ProDirectoryCurrentGet(ProPath path) {
    static const CallSite kSite("ProDirectoryCurrentGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {Out(path, PRO_PATH_SIZE)}, [&](Session& host) -> ProError {
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

ProError ProFilesList(ProPath directory_path, ProLine filter, ProFileListOpt listing_option,
                      ProPath** p_file_name_array, ProPath** p_subdir_name_array) {
    static const CallSite kSite("ProFilesList", {PRO_TK_BAD_INPUTS, PRO_TK_INVALID_DIR});
    return Traced(kSite, {directory_path, filter, listing_option, p_file_name_array, p_subdir_name_array},
                  [&](Session& host) -> ProError {
                      const auto masks = TextInput(host, filter == nullptr ? L"" : filter, PRO_LINE_SIZE);
                      const auto folder =
                          TextInput(host, directory_path == nullptr ? L"" : directory_path, PRO_PATH_SIZE);
                      const bool isKnown =
                          listing_option == PRO_FILE_LIST_ALL || listing_option == PRO_FILE_LIST_LATEST;
                      if (!masks || !folder || !isKnown || IsFaultyFilter(*masks)) return PRO_TK_BAD_INPUTS;
                      HostBlock* files = PathArray(host, p_file_name_array);
                      HostBlock* folders = PathArray(host, p_subdir_name_array);
                      if (files == nullptr || folders == nullptr || files == folders)
                          return PRO_TK_BAD_INPUTS;
                      const fs::path where = host.models.WorkingDirectory() / fs::path(*folder);
                      std::error_code error;
                      if (!fs::is_directory(where, error)) return PRO_TK_INVALID_DIR;
                      Listing listing = List(where, *masks);
                      if (listing_option == PRO_FILE_LIST_LATEST) KeepNewest(listing.files);
                      AppendPaths(host, files, listing.files, p_file_name_array);
                      AppendPaths(host, PathArray(host, p_subdir_name_array), listing.folders,
                                  p_subdir_name_array);
                      return PRO_TK_NO_ERROR;
                  });
}

ProError ProFileMdlnameParse(ProPath file_name_w_path, ProPath r_path, ProMdlName r_file_name,
                             ProMdlExtension r_extension, int* r_version) {
    static const CallSite kSite("ProFileMdlnameParse", {PRO_TK_BAD_INPUTS, PRO_TK_INVALID_NAME});
    return Traced(
        kSite,
        {file_name_w_path, Out(r_path, PRO_PATH_SIZE), Out(r_file_name, PRO_MDLNAME_SIZE),
         Out(r_extension, PRO_MDLEXTENSION_SIZE), Out(r_version)},
        [&](Session& host) -> ProError {
            const auto text = TextInput(host, file_name_w_path, PRO_PATH_SIZE);
            if (!text || text->empty()) return PRO_TK_BAD_INPUTS;
            const std::size_t slash = text->find_last_of(L"\\/:");
            const std::wstring_view folder =
                text->substr(0, slash == std::wstring_view::npos ? 0 : slash + 1);
            const NameParts parts = SplitName(std::wstring(text->substr(folder.size())));
            if (parts.name.size() > kLongestFileName) return PRO_TK_BAD_INPUTS;
            if (parts.name.empty() || parts.extension.size() >= PRO_MDLEXTENSION_SIZE)
                return PRO_TK_INVALID_NAME;
            const bool isFilled =
                (r_path == nullptr || FillBuffer<wchar_t>(folder, r_path, PRO_PATH_SIZE)) &&
                (r_file_name == nullptr || FillBuffer<wchar_t>(parts.name, r_file_name, PRO_MDLNAME_SIZE)) &&
                (r_extension == nullptr ||
                 FillBuffer<wchar_t>(parts.extension, r_extension, PRO_MDLEXTENSION_SIZE));
            if (!isFilled) return PRO_TK_GENERAL_ERROR;
            if (r_version != nullptr) *r_version = parts.version;
            return PRO_TK_NO_ERROR;
        });
}

ProError ProDirectoryChoose(ProName dialog_label, ProPath* shortcut_path_arr, ProName* shortcut_name_arr,
                            ProPath default_path, ProPath r_selected_path) {
    static const CallSite kSite("ProDirectoryChoose", {PRO_TK_USER_ABORT});
    return Traced(
        kSite,
        {dialog_label, shortcut_path_arr, shortcut_name_arr, default_path,
         Out(r_selected_path, PRO_PATH_SIZE)},
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
                   pre_sel_file_name, Out(r_selected_file, PRO_PATH_SIZE)},
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

ProError ProFileMdlnameSave(ProName dialog_label, ProLine filter_string, ProPath* shortcut_path_arr,
                            ProName* shortcut_name_arr, ProPath default_path,
                            ProMdlFileName pre_sel_file_name, ProPath r_selected_file) {
    static const CallSite kSite("ProFileMdlnameSave", {PRO_TK_USER_ABORT});
    return Traced(
        kSite,
        {dialog_label, filter_string, shortcut_path_arr, shortcut_name_arr, default_path, pre_sel_file_name,
         Out(r_selected_file, PRO_PATH_SIZE)},
        [&](Session& host) -> ProError {
            const auto choice = ReadChoice(host, dialog_label, L"Save", default_path);
            const auto masks = TextInput(host, filter_string == nullptr ? L"" : filter_string, PRO_LINE_SIZE);
            const auto proposed = TextInput(host, pre_sel_file_name == nullptr ? L"" : pre_sel_file_name,
                                            PRO_FILE_MDLNAME_SIZE);
            if (!choice || !masks || !proposed || r_selected_file == nullptr) return PRO_TK_BAD_INPUTS;
            host.user.fileQuestions.push_back(
                {choice->start.wstring(), std::wstring(*masks), {}, 0, std::wstring(*proposed), false});
            const auto file = TakeAnswer(host, *choice, host.user.files);
            if (!file) return PRO_TK_USER_ABORT;
            return FillPath(*file, false, r_selected_file) ? PRO_TK_NO_ERROR : PRO_TK_GENERAL_ERROR;
        });
}

ProError ProToolkitApplTextPathGet(ProPath text_path) {
    static const CallSite kSite("ProToolkitApplTextPathGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {Out(text_path, PRO_PATH_SIZE)}, [&](Session& host) -> ProError {
        if (text_path == nullptr) return PRO_TK_BAD_INPUTS;
        return FillPath(host.texts.Directory(), false, text_path) ? PRO_TK_NO_ERROR : PRO_TK_GENERAL_ERROR;
    });
}

// ---- Options

ProError ProConfigoptArrayGet(ProName option, ProPath** value_array) {
    static const CallSite kSite("ProConfigoptArrayGet", {PRO_TK_E_NOT_FOUND, PRO_TK_BAD_INPUTS});
    return Traced(kSite, {option, Out(value_array)}, [&](Session& host) -> ProError {
        const auto name = TextInput(host, option, PRO_NAME_SIZE);
        if (!name || name->empty() || value_array == nullptr) return PRO_TK_BAD_INPUTS;
        const auto values = host.configOptions.find(UpperName(*name));
        if (values == host.configOptions.end() || values->second.empty()) return PRO_TK_E_NOT_FOUND;
        std::vector<std::array<wchar_t, PRO_PATH_SIZE>> paths(values->second.size());
        for (std::size_t i = 0; i < paths.size(); ++i)
            if (!FillBuffer<wchar_t>(values->second[i], paths[i].data(), PRO_PATH_SIZE))
                return PRO_TK_GENERAL_ERROR;
        *value_array = reinterpret_cast<ProPath*>(NewHostArray(host.memory, paths));
        return PRO_TK_NO_ERROR;
    });
}

ProError ProConfigoptionGet(ProName option, ProPath option_value) {
    static const CallSite kSite("ProConfigoptionGet", {PRO_TK_E_NOT_FOUND, PRO_TK_BAD_INPUTS});
    return Traced(kSite, {option, Out(option_value, PRO_PATH_SIZE)}, [&](Session& host) -> ProError {
        const auto name = TextInput(host, option, PRO_NAME_SIZE);
        if (!name || name->empty() || option_value == nullptr) return PRO_TK_BAD_INPUTS;
        const auto values = host.configOptions.find(UpperName(*name));
        if (values == host.configOptions.end() || values->second.empty()) return PRO_TK_E_NOT_FOUND;
        const std::wstring value = values->second.front().substr(0, PRO_PATH_SIZE - 1);
        return FillBuffer<wchar_t>(value, option_value, PRO_PATH_SIZE) ? PRO_TK_NO_ERROR
                                                                       : PRO_TK_GENERAL_ERROR;
    });
}

ProError ProConfigoptSet(ProName option, ProPath option_value) {
    static const CallSite kSite("ProConfigoptSet", {PRO_TK_E_NOT_FOUND, PRO_TK_BAD_INPUTS});
    return Traced(kSite, {option, option_value}, [&](Session& host) -> ProError {
        const auto name = TextInput(host, option, PRO_NAME_SIZE);
        const auto value = TextInput(host, option_value, PRO_PATH_SIZE);
        if (!name || name->empty() || !value) return PRO_TK_BAD_INPUTS;
        const std::wstring key = UpperName(*name);
        const auto known = host.configOptions.find(key);
        if (known == host.configOptions.end() && std::ranges::find(kOptions, key) == std::end(kOptions))
            return PRO_TK_E_NOT_FOUND;
        // An option of several values only grows.
        std::vector<std::wstring>& values = host.configOptions[key];
        if (values.size() > 1)
            values.emplace_back(*value);
        else
            values = {std::wstring(*value)};
        return PRO_TK_NO_ERROR;
    });
}
