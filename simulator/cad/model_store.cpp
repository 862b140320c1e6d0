#include "simulator/cad/model_store.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <system_error>
#include <utility>

#include <windows.h>

#include "simulator/cad/model_file.h"
#include "simulator/report/utf8.h"

namespace sim {

namespace fs = std::filesystem;

namespace {

// The host creates no model with a longer name, although it can hold one.
constexpr std::size_t kLongestNewName = 31;

// Windows' own form, without a separator at the end.
fs::path Normal(const fs::path& path) {
    fs::path normal = path.lexically_normal();
    normal.make_preferred();
    if (!normal.has_filename() && normal != normal.root_path()) normal = normal.parent_path();
    return normal;
}

// False when the text is not on disk in full; no half-written file is left.
bool WriteWhole(const fs::path& file, const std::string& text) {
    {
        std::ofstream stream(file, std::ios::binary | std::ios::trunc);
        stream.write(text.data(), static_cast<std::streamsize>(text.size()));
        stream.close();
        if (stream) return true;
    }
    std::error_code error;
    fs::remove(file, error);
    return false;
}

ModelFile NextFile(const SimModel& model, FolderIndex& index, const fs::path& folder) {
    const ModelFile* newest = index.Newest(model.Name(), model.Kind(), true);
    ModelFile file{{}, model.Name(), std::wstring(ExtensionOf(model.Kind())), model.Kind(), 1};
    if (newest != nullptr) file.version = newest->version + 1;
    file.path =
        folder / (LowerName(model.Name()) + L"." + file.extension + L"." + std::to_wstring(file.version));
    return file;
}

}  // namespace

// The host does not look for what a suppressed component names.
static bool IsNeeded(const SimModel& model, const ModelTie& tie) {
    return tie.role != ModelTie::Role::kComponent || model.Features()[tie.position].status == kFeatureActive;
}

// A model that is read but not yet tied to the models it names.
struct ModelStore::Pending {
    SimModel* model;
    std::vector<ModelTie> ties;
};

ModelStore::ModelStore(fs::path workingDirectory) : workingDirectory_(std::move(workingDirectory)) {
    workingDirectory_ = Normal(fs::absolute(workingDirectory_));
}

ModelStore::~ModelStore() = default;

// ---- Memory

SimModel& ModelStore::Add(std::unique_ptr<SimModel> model) {
    SimModel& added = *model;
    handles_.insert(&added);
    models_[{added.Kind(), UpperName(added.Name())}] = std::move(model);
    return added;
}

SimModel* ModelStore::Create(std::wstring_view name, ModelKind kind, ModelSubtype subtype) {
    if (name.empty() || name.size() > kLongestNewName || Find(name, kind) != nullptr) return nullptr;
    SimModel& model = Add(std::make_unique<SimModel>(std::wstring(name), kind, subtype));
    model.directory = workingDirectory_;
    return &model;
}

bool ModelStore::Rename(SimModel& model, std::wstring_view name) {
    const SimModel* holder = Find(name, model.Kind());
    if (!IsModelName(name) || name.size() > kLongestNewName) return false;
    if (holder != nullptr && holder != &model) return false;
    auto entry = models_.extract({model.Kind(), UpperName(model.Name())});
    if (entry.empty()) return false;
    entry.key().second = UpperName(name);
    models_.insert(std::move(entry));
    model.SetName(name);
    return true;
}

SimModel* ModelStore::Find(std::wstring_view name, ModelKind kind) {
    const auto found = models_.find({kind, UpperName(name)});
    return found == models_.end() ? nullptr : found->second.get();
}

SimModel* ModelStore::FromHandle(const void* handle) {
    if (!handles_.contains(handle)) return nullptr;
    return static_cast<SimModel*>(const_cast<void*>(handle));
}

std::vector<SimModel*> ModelStore::All() {
    std::vector<SimModel*> all;
    for (const auto& [key, model] : models_) all.push_back(model.get());
    return all;
}

bool ModelStore::Erase(SimModel& model) {
    const auto found = models_.find({model.Kind(), UpperName(model.Name())});
    if (found == models_.end() || found->second.get() != &model || model.UserCount() > 0) return false;
    if (onErase) onErase(model);
    if (current == &model) {
        current = nullptr;
        currentMode = -1;
    }
    model.ReleaseModelsBelow();
    handles_.erase(&model);
    erased_.push_back(std::move(found->second));
    models_.erase(found);
    return true;
}

// ---- Retrieval

ModelFile ModelStore::NewestFile(std::wstring_view name, ModelKind kind, const fs::path& folder) const {
    const ModelFile* file = folders_.try_emplace(folder, folder).first->second.Newest(name, kind, false);
    if (file != nullptr) return *file;
    return {{}, std::wstring(name), std::wstring(ExtensionOf(kind)), kind, 0};
}

std::vector<ModelFile> ModelStore::NewestFiles(const fs::path& folder) const {
    return folders_.try_emplace(folder, folder).first->second.All();
}

ModelFile ModelStore::NewestOnPath(std::wstring_view name, ModelKind kind) const {
    for (const fs::path& folder : searchPath)
        if (ModelFile file = NewestFile(name, kind, folder); file.version != 0) return file;
    return {{}, std::wstring(name), std::wstring(ExtensionOf(kind)), kind, 0};
}

ProError ModelStore::Retrieve(std::wstring_view name, ModelKind kind, SimModel*& model) {
    model = Find(name, kind);
    if (model != nullptr) return PRO_TK_NO_ERROR;
    ModelFile file = NewestFile(name, kind, workingDirectory_);
    if (file.version == 0) file = NewestOnPath(name, kind);
    return file.version == 0 ? PRO_TK_E_NOT_FOUND : LoadTree(file, model);
}

ProError ModelStore::Load(const fs::path& path, ModelKind kind, SimModel*& model) {
    model = nullptr;
    const fs::path whole = Normal(workingDirectory_ / path);
    const std::wstring fileName = whole.filename().wstring();
    const std::optional<ModelFile> parts = ParseModelFileName(fileName);
    if (parts && parts->kind != kind) return PRO_TK_INVALID_FILE;
    const std::wstring name = parts ? parts->name : fileName;
    model = Find(name, kind);
    if (model != nullptr) return PRO_TK_NO_ERROR;

    ModelFile file = NewestFile(name, kind, whole.parent_path());
    if (parts && parts->version != 0) {
        file.path = whole;
        file.version = parts->version;
    }
    std::error_code error;
    if (file.version == 0 || !fs::exists(file.path, error)) return PRO_TK_E_NOT_FOUND;
    return LoadTree(file, model);
}

// Reads the model and then, one after the other, what the models read so far name: no recursion, and a model
// that contains itself finds itself in memory.
ProError ModelStore::LoadTree(const ModelFile& file, SimModel*& model) {
    damaged_.clear();
    std::vector<Pending> pending;
    const ProError status = LoadOne(file, pending, model);
    while (!pending.empty()) {
        const Pending next = std::move(pending.back());
        pending.pop_back();
        for (const ModelTie& tie : next.ties) {
            SimModel* other = FindOrLoad(tie.name, tie.kind, next.model->directory, pending);
            if (other == nullptr && IsNeeded(*next.model, tie)) NoteDeadEnd(*next.model, tie);
            TieModels(*next.model, tie, other);
        }
    }
    return status;
}

void ModelStore::NoteDeadEnd(const SimModel& model, const ModelTie& tie) {
    const bool leavesFolder = tie.name.find_first_of(L"/\\:") != std::wstring::npos;
    deadEnds_.push_back(Utf8(model.origin.filename().wstring()) + ": " + PlaceOf(tie) + ": " +
                        Utf8(tie.name + L"." + std::wstring(ExtensionOf(tie.kind))) +
                        (leavesFolder ? " leads out of the workspace; a model is named without a folder"
                                      : " leads to no model that can be read"));
}

ProError ModelStore::LoadOne(const ModelFile& file, std::vector<Pending>& pending, SimModel*& model) {
    model = nullptr;
    if (damaged_.contains(file.path)) return PRO_TK_GENERAL_ERROR;
    try {
        if (file.version == kLastVersion)
            throw ModelFileError(Utf8(file.path.filename().wstring()) + ": expected a version below " +
                                 std::to_string(kLastVersion) + ", as the next save counts on from it");
        ModelFileContent content = ReadModelFile(file.path, file.name, file.kind);
        model = &Add(std::move(content.model));
        model->directory = file.path.parent_path();
        model->origin = file.path;
        pending.push_back({model, std::move(content.ties)});
        return PRO_TK_NO_ERROR;
    } catch (const ModelFileError& error) {
        damaged_.insert(file.path);
        problems_.emplace_back(error.what());
        return PRO_TK_GENERAL_ERROR;
    } catch (const std::system_error&) {
        damaged_.insert(file.path);
        problems_.push_back(Utf8(file.path.filename().wstring()) + ": cannot be read");
        return PRO_TK_CANT_OPEN;
    }
}

SimModel* ModelStore::FindOrLoad(std::wstring_view name, ModelKind kind, const fs::path& folder,
                                 std::vector<Pending>& pending) {
    if (SimModel* model = Find(name, kind)) return model;
    ModelFile file = NewestFile(name, kind, workingDirectory_);
    if (file.version == 0 && folder != workingDirectory_) file = NewestFile(name, kind, folder);
    if (file.version == 0) file = NewestOnPath(name, kind);
    SimModel* model = nullptr;
    if (file.version != 0) (void)LoadOne(file, pending, model);
    return model;
}

// ---- Saving

// The whole text goes to a file beside the new version, which gets its name when it is complete: a version is
// there in full or not at all, and no version is ever written over.
ProError ModelStore::Write(SimModel& model, const fs::path& folder) {
    std::string text;
    try {
        text = ModelFileText(model);
    } catch (const ModelFileError& error) {
        problems_.emplace_back(error.what());
        return PRO_TK_GENERAL_ERROR;
    }
    FolderIndex& index = folders_.try_emplace(folder, folder).first->second;
    // Before the folder changes: a batch of saves then reads the folder once.
    ModelFile file = NextFile(model, index, folder);
    if (file.version > kLastVersion) return PRO_TK_CANT_WRITE;
    const fs::path temporary = folder / (L"~" + LowerName(model.Name()) + L".tmp");
    if (!WriteWhole(temporary, text)) return PRO_TK_CANT_WRITE;
    for (int attempt = 0; attempt < 3; ++attempt) {
        if (MoveFileW(temporary.c_str(), file.path.c_str()) != 0) {
            index.Wrote(file);
            model.directory = folder;
            const fs::path before = std::exchange(model.origin, file.path);
            model.SetModified(false);
            if (renameTakesOldFiles) TakeOldFiles(model, before);
            return PRO_TK_NO_ERROR;
        }
        // Somebody else was faster with this version.
        index.Forget();
        file = NextFile(model, index, folder);
    }
    std::error_code error;
    fs::remove(temporary, error);
    return PRO_TK_CANT_WRITE;
}

void ModelStore::TakeOldFiles(const SimModel& model, const fs::path& origin) {
    const std::optional<ModelFile> old = ParseModelFileName(origin.filename().wstring());
    if (!old || UpperName(old->name) == UpperName(model.Name())) return;
    // Another model that has taken the name has taken the files, too.
    if (Find(old->name, model.Kind()) != nullptr) return;
    const fs::path folder = origin.parent_path();
    std::vector<fs::path> files;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        const std::optional<ModelFile> file = ParseModelFileName(entry->path().filename().wstring());
        if (file && file->kind == model.Kind() && UpperName(file->name) == UpperName(old->name))
            files.push_back(entry->path());
    }
    for (const fs::path& file : files) fs::remove(file, error);
    folders_.try_emplace(folder, folder).first->second.Forget();
}

