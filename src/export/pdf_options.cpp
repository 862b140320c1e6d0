// Option sets for PDF exports.

#include "export/pdf_options.h"

#include "base/status.h"

namespace kv {

static ProError CurrentSheetChoose(ProPDFOptions options);

ProError PdfOptionsMake(const PdfChoice& choice, bool currentSheet, PdfOptions& options) {
    ProError status = options.Received(ProPDFoptionsAlloc(options.Receive()));
    const auto setNumber = [&](ProPDFOptionType type, int value) {
        if (!Failed(status)) status = ProPDFoptionsIntpropertySet(options.Get(), type, value);
    };
    const auto setFlag = [&](ProPDFOptionType type, ProBoolean value) {
        if (!Failed(status)) status = ProPDFoptionsBoolpropertySet(options.Get(), type, value);
    };
    setNumber(PRO_PDFOPT_FONT_STROKE,
              choice.trueType ? PRO_PDF_USE_TRUE_TYPE_FONTS : PRO_PDF_STROKE_ALL_FONTS);
    if (choice.monochrome) setNumber(PRO_PDFOPT_COLOR_DEPTH, PRO_PDF_CD_MONO);
    setFlag(PRO_PDFOPT_LAUNCH_VIEWER, PRO_B_FALSE);
    setFlag(PRO_PDFOPT_PENTABLE, PRO_B_TRUE);
    if (!Failed(status) && currentSheet) status = CurrentSheetChoose(options.Get());
    // Half an option set would give files that look right and are not.
    if (Failed(status)) options.Reset();
    return status;
}

// Hosts differ in the number of the option: one whose sheet range is a text has the choice next to it.
static ProError CurrentSheetChoose(ProPDFOptions options) {
    const ProError status =
        ProPDFoptionsIntpropertySet(options, PRO_PDFOPT_SHEET_RANGE, PRO_PRINT_CURRENT_SHEET);
    return Failed(status) ? ProPDFoptionsIntpropertySet(options, PRO_PDFOPT_SHEETS, PRO_PRINT_CURRENT_SHEET)
                          : status;
}

}  // namespace kv
