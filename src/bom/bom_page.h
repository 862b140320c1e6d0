// A list as a page for a browser. Plain rules, without a host call.
//
// A page stands for itself: its style and its script are in it, and it may fetch nothing. It can be read
// without the script. Its rows are lines of their own, so that an earlier page can be read again.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <ProToolkit.h>

namespace kv {

// Changes whenever an older reader could misread a page.
inline constexpr char kPageFormat[] = "1";

enum class PageKind { Bom, Changes };
// What a list on a page is: the tree, the summed list, or changes between two lists.
enum class PageForm { Levels, Summed, Changes };

struct PageParts {
    std::string style;
    std::string script;
};

struct PageHead {
    PageKind kind = PageKind::Bom;
    std::wstring title;
    std::wstring key;  // under which a browser keeps what was ticked off
};

struct PageColumn {
    std::wstring title;
    bool isNumber = false;  // the one that is added up
    bool isCode = false;    // parts between points are numbers of their own
};

struct PageRow {
    int level = 0;
    bool isAssembly = false;
    std::wstring name;
    unsigned int count = 0;
    std::vector<std::wstring> cells;  // one a column
};

// The style and the script that are built into the plug-in. PRO_TK_E_NOT_FOUND; PRO_TK_GENERAL_ERROR when
// Windows has no service for their digests, without which a browser would run neither.
[[nodiscard]] ProError PagePartsGet(PageParts& parts);

// Writes a page from its beginning to its end.
class PageWriter {
public:
    PageWriter(const PageHead& head, const PageParts& parts);

    // tree  index of the column that shows the levels of a tree
    void ListBegin(PageForm form, std::span<const PageColumn> columns, std::size_t tree);
    void RowAdd(const PageRow& row);
    void ListEnd();

    // The page with these lines at its foot, as UTF-8. Nothing may be added any more.
    std::string End(std::span<const std::wstring> foot);

private:
    std::string text_;
    std::string script_;               // comes last, when all that it works on is there
    std::vector<PageColumn> columns_;  // of the list that was begun
    std::size_t tree_ = 0;
};

// A text inside an element or a quoted attribute.
std::string PageEscaped(std::wstring_view text);
// The text that PageEscaped was given.
std::wstring PageUnescaped(std::wstring_view text);

}  // namespace kv