const fs::path& ModelStore::SaveFolder(const SimModel& model) const {
    return savesInWorkingDirectory ? workingDirectory_ : model.directory;
}

namespace {

// Everything below the model, each model once, without the model itself.
std::vector<SimModel*> AllBelow(SimModel& top) {
    std::vector<SimModel*> found;
    std::unordered_set<SimModel*> seen = {&top};
    std::vector<SimModel*> open = {&top};
    while (!open.empty()) {
        SimModel* model = open.back();
        open.pop_back();
        for (SimModel* below : model->ModelsBelow()) {
            if (!seen.insert(below).second) continue;
            found.push_back(below);
            open.push_back(below);
        }
    }
    return found;
}

}  // namespace

ProError ModelStore::Save(SimModel& model) {
    bool isWhole = true;
    for (SimModel* below : AllBelow(model))
        if (below->IsModified() && Write(*below, SaveFolder(*below)) != PRO_TK_NO_ERROR) isWhole = false;
    if (Write(model, SaveFolder(model)) != PRO_TK_NO_ERROR) return PRO_TK_GENERAL_ERROR;
    return isWhole ? PRO_TK_NO_ERROR : PRO_TK_CHECKOUT_CONFLICT;
}

ProError ModelStore::Copy(SimModel& model, std::wstring_view name, SimModel*& copy) {
    constexpr std::wstring_view kForbidden = L" <>:\"/\\|?*,;=&!()[]{}'`~@^";
    const auto isForbidden = [=](wchar_t c) { return c < L' ' || kForbidden.find(c) != kForbidden.npos; };
    copy = std::ranges::any_of(name, isForbidden) ? nullptr : Create(name, model.Kind(), model.Subtype());
    if (copy == nullptr) return PRO_TK_INVALID_NAME;
    copy->CopyContent(model);
    if (Write(*copy, workingDirectory_) == PRO_TK_NO_ERROR) return PRO_TK_NO_ERROR;
    Erase(*copy);
    copy = nullptr;
    return PRO_TK_CANT_WRITE;
}

