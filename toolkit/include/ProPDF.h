// Export to PDF.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

typedef struct _pdfconfig* ProPDFOptions;

// Options by number. Those above PENTABLE have been seen in one release only.
typedef enum ProPDFOptionTypes {
    PRO_PDFOPT_FONT_STROKE = 0,      // ProPDFFontStrokeMode
    PRO_PDFOPT_COLOR_DEPTH = 1,      // ProPDFColorDepth
    PRO_PDFOPT_HIDDENLINE_MODE = 2,  // number
    PRO_PDFOPT_SEARCHABLE_TEXT = 3,  // truth value
    PRO_PDFOPT_RASTER_DPI = 4,       // number, 100 to 600
    PRO_PDFOPT_LAUNCH_VIEWER = 5,    // truth value; on unless switched off
    PRO_PDFOPT_LAYER_MODE = 6,       // number
    PRO_PDFOPT_PARAM_MODE = 7,       // number
    PRO_PDFOPT_HYPERLINKS = 8,       // truth value, as the next four
    PRO_PDFOPT_BOOKMARK_ZONES = 9,
    PRO_PDFOPT_BOOKMARK_VIEWS = 10,
    PRO_PDFOPT_BOOKMARK_SHEETS = 11,
    PRO_PDFOPT_BOOKMARK_FLAG_NOTES = 12,
    PRO_PDFOPT_TITLE = 13,  // text, as the next five
    PRO_PDFOPT_AUTHOR = 14,
    PRO_PDFOPT_SUBJECT = 15,
    PRO_PDFOPT_KEYWORDS = 16,
    PRO_PDFOPT_PASSWORD_TO_OPEN = 17,
    PRO_PDFOPT_MASTER_PASSWORD = 18,
    PRO_PDFOPT_RESTRICT_OPERATIONS = 19,  // truth value, as the next one
    PRO_PDFOPT_ALLOW_PRINTING = 20,
    PRO_PDFOPT_ALLOW_PRINTING_MODE = 21,  // number, as the next one
    PRO_PDFOPT_ALLOW_MODE = 22,
    PRO_PDFOPT_ALLOW_COPYING = 23,  // truth value, as the next two
    PRO_PDFOPT_ALLOW_ACCESSIBILITY = 24,
    PRO_PDFOPT_PENTABLE = 25,  // uses the pen table
    PRO_PDFOPT_LINECAP = 26,   // number, as the next one
    PRO_PDFOPT_LINEJOIN = 27,
    PRO_PDFOPT_SHEETS = 28,      // ProPrintSheets
    PRO_PDFOPT_SHEET_RANGE = 29  // text, such as "1,3"; there are hosts that take a ProPrintSheets here
} ProPDFOptionType;

typedef enum ProPDFFontStrokeModes {
    PRO_PDF_STROKE_ALL_FONTS = 0,
    PRO_PDF_USE_TRUE_TYPE_FONTS = 1,
    PRO_PDF_STROKE_NON_TTF_FONTS = 2
} ProPDFFontStrokeMode;

typedef enum ProPDFColorDepths {
    PRO_PDF_CD_COLOR = 0,
    PRO_PDF_CD_GRAY = 1,
    PRO_PDF_CD_MONO = 2
} ProPDFColorDepth;

typedef enum ProPrintSheetChoices {
    PRO_PRINT_CURRENT_SHEET = 0,
    PRO_PRINT_ALL_SHEETS = 1,
    PRO_PRINT_SELECTED_SHEETS = 2
} ProPrintSheets;

// Gives a set of options with the host's defaults; free it with ProPDFoptionsFree. BAD_INPUTS.
ProError ProPDFoptionsAlloc(ProPDFOptions* options);

// Takes the set itself. BAD_INPUTS.
ProError ProPDFoptionsFree(ProPDFOptions options);

// Set an option that is a number, resp. a truth value. BAD_INPUTS; INVALID_TYPE for an option of
// another kind.
ProError ProPDFoptionsIntpropertySet(ProPDFOptions options, ProPDFOptionType type, int value);
ProError ProPDFoptionsBoolpropertySet(ProPDFOptions options, ProPDFOptionType type, ProBoolean value);

// Writes a model to the PDF file of that full path. The model must be displayed in the current
// window. BAD_INPUTS; INVALID_TYPE; NOT_DISPLAYED; INVALID_DIR; CANT_WRITE; GENERAL_ERROR.
ProError ProPDFExport(ProMdl model, ProPath output_file, ProPDFOptions options);

// Writes a drawing by the settings in a profile file; options do not count then. Statuses as above,
// E_NOT_FOUND for a missing profile, CANT_OPEN for an unreadable one.
ProError ProPDFWithProfileExport(ProMdl model, ProPath output_file, ProPath profile);

PRO_END_C_DECLS

static_assert(PRO_PDFOPT_PENTABLE == 25 && PRO_PDFOPT_SHEET_RANGE == 29, "options are known by number");
