// The models in memory and the model files of the working directory.

#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include <ProToolkitErrors.h>

#include "simulator/cad/folder_index.h"
#include "simulator/cad/model.h"

namespace sim {

struct ModelTie;

class ModelStore {
public:
    explicit ModelStore(std::filesystem::path workingDirectory);
    ~ModelStore();

    // ---- Memory
    // A new model in memory; the name must be free for its kind (else null) and at most 31 characters.
    SimModel* Create(std::wstring_view name, ModelKind kind, ModelSubtype subtype = ModelSubtype::kNone);
    // Gives a model in memory another name. What refers to it in memory follows and does not count as
    // changed; files keep the old name until they are written anew. False: no model can have this name, or
    // another one has it.
    [[nodiscard]] bool Rename(SimModel& model, std::wstring_view name);
    // By name without regard to letter case; null: not in memory.
    SimModel* Find(std::wstring_view name, ModelKind kind);
    // Null when the handle is no model in memory. O(1). An erased model's handle is never given to another
    // one.
    SimModel* FromHandle(const void* handle);
    std::vector<SimModel*> All();
    // False, and the model stays, while another model in memory has it as component, view or the like.
    bool Erase(SimModel& model);
    // Called with every model that is about to leave memory.
    std::function<void(const SimModel&)> onErase;

    // ---- Files
    // Newest file of that model in `folder`; version 0 and an empty path when there is none.
    // Cheap: what a folder holds is remembered until the folder changes.
    ModelFile NewestFile(std::wstring_view name, ModelKind kind, const std::filesystem::path& folder) const;
    // Newest file of every model in `folder`, by name, kinds in the order asm, prt, mfg, drw, frm.
    std::vector<ModelFile> NewestFiles(const std::filesystem::path& folder) const;
    // Further folders that the host retrieves from, in order, when the working directory does not have a
    // model.
    std::vector<std::filesystem::path> searchPath;
    // In memory already, or loaded from the working directory or the search path with everything below it.
    // E_NOT_FOUND: no such model. A component that cannot be loaded does not stop its assembly: it stays as a
    // suppressed feature without a model. A damaged file answers GENERAL_ERROR and is named in Problems().
    ProError Retrieve(std::wstring_view name, ModelKind kind, SimModel*& model);
    // From a file by its path: absolute or in the working directory, with or without extension and version;
    // the newest version when none is named. A model of that name and kind in memory is given as it is.
    // E_NOT_FOUND: no such file; INVALID_FILE: not a model of that kind; CANT_OPEN: not readable;
    // GENERAL_ERROR: damaged.
    ProError Load(const std::filesystem::path& file, ModelKind kind, SimModel*& model);
    // Writes the next version into the model's directory; its modified components and shown models with it.
    // GENERAL_ERROR: not written; CHECKOUT_CONFLICT: written, but not all of what is below it.
    ProError Save(SimModel& model);
    // A copy of the model under another name: in memory, and on disk in the working directory, as the next
    // version of whatever has that name there. INVALID_NAME: no name for a model, or taken in memory;
    // CANT_WRITE: there is no copy then.
    ProError Copy(SimModel& model, std::wstring_view name, SimModel*& copy);
    // The first save of a renamed model takes the files of its old name away; off: they stay.
    bool renameTakesOldFiles = false;
    // Saves go to the working directory, wherever a model came from.
    bool savesInWorkingDirectory = false;
    // Writes the model (and everything below it) into `folder` with version 1 or the next free one; later
    // saves go there. What is below it and has its present state in `folder` already is not written again.
    // INVALID_DIR; CANT_WRITE.
    ProError Backup(SimModel& model, const std::filesystem::path& folder);

    // ---- Working directory: a real one; the process's own directory is not changed.
    const std::filesystem::path& WorkingDirectory() const { return workingDirectory_; }
    ProError ChangeDirectory(std::wstring_view path);

    // ---- What is shown
    SimModel* current = nullptr;  // model of the current window
    int currentMode = -1;         // the host's mode number; -1: no mode

    // "file:line: what was expected" for every damaged file met so far.
    const std::vector<std::string>& Problems() const { return problems_; }
    // "file: /place: ..." for every model named by a file met so far that could not be had, but for those of
    // suppressed components.
    const std::vector<std::string>& DeadEnds() const { return deadEnds_; }

private:
    struct Pending;

    ProError LoadTree(const ModelFile& file, SimModel*& model);
    void NoteDeadEnd(const SimModel& model, const ModelTie& tie);
    ProError LoadOne(const ModelFile& file, std::vector<Pending>& pending, SimModel*& model);
    ModelFile NewestOnPath(std::wstring_view name, ModelKind kind) const;
    SimModel* FindOrLoad(std::wstring_view name, ModelKind kind, const std::filesystem::path& folder,
                         std::vector<Pending>& pending);
    ProError Write(SimModel& model, const std::filesystem::path& folder);
    void TakeOldFiles(const SimModel& model, const std::filesystem::path& origin);
    const std::filesystem::path& SaveFolder(const SimModel& model) const;
    SimModel& Add(std::unique_ptr<SimModel> model);

    std::filesystem::path workingDirectory_;
    std::map<std::pair<ModelKind, std::wstring>, std::unique_ptr<SimModel>> models_;  // by upper-cased name
    std::unordered_set<const void*> handles_;
    std::vector<std::unique_ptr<SimModel>> erased_;  // kept, so that their addresses are not used again
    std::vector<std::string> problems_;
    std::vector<std::string> deadEnds_;
    std::set<std::filesystem::path> damaged_;  // of the retrieval that runs
    mutable std::map<std::filesystem::path, FolderIndex> folders_;
};

}  // namespace sim