ProError ModelStore::Backup(SimModel& model, const fs::path& folder) {
    const fs::path target = Normal(workingDirectory_ / folder);
    std::error_code error;
    if (!fs::is_directory(target, error)) return PRO_TK_INVALID_DIR;
    ProError status = PRO_TK_NO_ERROR;
    for (SimModel* below : AllBelow(model)) {
        const bool isThere =
            !below->IsModified() && below->origin.parent_path() == target && fs::exists(below->origin, error);
        if (!isThere && Write(*below, target) != PRO_TK_NO_ERROR) status = PRO_TK_CANT_WRITE;
    }
    if (Write(model, target) != PRO_TK_NO_ERROR) status = PRO_TK_CANT_WRITE;
    return status;
}

// ---- Working directory

ProError ModelStore::ChangeDirectory(std::wstring_view path) {
    if (path.empty()) return PRO_TK_INVALID_NAME;
    const fs::path target = Normal(workingDirectory_ / fs::path(path));
    std::error_code error;
    if (!fs::is_directory(target, error)) return PRO_TK_INVALID_DIR;
    fs::directory_iterator look(target, error);
    if (error) return PRO_TK_CANT_ACCESS;
    workingDirectory_ = target;
    return PRO_TK_NO_ERROR;
}

}  // namespace sim
