// The one running host: models, user interface, the user who sits before it, and the report.

#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "simulator/cad/desk.h"
#include "simulator/cad/model_store.h"
#include "simulator/export/disk.h"
#include "simulator/export/export_options.h"
#include "simulator/layout/text_tree.h"
#include "simulator/memory/host_memory.h"
#include "simulator/report/report.h"
#include "simulator/spreadsheet/spreadsheet.h"
#include "simulator/ui/interface.h"
#include "simulator/ui/user.h"

namespace sim {

// Where the host stands in for documents that are silent or that the plug-in has to go against: by default it
// goes along with the plug-in.
struct Strictness {
    // ProParameterValueWithUnitsSet may change a parameter's type (not documented either way).
    bool typeChangeRefused = true;
    // ProMdlExtensionGet knows the extension of a model that was never on disk (the documents speak of the
    // file that the model was retrieved from).
    bool newModelHasExtension = true;
    // ProOutputFileMdlnameWrite takes a path, although the documents speak of a file name.
    bool outputPathRefused = false;
    // ProPDFWithProfileExport finds a profile by its bare name in the working directory, although the
    // documents want a path.
    bool bareProfileNameRefused = false;
    // A PDF export that does not say which sheets holds all of them; off: the current one.
    bool pdfHoldsAllSheets = true;
    // PDF option 29 is a text, as the documents have it, and refuses a choice of sheets; that is option 28.
    bool pdfSheetRangeIsText = false;
    // Components are hidden as items of the kind feature; off: as sub-assemblies (not documented either way).
    bool featuresHide = true;
    // ProViewMatrixSet takes only what is documented: rows of length 1 and no shift.
    bool scaledViewRefused = false;
    // An occurrence has no look of its own.
    bool occurrenceLooksRefused = false;
    // An export leaves a log beside its file.
    bool exportsLeaveLog = false;
};

class Session {
public:
    // `textDirectory`: the registered one, the folder that holds `text`.
    Session(std::filesystem::path workingDirectory, std::filesystem::path textDirectory);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Turns every switch, those of the interface too, to what the documents say; where they are silent it
    // stays. Before the plug-in starts.
    void BeAsDocumented();

    Report report;
    ModelStore models;
    Desk desk{models};
    HostMemory memory{report};
    TextTree texts;
    User user;
    Interface screen{{report, memory, desk, texts, user}};
    Spreadsheet spreadsheet;
    Strictness strict;
    ExportOptions exportOptions;
    Disk disk;

    // Values by upper-cased option name; several for a multi-valued option.
    std::map<std::wstring, std::vector<std::wstring>> configOptions;
};

// The session of this process, for the host's functions: they are called without a word of it. Calling them
// while there is none is a programming error and ends the process with a message: there is no status for it.
Session& Host();

}  // namespace sim
