// The bill of materials as a workbook.
#pragma once

namespace kv {

// Lets the user choose a file, writes the dialog's table into it and opens it. What goes wrong is shown,
// unless the user cancelled.
void BomExport();

}  // namespace kv
