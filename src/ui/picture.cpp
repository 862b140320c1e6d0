// The plug-in's picture in its dialogs.

#include "ui/picture.h"

#include <ProUIDrawingarea.h>

#include "base/text.h"

namespace kv {

// Among the text files; each layout with a drawing area lists it as an image of the area.
static constexpr char kPicture[] = "KvPicture.gif";

// A dialog without its picture works as well.
void ShowPicture(const char* dialog, const char* area) {
    ProUIPoint corner = {0, 0};
    ProUIDrawingareaImageDraw(HostName(dialog), HostName(area), HostName(kPicture), &corner);
}

}  // namespace kv
