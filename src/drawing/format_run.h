// Another format for the sheets of drawings that lie in the working directory.
#pragma once

#include <string>
#include <vector>

#include <ProDwgtable.h>
#include <ProMdl.h>

#include "drawing/format_plan.h"
#include "model/batch_run.h"
#include "model/drawing_window.h"

namespace kv {

// The new format in memory for as long as a run needs it: one that was not there before goes again.
class LoadedFormat {
public:
    LoadedFormat() = default;
    LoadedFormat(const LoadedFormat&) = delete;
    LoadedFormat& operator=(const LoadedFormat&) = delete;
    ~LoadedFormat();

    // Errors: those of ProFileMdlnameParse and ProMdlFiletypeLoad.
    [[nodiscard]] ProError Load(const std::wstring& path);

    ProMdl Model() const { return model_; }
    const std::wstring& Name() const { return name_; }

private:
    ProMdl model_ = nullptr;
    std::wstring name_;
    bool isOurs_ = false;
};

// Whose a drawing is.
enum class DrawingOwner {
    Nobody,  // it lies on disk only
    Memory,  // it is in memory as it is on disk, and no window shows it
    User,    // the user has it open or has changed it, or it comes from another folder
};

struct FormatRun {
    std::wstring directory;  // the working directory, in which the drawings lie
    FormatRequest request = {};
    ProMdl format = nullptr;  // null for a run that only looks
    bool takesUsers = false;
    UserWindows windows = {};
};

// A drawing as it is found, read sheet by sheet.
struct DrawingFormats {
    DrawingOwner owner = DrawingOwner::User;
    bool isLeft = false;  // the user's, and not to be touched; nothing else is read of it
    std::vector<SheetState> sheets = {};
};

// Reads what the sheets of a drawing have, and leaves memory as it was.
//
// step    what fails, in words
// Errors  those of the host's calls
// Cost    3 host calls and 2 for each sheet, 3 for each table; 4 more for what was in memory
[[nodiscard]] ProError DrawingFormatsRead(FormatRun& run, const std::wstring& name, DrawingFormats& found,
                                          const wchar_t*& step);

// Puts the new format on the sheets that the request names, and records each. A drawing that was not the
// user's is saved; when any step fails it is not saved, and goes out of memory, so that its file is what is
// left of it.
void DrawingFormatsReplace(FormatRun& run, const std::wstring& name, BatchRun& batch);

}  // namespace kv
