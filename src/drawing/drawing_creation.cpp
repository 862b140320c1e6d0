// Drawings made from a template, on the toolkit's creation call.
//
// The call takes names of at most 31 characters, not paths, and finds a template in memory or where the host
// works. Hosts differ in where a new drawing belongs: there are some that save it where they worked when it
// was made. So it is made from memory where the user works, and only when that fails in the template's
// folder.

#include "drawing/drawing_creation.h"

#include <algorithm>
#include <iterator>

#include <ProUtil.h>

#include "base/file.h"
#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"
#include "base/working_directory.h"
#include "model/model_data.h"
#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kExtension[] = L".drw";
static constexpr wchar_t kAnyVersion[] = L".drw.*";
static constexpr wchar_t kNameTooLong[] = L"\t模型名称超过31个字符，无法新建同名工程图：\t\n";
static constexpr wchar_t kBesideTemplate[] = L"\t新工程图将保存在模板所在的目录，请另存到需要的目录：\t\n";

using DrawingErrors = HostHandle<ProDwgcreateErrs, ProDwgcreateErrsFree>;

struct CreationText {
    ProError status;
    const wchar_t* text;
};

static constexpr CreationText kCreationTexts[] = {
    {PRO_TK_E_FOUND, L"PRO_TK_E_FOUND"},
    {PRO_TK_E_NOT_FOUND, L"PRO_TK_E_NOT_FOUND"},
    {PRO_TK_DWGCREATE_ERRORS, L"PRO_TK_DWGCREATE_ERRORS"},
    {PRO_TK_NO_PERMISSION, L"PRO_TK_NO_PERMISSION"},
};

static bool FileIsIn(const std::wstring& folder, const std::wstring& name);
static ProError CreateAnywhere(const ProModel& model, const DrawingTemplate& source, bool inMemory,
                               ProDrawing& drawing);
static bool IsAmbiguousHere(const DrawingTemplate& source);
static ProError CreateByName(const ProModel& model, const DrawingTemplate& source, ProDrawing& drawing);
static ProError Create(const ProModel& model, const std::wstring& source, ProDrawing& drawing);
static ProError ModelTextsGet(const DrawingTarget& target, ProModel& model);
static void TellFailure(ProError status);
static void TellFolder(ProDrawing drawing, const DrawingTemplate& source);

// A status by which the host says that it does not know a template by this name.
static bool IsUnknown(ProError status) {
    return status == PRO_TK_E_NOT_FOUND || status == PRO_TK_INVALID_NAME || status == PRO_TK_BAD_INPUTS ||
           status == PRO_TK_LINE_TOO_LONG;
}

ProError TemplateFromPath(const std::wstring& path, DrawingTemplate& source) {
    ProPath whole;
    ProPath folder = {};
    ProMdlName name = {};
    ProError status = CopyText(path, whole);
    if (!Failed(status)) status = ProFileMdlnameParse(whole, folder, name, nullptr, nullptr);
    if (!Failed(status)) source = {path, folder, name};
    return status;
}

bool TemplateExists(const DrawingTemplate& source) {
    return FileIsIn(source.folder, source.name);
}

static bool FileIsIn(const std::wstring& folder, const std::wstring& name) {
    return FileExists(folder + name + kExtension) ||
           !FileNamesIn(folder, (name + kAnyVersion).c_str()).empty();
}

LoadedTemplates::~LoadedTemplates() {
    for (ProMdl model : toErase_) (void)ProMdlErase(model);
}

// There are hosts that retrieve by a path as by a name; the others load it. The load takes the newest
// version, whichever the path names. Only what surely was not there before is ever erased.
ProError LoadedTemplates::Load(const DrawingTemplate& source, bool& isSource) {
    ProMdlName name;
    ProMdl model = nullptr;
    const bool isNew = !Failed(CopyText(source.name, name)) &&
                       ProMdlnameInit(name, PRO_MDLFILE_DRAWING, &model) == PRO_TK_E_NOT_FOUND;
    toErase_.reserve(toErase_.size() + 1);
    ProError status = PRO_TK_E_NOT_FOUND;
    if (!source.path.empty()) status = ModelRetrieveByType(source.path, PRO_MDLFILE_DRAWING, model);
    if (Failed(status))
        status = ModelLoadByType(source.folder + source.name + kExtension, PRO_MDLFILE_DRAWING, model);
    isSource = false;
    if (Failed(status)) return status;

    if (isNew) toErase_.push_back(model);
    ModelData data;
    isSource = isNew || (!Failed(ModelDataGet(model, data)) && IsSamePath(data.folder, source.folder));
    return status;
}

