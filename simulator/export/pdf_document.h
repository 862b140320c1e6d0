// A small writer of PDF files: pages with lines and text.

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

struct PdfColor {
    double red = 0, green = 0, blue = 0;  // 0 to 1
};

// Lengths are mm, the origin is the lower left corner.
class PdfPage {
public:
    PdfPage(double width, double height) : width_(width), height_(height) {}

    void SetColor(const PdfColor& color);
    void SetWidth(double width);
    void Line(double x1, double y1, double x2, double y2);
    void Rectangle(double x, double y, double width, double height);
    void Text(double x, double y, double height, std::wstring_view text);

private:
    friend class PdfDocument;
    double width_, height_;
    std::string content_;
};

class PdfDocument {
public:
    // `remark`: one line that goes into the file as a comment.
    PdfDocument(std::wstring_view title, std::string_view remark);
    void Add(PdfPage page) { pages_.push_back(std::move(page)); }
    std::string Bytes() const;

private:
    std::wstring title_;
    std::string remark_;
    std::vector<PdfPage> pages_;
};

// The remark of a file; nothing when there is none or the file's end is missing.
std::optional<std::string> PdfRemark(std::string_view bytes);

}  // namespace sim
