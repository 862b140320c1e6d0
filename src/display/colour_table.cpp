// Colours for parts.

#include "display/colour_table.h"

#include <algorithm>
#include <charconv>

#include "base/text.h"

namespace kv {

static constexpr int kBrightest = 255;
static constexpr wchar_t kLastDigitLike = 0x7F;

static std::vector<std::size_t> LeastUsed(const std::vector<std::size_t>& uses,
                                          std::span<const std::optional<std::size_t>> neighbours);

std::optional<Colour> ColourFromText(std::wstring_view text) {
    std::string digits;
    for (const wchar_t character : WithoutBlanks(text)) {
        if (character > kLastDigitLike) return std::nullopt;
        digits += static_cast<char>(character);
    }
    Colour colour = {};
    const char* next = digits.data();
    const char* const end = next + digits.size();
    for (std::size_t i = 0; i < colour.size(); ++i) {
        if (i > 0 && (next == end || *next++ != ',')) return std::nullopt;
        const auto [behind, error] = std::from_chars(next, end, colour[i]);
        if (error != std::errc() || colour[i] < 0 || colour[i] > kBrightest) return std::nullopt;
        next = behind;
    }
    return next == end ? std::optional(colour) : std::nullopt;
}

std::vector<std::size_t> ColoursDrawn(std::span<const std::optional<std::size_t>> taken, std::size_t table,
                                      const RandomBelow& random) {
    std::vector<std::size_t> drawn(taken.size(), table);
    std::vector<std::size_t> uses(table);
    std::optional<std::size_t> before;
    for (std::size_t i = 0; i < taken.size(); ++i) {
        if (!taken[i]) {
            const std::optional<std::size_t> behind = i + 1 < taken.size() ? taken[i + 1] : std::nullopt;
            const std::optional<std::size_t> neighbours[] = {before, behind};
            const std::vector<std::size_t> choice = LeastUsed(uses, neighbours);
            drawn[i] = choice[random(choice.size())];
            ++uses[drawn[i]];
        }
        before = taken[i] ? taken[i] : drawn[i];
    }
    return drawn;
}

// The colours that are used least among those of no neighbour; where there is none of these, among all but
// that of the first neighbour, and in a table of one colour that one.
static std::vector<std::size_t> LeastUsed(const std::vector<std::size_t>& uses,
                                          std::span<const std::optional<std::size_t>> neighbours) {
    std::vector<std::size_t> choice;
    for (std::size_t respected = neighbours.size() + 1; respected-- > 0 && choice.empty();) {
        const auto mayNot = neighbours.first(respected);
        for (std::size_t colour = 0; colour < uses.size(); ++colour) {
            if (std::ranges::find(mayNot, std::optional(colour)) != mayNot.end()) continue;
            if (!choice.empty() && uses[colour] < uses[choice.front()]) choice.clear();
            if (choice.empty() || uses[colour] == uses[choice.front()]) choice.push_back(colour);
        }
    }
    return choice;
}

}  // namespace kv
