#include "NearestNames.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace quarn {

namespace {

// Bounds of the time for names from untrusted texts.
constexpr std::size_t kMaxLength = 64;
constexpr std::size_t kMaxNames = 10000;

std::string comparedPart(const std::string& name) {
    std::string part = name.substr(0, kMaxLength);
    std::transform(part.begin(), part.end(), part.begin(), [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
    });
    return part;
}

// The edit distance of Levenshtein, with one row of the table.
std::size_t editDistance(const std::string& a, const std::string& b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 0; i < a.size(); ++i) {
        std::size_t diagonal = std::exchange(row[0], i + 1);
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t replaced = diagonal + (a[i] == b[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

}  // namespace

std::vector<std::string> nearestNames(const std::string& name, const std::vector<std::string>& names,
                                      std::size_t maxCount) {
    const std::string wanted = comparedPart(name);
    std::vector<std::pair<std::size_t, std::size_t>> distances;  // each with the index of its name
    for (std::size_t i = 0; i < std::min(names.size(), kMaxNames); ++i)
        distances.emplace_back(editDistance(wanted, comparedPart(names[i])), i);
    const std::size_t count = std::min(distances.size(), maxCount);
    std::partial_sort(distances.begin(), distances.begin() + static_cast<std::ptrdiff_t>(count),
                      distances.end());
    std::vector<std::string> nearest;
    for (std::size_t i = 0; i < count; ++i) nearest.push_back(names[distances[i].second]);
    return nearest;
}

}  // namespace quarn
