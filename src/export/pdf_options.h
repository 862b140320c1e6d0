// Option sets for PDF exports.
#pragma once

#include <ProPDF.h>

#include "base/host_handle.h"

namespace kv {

inline void PdfOptionsFree(ProPDFOptions* options) {
    ProPDFoptionsFree(*options);
}

using PdfOptions = HostHandle<ProPDFOptions, PdfOptionsFree>;

// What the user can choose about PDF files.
struct PdfChoice {
    bool trueType = false;  // fonts stay text instead of becoming strokes
    bool monochrome = false;
    bool useProfile = false;  // the settings are those of the profile in the working directory
};

// Makes an option set: no viewer is started, lines follow the pen table.
//
// currentSheet  the file holds the current sheet only
// Errors        those of the option calls; there is no set then
[[nodiscard]] ProError PdfOptionsMake(const PdfChoice& choice, bool currentSheet, PdfOptions& options);

}  // namespace kv
