// Models by name, type and place, on the toolkit's model calls.

#include "model/model_data.h"

#include "base/status.h"
#include "base/text.h"

namespace kv {

static constexpr std::size_t kLongestName = 80;
static constexpr std::size_t kLongestExtension = 10;

ProError ModelNameGet(ProMdl model, std::wstring& name) {
    ProMdlName text = {};
    const ProError status = ProMdlMdlnameGet(model, text);
    if (!Failed(status)) name = text;
    return status;
}

ProError ModelDataGet(ProMdl model, ModelData& data) {
    ProError status = ModelNameGet(model, data.name);
    if (Failed(status)) return status;
    if (data.name.size() > kLongestName) return PRO_TK_LINE_TOO_LONG;

    ProMdlExtension extension = {};
    status = ProMdlExtensionGet(model, extension);
    if (Failed(status)) return status;
    data.extension = extension;
    if (data.extension.size() > kLongestExtension) return PRO_TK_LINE_TOO_LONG;

    ProPath folder = {};
    status = ProMdlDirectoryPathGet(model, folder);
    if (!Failed(status)) data.folder = folder;
    return status;
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
