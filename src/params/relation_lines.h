// Lines of relations: what a text has, and what a model gets. Plain rules, without a host call.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kv {

using RelationLines = std::vector<std::wstring>;

// How typed lines and those of a model come together.
enum class RelationRule {
    Append,     // all of them behind the model's own
    AppendNew,  // those that the model did not have, character for character
    Replace,    // in their place
};

// The lines of a text, in order, without empty ones. Only a line feed divides; everything else belongs to a
// line, a carriage return too.
RelationLines LinesOfText(std::wstring_view text);

// The text of lines, for a text area.
std::wstring TextOfLines(const RelationLines& lines);

// The lines that a model with `old` is to have.
RelationLines NewRelations(const RelationLines& old, const RelationLines& typed, RelationRule rule);

}  // namespace kv
