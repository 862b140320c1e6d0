#include "simulator/export/text_outline.h"

#include <cstddef>

#include <windows.h>

namespace sim {

namespace {

constexpr int kTypeSize = 1000;

// A drawing surface with the font in it, kept for the life of the process.
HDC OutlineSurface() {
    static const HDC surface = [] {
        const HDC made = CreateCompatibleDC(nullptr);
        if (made == nullptr) return made;
        const HFONT font = CreateFontW(-kTypeSize, 0, 0, 0, FW_NORMAL, FALSE, FALSE, FALSE, GB2312_CHARSET,
                                       OUT_TT_ONLY_PRECIS, CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY,
                                       DEFAULT_PITCH | FF_DONTCARE, L"SimSun");
        SelectObject(made, font);
        SetTextAlign(made, TA_BASELINE | TA_LEFT);
        SetBkMode(made, TRANSPARENT);
        return made;
    }();
    return surface;
}

OutlinePoint::Kind KindOf(BYTE type) {
    const int bare = type & ~PT_CLOSEFIGURE;
    if (bare == PT_MOVETO) return OutlinePoint::Kind::kMove;
    return bare == PT_LINETO ? OutlinePoint::Kind::kLine : OutlinePoint::Kind::kCurve;
}

}  // namespace

std::vector<OutlinePoint> TextOutline(std::wstring_view text) {
    const HDC surface = OutlineSurface();
    if (surface == nullptr) return {};
    BeginPath(surface);
    TextOutW(surface, 0, 0, text.data(), static_cast<int>(text.size()));
    EndPath(surface);
    const int count = GetPath(surface, nullptr, nullptr, 0);
    if (count <= 0) return {};
    std::vector<POINT> points(static_cast<std::size_t>(count));
    std::vector<BYTE> types(points.size());
    if (GetPath(surface, points.data(), types.data(), count) != count) return {};
    AbortPath(surface);

    std::vector<OutlinePoint> outline;
    for (std::size_t i = 0; i < points.size(); ++i)
        outline.push_back({KindOf(types[i]), static_cast<double>(points[i].x) / kTypeSize,
                           -static_cast<double>(points[i].y) / kTypeSize, (types[i] & PT_CLOSEFIGURE) != 0});
    return outline;
}

}  // namespace sim
