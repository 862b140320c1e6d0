// The model files of a folder.

#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "simulator/cad/model.h"

namespace sim {

// Whether a model can be given this name: letters, digits, "_", "-" and what lies outside ASCII.
bool IsModelName(std::wstring_view name);

// A model file: `<name>.<extension>.<version>`, for example `pump.asm.3`.
struct ModelFile {
    std::filesystem::path path;
    std::wstring name;       // without extension
    std::wstring extension;  // lower case: prt, asm, drw, frm, mfg
    ModelKind kind;
    int version;  // 0: the name carries none
};

// A greater one has no place in a file name.
inline constexpr int kLastVersion = 999'999'999;

// "prt" for a part, and so on.
std::wstring_view ExtensionOf(ModelKind kind);
// The kind that has this extension, in any letter case.
std::optional<ModelKind> KindOf(std::wstring_view extension);
// The parts of a file name with an extension of the host's and perhaps a version; nothing for other names.
// The path is left empty.
std::optional<ModelFile> ParseModelFileName(std::wstring_view fileName);

// The newest version of every model in one folder, read anew only when the folder has changed.
class FolderIndex {
public:
    explicit FolderIndex(std::filesystem::path folder) : folder_(std::move(folder)) {}

    // Null: there is none. With `mayBeNew` a miss is believed without a second look; who creates a file may
    // do so, for the creation fails when the file has appeared meanwhile.
    const ModelFile* Newest(std::wstring_view name, ModelKind kind, bool mayBeNew);
    std::vector<ModelFile> All();
    // The simulator itself has just written this file.
    void Wrote(const ModelFile& file);
    // Another look is needed: something was not as the index says.
    void Forget() { isKnown_ = false; }

private:
    void Refresh();
    void Scan();
    void Take(ModelFile file);
    bool IsSettled() const;

    std::filesystem::path folder_;
    std::unordered_map<std::wstring, ModelFile> newest_;  // by extension and upper-cased name
    bool isKnown_ = false;
    std::int64_t changed_ = 0;  // the folder's time of change when it was read, in units of 100 ns
    std::int64_t read_ = 0;     // when it was read
    bool ownChange_ = false;    // the last change was the simulator's own
};

}  // namespace sim
