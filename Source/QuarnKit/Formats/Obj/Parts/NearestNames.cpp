#include "NearestNames.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include <QuarnKit/Base/Text/EditDistance.h>

namespace quarn {

namespace {

// Bounds of the time for names from untrusted texts.
constexpr std::size_t kMaxLength = 64;
constexpr std::size_t kMaxNames = 10000;

std::string comparedPart(const std::string& name) {
    return inLowerCase(std::string_view(name).substr(0, kMaxLength));
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
