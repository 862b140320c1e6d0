// The plug-in's picture in its dialogs.

#include "ui/picture.h"

#include <ProUIDrawingarea.h>

#include "base/status.h"
#include "base/text.h"

namespace kv {

// Among the text files.
static constexpr char kPicture[] = "KvPicture.gif";

// A dialog without its picture works as well.
void ShowPicture(const char* dialog, const char* area) {
    char* images[] = {HostName(kPicture)};
    if (Failed(ProUIDrawingareaImagesSet(HostName(dialog), HostName(area), 1, images))) return;
    ProUIPoint corner = {0, 0};
    ProUIDrawingareaImageDraw(HostName(dialog), HostName(area), HostName(kPicture), &corner);
}

}  // namespace kv
