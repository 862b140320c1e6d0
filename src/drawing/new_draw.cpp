// NewDraw: a drawing from the plug-in's own template, with a format that the user chooses.
//
// A model that has a drawing gets that one opened.

#include "drawing/new_draw.h"

#include <string>

#include <ProUtil.h>

#include "base/status.h"
#include "base/text.h"
#include "drawing/drawing_creation.h"
#include "drawing/drawing_target.h"
#include "model/drawing_sheets.h"
#include "model/model_data.h"
#include "settings/settings_store.h"
#include "ui/message_box.h"
#include "ui/open_file.h"

namespace kv {

static constexpr wchar_t kTemplate[] = L"tp\\kv.drw";
static constexpr wchar_t kChooseFormat[] = L"请选择工程图模板";
static constexpr wchar_t kFormatFilter[] = L"*.frm";
static constexpr wchar_t kNoFormat[] = L"\t图框未能加入新工程图：\t\n";

static ProError CreateFromOwnTemplate(const DrawingTarget& target, ProDrawing& drawing);
static ProError FormatAdd(const DrawingTarget& target, ProDrawing drawing, const std::wstring& path);
static ProError FormatGet(const std::wstring& path, ProMdl& format);

ProError NewDraw() {
    DrawingTarget target;
    ProError status = DrawingTargetGet(target);
    if (Failed(status)) return status;
    if (OpenExistingDrawing(target, DrawingDisplay::Repainted, status)) return status;
    if (!NameFitsDrawing(target)) return PRO_TK_LINE_TOO_LONG;

    std::wstring format;
    ProDrawing drawing = nullptr;
    status = ModelFileChoose(kChooseFormat, kFormatFilter, format);
    if (!Failed(status)) status = CreateFromOwnTemplate(target, drawing);
    if (Failed(status)) return status;

    const ProError shown = ShowDrawing(target.name, drawing, DrawingDisplay::Current);
    status = FormatAdd(target, drawing, format);
    if (Failed(status)) ShowMessage((kNoFormat + format).c_str());
    return Failed(shown) ? shown : status;
}

static ProError CreateFromOwnTemplate(const DrawingTarget& target, ProDrawing& drawing) {
    DrawingTemplate source;
    const ProError status = TemplateFromPath(SettingsPath(kTemplate), source);
    if (Failed(status)) return status;
    source.path.clear();
    LoadedTemplates templates;
    bool inMemory = false;
    // One that cannot be loaded is for the creation to find.
    (void)templates.Load(source, inMemory);
    return DrawingCreate(target, source, inMemory, drawing);
}

static ProError FormatAdd(const DrawingTarget& target, ProDrawing drawing, const std::wstring& path) {
    ProMdl format = nullptr;
    const ProError status = FormatGet(path, format);
    if (Failed(status)) return status;
    return ProDrawingFormatAdd(drawing, kFirstSheet, static_cast<ProSolid>(target.model), format,
                               kFirstSheet);
}

// One that the host does not find by its name lies only where the user has chosen it.
static ProError FormatGet(const std::wstring& path, ProMdl& format) {
    ProPath whole;
    ProMdlName name = {};
    ProError status = CopyText(path, whole);
    if (!Failed(status)) status = ProFileMdlnameParse(whole, nullptr, name, nullptr, nullptr);
    if (!Failed(status)) status = ModelRetrieveByType(name, PRO_MDLFILE_DWGFORM, format);
    return Failed(status) ? ModelLoadByType(path, PRO_MDLFILE_DWGFORM, format) : status;
}

}  // namespace kv
