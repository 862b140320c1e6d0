#include "simulator/export/pdf_document.h"

#include <algorithm>
#include <cstdio>

#include "simulator/export/text_outline.h"

namespace sim {

namespace {

constexpr double kPointsPerMm = 72 / 25.4;
constexpr std::string_view kHeader = "%PDF-1.5\n%";
constexpr std::string_view kEnd = "%%EOF\n";
// Objects before the pages: catalogue, page tree, font, document information.
constexpr int kFirstPage = 5;

std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f ", value);
    return text;
}

std::string Points(double mm) {
    return Number(mm * kPointsPerMm);
}

// UTF-16 with the high byte first.
std::string Hex(std::wstring_view text, std::string_view start = {}) {
    std::string hex = "<" + std::string(start);
    char digits[8];
    for (const wchar_t c : text) {
        std::snprintf(digits, sizeof digits, "%04X", static_cast<unsigned>(c));
        hex += digits;
    }
    return hex + ">";
}

std::string Literal(std::wstring_view ascii) {
    std::string text = "(";
    for (const wchar_t c : ascii) {
        if (c == L'(' || c == L')' || c == L'\\') text += '\\';
        text += static_cast<char>(c);
    }
    return text + ")";
}

bool IsAscii(std::wstring_view text) {
    return std::ranges::all_of(text, [](wchar_t c) { return c >= 0x20 && c < 0x7F; });
}

}  // namespace

// ---- A page

void PdfPage::SetColor(const PdfColor& color) {
    const std::string ink = Number(color.red) + Number(color.green) + Number(color.blue);
    content_ += ink + "RG " + ink + "rg\n";
}

void PdfPage::SetWidth(double width) {
    content_ += Points(width) + "w\n";
}

void PdfPage::Line(double x1, double y1, double x2, double y2) {
    content_ += Points(x1) + Points(y1) + "m " + Points(x2) + Points(y2) + "l S\n";
}

void PdfPage::Rectangle(double x, double y, double width, double height) {
    content_ += Points(x) + Points(y) + Points(width) + Points(height) + "re S\n";
}

// ASCII in a font that every reader has; other letters as filled shapes, for their fonts are not everywhere.
void PdfPage::Text(double x, double y, double height, std::wstring_view text) {
    // Capitals are about seven tenths of the type size.
    const double size = height / 0.7;
    if (IsAscii(text)) {
        content_ +=
            "BT /F1 " + Points(size) + "Tf " + Points(x) + Points(y) + "Td " + Literal(text) + " Tj ET\n";
        return;
    }
    int curvePoints = 0;
    for (const OutlinePoint& point : TextOutline(text)) {
        content_ += Points(x + point.x * size) + Points(y + point.y * size);
        if (point.kind == OutlinePoint::Kind::kMove) content_ += "m ";
        if (point.kind == OutlinePoint::Kind::kLine) content_ += "l ";
        if (point.kind == OutlinePoint::Kind::kCurve && ++curvePoints % 3 == 0) content_ += "c ";
        if (point.closes) content_ += "h\n";
    }
    content_ += "f\n";
}

// ---- The file

PdfDocument::PdfDocument(std::wstring_view title, std::string_view remark) : title_(title), remark_(remark) {}

std::string PdfDocument::Bytes() const {
    std::string kids;
    for (std::size_t i = 0; i < pages_.size(); ++i)
        kids += std::to_string(kFirstPage + 2 * static_cast<int>(i)) + " 0 R ";
    std::vector<std::string> objects = {
        "<< /Type /Catalog /Pages 2 0 R >>",
        "<< /Type /Pages /Count " + std::to_string(pages_.size()) + " /Kids [ " + kids + "] >>",
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
        "<< /Title " + Hex(title_, "FEFF") + " /Producer (hostsim) >>",
    };
    for (const PdfPage& page : pages_) {
        const std::string content = std::to_string(objects.size() + 2) + " 0 R";
        objects.push_back("<< /Type /Page /Parent 2 0 R /MediaBox [ 0 0 " + Points(page.width_) +
                          Points(page.height_) + "] /Resources << /Font << /F1 3 0 R >> >> /Contents " +
                          content + " >>");
        objects.push_back("<< /Length " + std::to_string(page.content_.size()) + " >>\nstream\n" +
                          page.content_ + "endstream");
    }

    std::string bytes = std::string(kHeader) + remark_ + "\n";
    std::string offsets = "0000000000 65535 f \n";
    for (std::size_t i = 0; i < objects.size(); ++i) {
        char line[24];
        std::snprintf(line, sizeof line, "%010zu 00000 n \n", bytes.size());
        offsets += line;
        bytes += std::to_string(i + 1) + " 0 obj\n" + objects[i] + "\nendobj\n";
    }
    const std::size_t start = bytes.size();
    const std::string count = std::to_string(objects.size() + 1);
    return bytes + "xref\n0 " + count + "\n" + offsets + "trailer\n<< /Size " + count +
           " /Root 1 0 R /Info 4 0 R >>\nstartxref\n" + std::to_string(start) + "\n" + std::string(kEnd);
}

std::optional<std::string> PdfRemark(std::string_view bytes) {
    if (!bytes.starts_with(kHeader) || !bytes.ends_with(kEnd)) return std::nullopt;
    const std::size_t end = bytes.find('\n', kHeader.size());
    return std::string(bytes.substr(kHeader.size(), end - kHeader.size()));
}

}  // namespace sim
