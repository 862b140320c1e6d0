// Drawings made from a template.
#pragma once

#include <string>
#include <vector>

#include <ProDrawing.h>
#include <ProMdl.h>

#include "drawing/drawing_target.h"

namespace kv {

// A template drawing in a file.
struct DrawingTemplate {
    std::wstring path;    // as the user has configured it; empty for the plug-in's own
    std::wstring folder;  // with a backslash at its end
    std::wstring name;    // without extension and version
};

// Errors: those of ProFileMdlnameParse; PRO_TK_LINE_TOO_LONG for a path that the host cannot take.
[[nodiscard]] ProError TemplateFromPath(const std::wstring& path, DrawingTemplate& source);

// Whether there is any version of its file.
bool TemplateExists(const DrawingTemplate& source);

// Templates in memory for as long as a command needs them. Those that were not there before are taken out
// again when it has returned, for a template might pass for the drawing of a model that has its name.
class LoadedTemplates {
public:
    LoadedTemplates() = default;
    LoadedTemplates(const LoadedTemplates&) = delete;
    LoadedTemplates& operator=(const LoadedTemplates&) = delete;
    ~LoadedTemplates();

    // isSource  whether what is in memory comes from the template's folder, and is no other drawing of its
    // name Errors    those of ProMdlFiletypeLoad
    [[nodiscard]] ProError Load(const DrawingTemplate& source, bool& isSource);

private:
    std::vector<ProMdl> toErase_;
};

// False for a name that the host makes no drawing of: the user is told.
bool NameFitsDrawing(const DrawingTarget& target);

// Creates a drawing of the target's name and model, for display. The working directory is the same as before.
//
// inMemory  whether the template is
// Errors    those of ProDrawingFromTmpltCreate, of which the user is told an existing drawing, a missing
//           template, errors in the drawing and a missing permission; PRO_TK_INVALID_TYPE for a target that
//           is neither a part nor an assembly
[[nodiscard]] ProError DrawingCreate(const DrawingTarget& target, const DrawingTemplate& source,
                                     bool inMemory, ProDrawing& drawing);

}  // namespace kv
