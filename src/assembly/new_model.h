// Models that commands make as copies of others: finding a name, copying, placing, and what is told of it.
#pragma once

#include <string>

#include <ProAsmcomp.h>
#include <ProMdl.h>

#include "assembly/component_name.h"
#include "model/batch_run.h"

namespace kv {

// The first value of the configuration option that names a template file, as it stands. Errors: those of
// ProConfigoptArrayGet; PRO_TK_E_NOT_FOUND for an option without a value.
[[nodiscard]] ProError TemplatePathGet(const wchar_t* option, std::wstring& path);

// Characters of a name that fit the host's buffers; the host itself may take fewer.
inline constexpr std::size_t kLongestHostName = PRO_MDLNAME_SIZE - 1;

// Whether a copy may get this name: PRO_TK_NO_ERROR when no model of the type has it, neither in memory nor
// where the host looks for files; PRO_TK_E_FOUND when there is one; else the host's reason for not telling.
// A host may write a new version over another model's file, so every name is looked up before it is used, and
// none counts as free that could not be looked up.
[[nodiscard]] ProError NameFreeCheck(const std::wstring& name, ProMdlfileType type);

// A series of names, and the type of the models that must not have them.
struct NameSeries {
    std::wstring base;
    CopyNameRule rule = NumberedName;
    ProMdlfileType type = PRO_MDLFILE_PART;
    std::size_t longest = 0;  // characters
};

// The first free name of a series. One host call for each name that is looked up.
//
// Errors  PRO_TK_LINE_TOO_LONG when the names get too long; the host's reason when it could not look up a
//         hundred of them in a row
[[nodiscard]] ProError FreeNameGet(const NameSeries& series, std::wstring& name);

// A copy that is being made, and how far it got.
struct NewModel {
    std::wstring name;
    ProMdl model = nullptr;
    ProAsmcomp component = {};
    bool isPlaced = false;
    bool isConstrained = false;
};

// Copies `source` under the name in `copy`, which has to be free. Errors: those of ProMdlnameCopy;
// PRO_TK_LINE_TOO_LONG. There is no model in `copy` then.
[[nodiscard]] ProError CopyMake(ProMdl source, NewModel& copy);

// Records a step of the copy and gives its status back.
ProError Recorded(BatchRun& run, const NewModel& copy, const wchar_t* step, ProError status);

// Asks the user for the copy's name and makes the copy; asks again, after a box, until a name is taken.
//
// key       of the prompt; `fallback` is what it offers, and what Enter means
// Errors    PRO_TK_MSG_USER_QUIT when the user quits, or takes a refused offer ten times in a row, which is
//           how a prompt looks that cannot be read; also for a prompt that cannot be shown
[[nodiscard]] ProError CopyAsk(const char* key, const std::wstring& fallback, ProMdl source,
                               ProMdlfileType type, NewModel& copy);

// Saves the copy and records it. One that cannot be saved can be placed none the less: it is in memory.
void CopySave(BatchRun& run, const NewModel& copy);

// Places the copy at the assembly's origin without constraints and records it. Errors: those of
// ProAsmcompAssemble.
ProError CopyPlace(BatchRun& run, ProMdl assembly, NewModel& copy);

// Tells in the message area what was made and whether it was placed, or `what` of it. Never before a prompt:
// a prompt would hide it.
void TellMade(const BatchRun& run, const NewModel& copy, const wchar_t* what = nullptr);

// Message of the message area for such lines.
inline constexpr char kNewModelMessage[] = "New model:%0w";

}  // namespace kv
