// Models by name, type and place: thin readers of the host.
#pragma once

#include <string>

#include <ProMdl.h>

namespace kv {

// Where a model is kept.
struct ModelData {
    std::wstring name;
    std::wstring extension;  // without dot
    std::wstring folder;     // where the model will be saved, which need not be where it came from
};

// Name without extension, of any length. Errors: those of ProMdlMdlnameGet.
[[nodiscard]] ProError ModelNameGet(ProMdl model, std::wstring& name);

// Whether a part is of sheet metal; false for any other model.
bool IsSheetmetal(ProMdl part);

// Errors: the first of the host's; PRO_TK_LINE_TOO_LONG for a name of more than 80 characters or an
// extension of more than 10.
[[nodiscard]] ProError ModelDataGet(ProMdl model, ModelData& data);

// The model of this name and type, loaded if it is not in memory. Errors: those of ProMdlnameRetrieve;
// PRO_TK_LINE_TOO_LONG for a name that no model can have.
[[nodiscard]] ProError ModelRetrieveByType(const std::wstring& name, ProMdlfileType type, ProMdl& model);

// The model in the file of this full path, without a question about its representations. Errors: those of
// ProMdlFiletypeLoad; PRO_TK_LINE_TOO_LONG for a path that the host cannot take.
[[nodiscard]] ProError ModelLoadByType(const std::wstring& path, ProMdlfileType type, ProMdl& model);

}  // namespace kv
