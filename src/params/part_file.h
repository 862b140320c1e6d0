// A file of data for parts, a material or a bend table: choosing it, and the parts that it is for.
#pragma once

#include <string>
#include <vector>

#include "model/model_walk.h"
#include "model/selection.h"

namespace kv {

// Shown before a command that changes materials or bend tables: the one may follow the other.
inline constexpr char kBendTableReminder[] =
    "Wether change the bend table while assigning a material to a sheetmetal part";

struct PartFile {
    std::wstring folder;  // with a separator at the end
    std::wstring name;    // without extension; at most 31 characters, as the host takes it
    std::wstring extension;
};

// Lets the user choose a file.
//
// filter   masks with commas between them
// start    folder that the choice begins in; empty: the working directory
// Errors   PRO_TK_USER_ABORT and others of ProFileMdlnameOpen; PRO_TK_LINE_TOO_LONG for a name that the host
//          cannot take, which the user is told
[[nodiscard]] ProError PartFileChoose(const wchar_t* title, const wchar_t* filter, const std::wstring& start,
                                      PartFile& file);

// The parts that a command is for, each once, sorted by handle.
struct PartTargets {
    std::vector<ProMdl> single;  // the current part, or those that are selected as such
    std::vector<ProMdl> below;   // those below assemblies
    bool walkFailed = false;     // the parts of an assembly could not be found
    bool walkEmpty = false;      // an assembly has none

    // Both kinds together.
    std::vector<ProMdl> All() const;
};

// Collects the parts for a current model, all of them or those of sheet metal:
// - a part is its own target;
// - of an assembly the selected parts and those below the selected assemblies; without a selection those
//   below itself;
// - any other model has none.
//
// variant  CollectPartComponents or CollectSheetmetalComponents
// Errors   PRO_TK_OUT_OF_MEMORY, which the user is told
[[nodiscard]] ProError PartTargetsGet(const DistinctModel& current, const SelectedModels& selection,
                                      WalkVariant variant, PartTargets& targets);

// What is selected in a current assembly; nothing in any other model. Errors: those of SelectedModelsGet,
// which the user is told: the wrong parts must not be changed.
[[nodiscard]] ProError PartSelectionGet(const DistinctModel& current, SelectedModels& selection);

}  // namespace kv
