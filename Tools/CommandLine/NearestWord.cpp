#include "CommandLine/NearestWord.h"

#include <algorithm>
#include <cstddef>

#include <QuarnKit/Base/Text/EditDistance.h>

namespace quarn::tool {

namespace {

// Longer words are no misspelled names, and the search takes time of the order of the length.
constexpr std::size_t kMaxLength = 40;

// The letters of a name in lower case, without the dashes before it.
std::string lettersOf(std::string_view name) {
    name.remove_prefix(std::min(name.find_first_not_of('-'), name.size()));
    return inLowerCase(name);
}

}  // namespace

std::optional<std::string> nearestWord(std::string_view word, const std::vector<std::string>& candidates) {
    const std::string letters = lettersOf(word.substr(0, kMaxLength + 2));
    if (letters.size() < 2 || letters.size() > kMaxLength) return std::nullopt;
    std::size_t smallest = std::max<std::size_t>(letters.size() / 4, 1);
    std::optional<std::string> nearest;
    for (const std::string& candidate : candidates) {
        const std::string known = lettersOf(candidate);
        const std::size_t distance = known.starts_with(letters) ? 1 : editDistance(letters, known);
        if (known.size() < 2 || distance > smallest || (nearest && distance == smallest)) continue;
        smallest = distance;
        nearest = candidate;
    }
    return nearest;
}

}  // namespace quarn::tool
