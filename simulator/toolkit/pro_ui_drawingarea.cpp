#include <ProUIDrawingarea.h>

#include <algorithm>
#include <array>
#include <filesystem>

#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/ui_call.h"

using namespace sim;

namespace {

// The kinds of files that an area can show; PNG is not among them.
constexpr std::array<std::wstring_view, 6> kImageKinds = {L".BIF", L".PCX", L".GIF",
                                                          L".BMP", L".ICO", L".CUR"};

bool IsImage(std::string_view file) {
    const std::wstring kind = UpperName(std::filesystem::path(Wide(file)).extension().wstring());
    return std::ranges::find(kImageKinds, kind) != kImageKinds.end();
}

}  // namespace

ProError ProUIDrawingareaPostmanagenotifyActionSet(char* dialog, char* component, ProUIAction callback,
                                                   ProAppData data) {
    static const CallSite kSite("ProUIDrawingareaPostmanagenotifyActionSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, callback, data}, [&](Session& host) -> ProError {
        return SetAction(host, dialog, component, ComponentKind::kDrawingArea, DialogEvent::kShown,
                         {callback, data});
    });
}

ProError ProUIDrawingareaImagesSet(char* dialog, char* component, int count, char** values) {
    static const CallSite kSite("ProUIDrawingareaImagesSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, count, values}, [&](Session& host) -> ProError {
        Component* area = NamedComponent(host, dialog, component, ComponentKind::kDrawingArea);
        if (area == nullptr) return PRO_TK_GENERAL_ERROR;
        const auto images = NameList(host, count, values);
        if (!images) return PRO_TK_BAD_INPUTS;
        for (const std::string& image : *images)
            if (!IsImage(image) || host.texts.FindIcon(image) == nullptr)
                return Refuse(host, PRO_TK_GENERAL_ERROR, "there is no image file " + Named(image.c_str()));
        area->images = *images;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUIDrawingareaImageDraw(char* dialog, char* component, char* image, ProUIPoint* position) {
    static const CallSite kSite("ProUIDrawingareaImageDraw", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, image, position}, [&](Session& host) -> ProError {
        Component* area = NamedComponent(host, dialog, component, ComponentKind::kDrawingArea);
        if (area == nullptr) return PRO_TK_GENERAL_ERROR;
        if (image == nullptr || position == nullptr)
            return Refuse(host, PRO_TK_BAD_INPUTS, "the image or its position is null");
        if (!NamedDialog(host, dialog)->active)
            return Refuse(host, PRO_TK_GENERAL_ERROR, "the area " + Named(component) + " is not shown yet");
        if (std::ranges::find(area->images, image) == area->images.end())
            return Refuse(host, PRO_TK_GENERAL_ERROR,
                          Named(image) + " is no image of the area " + Named(component));
        if (!IsImage(image) || host.texts.FindIcon(image) == nullptr)
            return Refuse(host, PRO_TK_GENERAL_ERROR, "there is no image file " + Named(image));
        area->drawn.emplace_back(image);
        return PRO_TK_NO_ERROR;
    });
}
