// Models by name, type and place, on the toolkit's model calls.

#include "model/model_data.h"

#include "base/status.h"
#include "base/text.h"

namespace kv {

static constexpr std::size_t kLongestName = 80;
static constexpr std::size_t kLongestExtension = 10;

static ProError ExtensionGet(ProMdl model, std::wstring& extension);
static const wchar_t* ExtensionOfType(ProMdlType type);

ProError ModelNameGet(ProMdl model, std::wstring& name) {
    ProMdlName text = {};
    const ProError status = ProMdlMdlnameGet(model, text);
    if (!Failed(status)) name = text;
    return status;
}

bool IsSheetmetal(ProMdl part) {
    ProMdlsubtype subtype = PROMDLSTYPE_NONE;
    return !Failed(ProMdlSubtypeGet(part, &subtype)) && subtype == PROMDLSTYPE_PART_SHEETMETAL;
}

ProError ModelDataGet(ProMdl model, ModelData& data) {
    ProError status = ModelNameGet(model, data.name);
    if (Failed(status)) return status;
    if (data.name.size() > kLongestName) return PRO_TK_LINE_TOO_LONG;

    status = ExtensionGet(model, data.extension);
    if (Failed(status)) return status;
    if (data.extension.size() > kLongestExtension) return PRO_TK_LINE_TOO_LONG;

    ProPath folder = {};
    status = ProMdlDirectoryPathGet(model, folder);
    if (!Failed(status)) data.folder = folder;
    return status;
}

// There are hosts that know no extension of a model that was never saved: it will be that of its type.
static ProError ExtensionGet(ProMdl model, std::wstring& extension) {
    ProMdlExtension text = {};
    const ProError status = ProMdlExtensionGet(model, text);
    if (!Failed(status)) {
        extension = text;
        return status;
    }
    ProMdlType type = PRO_MDL_UNUSED;
    const wchar_t* usual = Failed(ProMdlTypeGet(model, &type)) ? nullptr : ExtensionOfType(type);
    if (usual == nullptr) return status;
    extension = usual;
    return PRO_TK_NO_ERROR;
}

// Null for a type that the plug-in does not work on.
static const wchar_t* ExtensionOfType(ProMdlType type) {
    switch (type) {
        case PRO_MDL_ASSEMBLY:
            return L"asm";
        case PRO_MDL_PART:
            return L"prt";
        case PRO_MDL_DRAWING:
            return L"drw";
        case PRO_MDL_MFG:
            return L"mfg";
        default:
            return nullptr;
    }
}

ProError ModelRetrieveByType(const std::wstring& name, ProMdlfileType type, ProMdl& model) {
    ProFamilyMdlName text;
    const ProError status = CopyText(name, text);
    return Failed(status) ? status : ProMdlnameRetrieve(text, type, &model);
}

ProError ModelLoadByType(const std::wstring& path, ProMdlfileType type, ProMdl& model) {
    ProPath text;
    const ProError status = CopyText(path, text);
    return Failed(status) ? status : ProMdlFiletypeLoad(text, type, PRO_B_FALSE, &model);
}

}  // namespace kv
