// A list as a page for a browser.

#include "bom/bom_page.h"

#include <utility>

#include "base/resource.h"
#include "base/sha256.h"
#include "base/text.h"

namespace kv {

struct PageEntity {
    wchar_t character;
    std::string_view entity;
};
// Line ends would break a row's line.
static constexpr PageEntity kEntities[] = {{L'&', "&amp;"},  {L'<', "&lt;"},   {L'>', "&gt;"},
                                           {L'"', "&quot;"}, {L'\'', "&#39;"}, {L'\n', "&#10;"},
                                           {L'\r', "&#13;"}};

struct PageFormWords {
    PageForm form;
    const char* name;
    const wchar_t* heading;
    const char* english;
};
static constexpr PageFormWords kForms[] = {
    {PageForm::Levels, "levels", L"分层清单", "List by level"},
    {PageForm::Summed, "summed", L"汇总清单", "Summed list"},
    {PageForm::Changes, "changes", L"与旧清单的差别", "Changes since the earlier list"},
};

static std::string PagePolicy(const PageParts& parts);

ProError PagePartsGet(PageParts& parts) {
    parts = {ResourceText(L"BOM_PAGE_STYLE"), ResourceText(L"BOM_PAGE_SCRIPT")};
    if (parts.style.empty() || parts.script.empty()) return PRO_TK_E_NOT_FOUND;
    return Sha256Base64(parts.script).empty() ? PRO_TK_GENERAL_ERROR : PRO_TK_NO_ERROR;
}

// Whatever the page says comes after its policy.
PageWriter::PageWriter(const PageHead& head, const PageParts& parts) : script_(parts.script) {
    const std::string title = PageEscaped(head.title);
    text_ = "<!DOCTYPE html>\n<html lang=\"zh-CN\">\n<head>\n<meta charset=\"utf-8\">\n" + PagePolicy(parts);
    text_ += "<meta name=\"viewport\" content=\"width=device-width\">\n<title>" + title + "</title>\n<style>";
    text_ +=
        parts.style + "</style>\n</head>\n<body>\n<main data-format=\"" + kPageFormat + "\" data-kind=\"";
    text_ += head.kind == PageKind::Bom ? "bom" : "changes";
    text_ += "\" data-key=\"" + PageEscaped(head.key) + "\">\n<h1>" + title + "</h1>\n";
}

void PageWriter::ListBegin(PageForm form, std::span<const PageColumn> columns, std::size_t tree) {
    const PageFormWords& words = kForms[static_cast<std::size_t>(form)];
    columns_.assign(columns.begin(), columns.end());
    tree_ = tree;
    text_ += std::string("<section data-form=\"") + words.name + "\">\n<h2 data-en=\"" + words.english +
             "\">" + PageEscaped(words.heading) + "</h2>\n<table>\n<thead>\n<tr>";
    for (const PageColumn& column : columns_) {
        text_ += column.isNumber ? "<th class=\"q\">" : column.isCode ? "<th class=\"c\">" : "<th>";
        text_ += PageEscaped(column.title) + "</th>";
    }
    text_ += "</tr>\n</thead>\n<tbody>\n";
}

void PageWriter::RowAdd(const PageRow& row) {
    text_ += "<tr data-l=\"" + std::to_string(row.level) + "\" data-n=\"" + PageEscaped(row.name) +
             "\" data-q=\"" + std::to_string(row.count) + (row.isAssembly ? "\" data-a>" : "\">");
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        text_ += i == tree_ ? "<td class=\"t\">" : columns_[i].isNumber ? "<td class=\"q\">" : "<td>";
        text_ += PageEscaped(row.cells[i]) + "</td>";
    }
    text_ += "</tr>\n";
}

void PageWriter::ListEnd() {
    text_ += "</tbody>\n</table>\n</section>\n";
}

std::string PageWriter::End(std::span<const std::wstring> foot) {
    text_ += "</main>\n<footer>\n";
    for (const std::wstring& line : foot) text_ += "<p>" + PageEscaped(line) + "</p>\n";
    text_ += "</footer>\n<script>" + script_ + "</script>\n</body>\n</html>\n";
    return std::move(text_);
}

// Nothing may be fetched, and nothing runs but the page's own.
static std::string PagePolicy(const PageParts& parts) {
    return "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'sha256-" +
           Sha256Base64(parts.style) + "'; script-src 'sha256-" + Sha256Base64(parts.script) +
           "'; base-uri 'none'; form-action 'none'\">\n";
}

std::string PageEscaped(std::wstring_view text) {
    std::string escaped;
    std::size_t plain = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        std::string_view entity;
        for (const auto& [character, word] : kEntities)
            if (character == text[i]) entity = word;
        // No document may hold it.
        if (text[i] == L'\0') entity = "&#65533;";
        if (entity.empty()) continue;
        escaped.append(Utf8Text(text.substr(plain, i - plain))).append(entity);
        plain = i + 1;
    }
    return escaped + Utf8Text(text.substr(plain));
}

std::wstring PageUnescaped(std::wstring_view text) {
    std::wstring result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        bool known = false;
        for (const auto& [character, word] : kEntities) {
            const std::wstring entity(word.begin(), word.end());
            if (text[i] != L'&' || text.substr(i, entity.size()) != entity) continue;
            result += character;
            i += entity.size() - 1;
            known = true;
            break;
        }
        if (!known) result += text[i];
    }
    return result;
}

}  // namespace kv
