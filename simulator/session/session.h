// The one running host: models, user interface, the user who sits before it, and the report.

#pragma once

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "simulator/cad/definitions.h"
#include "simulator/cad/desk.h"
#include "simulator/cad/model_store.h"
#include "simulator/export/disk.h"
#include "simulator/export/export_options.h"
#include "simulator/layout/text_tree.h"
#include "simulator/memory/handle_set.h"
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
    // ProRelsetRelationsSet refuses no lines at all (the documents have another call for that).
    bool emptyRelationsRefused = false;
    // Components are hidden as items of the kind feature; off: as sub-assemblies (not documented either way).
    bool featuresHide = true;
    // ProViewMatrixSet takes only what is documented: rows of length 1 and no shift.
    bool scaledViewRefused = false;
    // An occurrence has no look of its own.
    bool occurrenceLooksRefused = false;
    // An export leaves a log beside its file.
    bool exportsLeaveLog = false;
    // ProMdlnameRetrieve and the creation of a drawing take a path, although the documents speak of names.
    bool pathAsNameRefused = false;
    // The creation of a drawing takes its template's name with an extension, although the documents' own
    // example passes none.
    bool templateExtensionRefused = false;
    // The creation of a drawing takes a template that is in memory and nowhere else that it looks.
    bool templateFromMemory = true;
    // A new drawing lies where its model does; off: in the working directory at its creation.
    bool newDrawingJoinsModel = false;
    // A view gets a scale, and a sheet is regenerated, on another sheet than the current one, although the
    // documents want it displayed.
    bool hiddenSheetRefused = false;
    // A format of a sheet takes the tables of the one that it replaces away; off: they stay beside its own
    // (not documented either way).
    bool formatTakesOldTables = false;
    // Sheets and sizes of a format are told as those of a drawing are, although the documents speak of
    // drawings.
    bool formatIsNoDrawing = false;
    // A constraint's reference in the assembly may go by the path of the assembly that holds the component,
    // although the documents want one from the top assembly.
    bool referenceNeedsTopPath = false;
    // A merge feature is made in a part of the open assembly that is selected without a component path, and
    // from a tree that has the placement below the selection of the part, although the documents want the
    // path and have the placement beside the selection.
    bool mergeNeedsPath = false;
    bool mergeNeedsPlacementBeside = false;
    // ProViewStore puts a new orientation in place of the one of that name (the documents are silent).
    bool storedViewStays = false;
    // ProSolidOutlineCompute takes its matrix as the place of the coordinate system in the model; off: as the
    // way from the model into the system (the documents are silent).
    bool outlineTakesPlace = false;
    // An erased model keeps its name until the command has returned; off: one that no window shows and nobody
    // uses goes at once.
    bool eraseWaits = false;
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
    // What creations of drawings have handed out.
    HandleSet<int> drawingErrors{"list of a drawing's errors", 0x6D000000};
    Definitions definitions;
    Disk disk;

    // Values by upper-cased option name; several for a multi-valued option.
    std::map<std::wstring, std::vector<std::wstring>> configOptions;
};

// The session of this process, for the host's functions: they are called without a word of it. Calling them
// while there is none is a programming error and ends the process with a message: there is no status for it.
Session& Host();

}  // namespace sim
