#include "simulator/toolkit/support/looks.h"

#include <algorithm>
#include <iterator>

namespace sim {

void FillAppearance(const Look& look, ProSurfaceAppearanceProps& properties) {
    properties = {};
    properties.ambient = look.ambient;
    properties.diffuse = look.diffuse;
    properties.highlite = look.highlight;
    properties.shininess = look.shininess;
    properties.transparency = look.transparency;
    properties.reflection = look.reflection;
    std::ranges::copy(look.colour, properties.color_rgb);
    std::ranges::copy(look.highlightColour, properties.highlight_color);
}

ProError SetLook(Session& host, SimModel& owner, std::optional<Look>& place,
                 const ProSurfaceAppearanceProps* properties) {
    if (owner.IsReadOnly()) return PRO_TK_CANT_MODIFY;
    if (properties == nullptr) {
        place.reset();
        owner.SetModified(true);
        return PRO_TK_NO_ERROR;
    }
    Look look;
    look.ambient = properties->ambient;
    look.diffuse = properties->diffuse;
    look.highlight = properties->highlite;
    look.shininess = properties->shininess;
    look.transparency = properties->transparency;
    look.reflection = properties->reflection;
    std::ranges::copy(properties->color_rgb, look.colour.begin());
    std::ranges::copy(properties->highlight_color, look.highlightColour.begin());
    const auto isShare = [](double number) { return number >= 0 && number <= 1; };
    const double numbers[] = {look.ambient,   look.diffuse,      look.highlight,
                              look.shininess, look.transparency, look.reflection};
    if (!std::ranges::all_of(numbers, isShare) || !std::ranges::all_of(look.colour, isShare) ||
        !std::ranges::all_of(look.highlightColour, isShare)) {
        host.report.Violation("is given a look with a number that is not from 0 to 1");
        return PRO_TK_BAD_INPUTS;
    }
    place = look;
    owner.SetModified(true);
    return PRO_TK_NO_ERROR;
}

}  // namespace sim
