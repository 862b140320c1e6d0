// What the host looks at before it takes relations: the syntax of every line, and that every name in an
// expression is known.

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

// What a name may stand for without any relation.
struct RelationNames {
    std::function<bool(std::wstring_view)> isParameter;
    std::function<bool(std::wstring_view)> isDimension;
};

struct RelationReading {
    // "line 3: what was expected"; empty: every line is a relation.
    std::string fault;
    // Names that are given values, as they are written.
    std::vector<std::wstring> assigned;
};

// Reads assignments, arithmetic, comparisons, functions, strings, IF / ELSE / ENDIF, comments (/*), and lines
// that go on behind a backslash. A name that is not known may be assigned to, unless it looks like a
// dimension (a letter or two and a number), and is known from then on.
RelationReading ReadRelations(const std::vector<std::wstring>& lines, const RelationNames& names);

}  // namespace sim
