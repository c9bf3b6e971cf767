#include "CommandLine/NearestWord.h"

#include <algorithm>
#include <cstddef>

namespace quarn::tool {

namespace {

// Longer words are no misspelled names, and the search takes time of the order of the length.
constexpr std::size_t kMaxLength = 40;

// The letters of a name in lower case, without the dashes before it.
std::string lettersOf(std::string_view name) {
    name.remove_prefix(std::min(name.find_first_not_of('-'), name.size()));
    std::string letters(name);
    std::transform(letters.begin(), letters.end(), letters.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return letters;
}

// The edit distance, in which two swapped neighbors are one edit. Row i has the distances between
// the first i letters of a and each beginning of b.
std::size_t editDistance(const std::string& a, const std::string& b) {
    std::vector<std::size_t> beforeLast(b.size() + 1);
    std::vector<std::size_t> last(b.size() + 1);
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        beforeLast.swap(last);
        last.swap(row);
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, replaced});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], beforeLast[j - 2] + 1);
        }
    }
    return row[b.size()];
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