bool NameFitsDrawing(const DrawingTarget& target) {
    if (target.name.size() < PRO_NAME_SIZE) return true;
    ShowMessage((kNameTooLong + target.name).c_str());
    return false;
}

ProError DrawingCreate(const DrawingTarget& target, const DrawingTemplate& source, bool inMemory,
                       ProDrawing& drawing) {
    ProModel model = {};
    ProError status = ModelTextsGet(target, model);
    if (Failed(status)) return status;
    status = CreateAnywhere(model, source, inMemory, drawing);
    if (Failed(status)) {
        TellFailure(status);
    } else {
        TellFolder(drawing, source);
    }
    return status;
}

static ProError CreateAnywhere(const ProModel& model, const DrawingTemplate& source, bool inMemory,
                               ProDrawing& drawing) {
    ProError status = PRO_TK_E_NOT_FOUND;
    if (!source.path.empty()) status = Create(model, source.path, drawing);
    if (IsUnknown(status) && inMemory && !IsAmbiguousHere(source))
        status = CreateByName(model, source, drawing);
    if (!IsUnknown(status)) return status;

    const auto goBack = UseWorkingDirectory(source.folder, status);
    return Failed(status) ? status : CreateByName(model, source, drawing);
}

// A drawing of the template's name where the user works might be taken for the template.
static bool IsAmbiguousHere(const DrawingTemplate& source) {
    ProPath directory = {};
    return Failed(ProDirectoryCurrentGet(directory)) || FileIsIn(WithBackslash(directory), source.name);
}

// There are hosts that know a template by its name alone.
static ProError CreateByName(const ProModel& model, const DrawingTemplate& source, ProDrawing& drawing) {
    const ProError status = Create(model, source.name + kExtension, drawing);
    return IsUnknown(status) ? Create(model, source.name, drawing) : status;
}

static ProError Create(const ProModel& model, const std::wstring& source, ProDrawing& drawing) {
    ProName name;
    ProName templateName;
    ProModel shown = model;
    ProError status = CopyText(model.name, name);
    if (!Failed(status)) status = CopyText(source, templateName);
    if (Failed(status)) return status;

    // A drawing with errors comes with their list, which is freed like that of any other.
    DrawingErrors errors;
    status = ProDrawingFromTmpltCreate(name, templateName, &shown, PRODWGCREATE_DISPLAY_DRAWING, &drawing,
                                       errors.Receive());
    if (status != PRO_TK_DWGCREATE_ERRORS) status = errors.Received(status);
    return status;
}

// The creation takes a model by its name and, as a text, its type.
static ProError ModelTextsGet(const DrawingTarget& target, ProModel& model) {
    if (target.type != PRO_MDL_ASSEMBLY && target.type != PRO_MDL_PART) return PRO_TK_INVALID_TYPE;
    const ProError status = CopyText(target.name, model.name);
    return Failed(status) ? status : CopyText(target.type == PRO_MDL_ASSEMBLY ? L"ASM" : L"PRT", model.type);
}

static void TellFailure(ProError status) {
    const CreationText* row = std::ranges::find(kCreationTexts, status, &CreationText::status);
    if (row != std::end(kCreationTexts)) ShowMessage(row->text);
}

// A drawing that would be saved among the templates is not where the user expects it.
static void TellFolder(ProDrawing drawing, const DrawingTemplate& source) {
    ProPath directory = {};
    ModelData data;
    if (Failed(ProDirectoryCurrentGet(directory)) || IsSamePath(directory, source.folder)) return;
    if (Failed(ModelDataGet(drawing, data)) || !IsSamePath(data.folder, source.folder)) return;
    ShowMessage((kBesideTemplate + data.folder).c_str());
}

}  // namespace kv
