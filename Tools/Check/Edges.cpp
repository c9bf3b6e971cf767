#include "Check/Edges.h"

#include <algorithm>
#include <tuple>

namespace quarn {

Edges::Edges(const CornerNumbers& corners, const std::vector<bool>& isUsed) {
    uses.reserve(corners.size() * 3);
    for (std::uint32_t triangle = 0; triangle < corners.size(); ++triangle) {
        if (!isUsed[triangle]) continue;
        for (std::size_t i = 0; i < 3; ++i) {
            const std::uint32_t from = corners[triangle][i];
            const std::uint32_t to = corners[triangle][(i + 1) % 3];
            uses.push_back({std::min(from, to), std::max(from, to), triangle, from < to});
        }
    }
    std::sort(uses.begin(), uses.end(), [](const EdgeUse& a, const EdgeUse& b) {
        return std::tie(a.low, a.high, a.triangle) < std::tie(b.low, b.high, b.triangle);
    });
}

}  // namespace quarn
