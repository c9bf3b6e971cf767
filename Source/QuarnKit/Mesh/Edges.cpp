#include "Edges.h"

#include <algorithm>
#include <tuple>

namespace quarn {

namespace {

template <class Visit>
void forEachHalfEdge(const CornerIds& corners, const std::vector<bool>& isUsed, Visit visit) {
    for (std::uint32_t triangle = 0; triangle < corners.size(); ++triangle) {
        if (!isUsed[triangle]) continue;
        for (std::uint32_t i = 0; i < 3; ++i) {
            const std::uint32_t from = corners[triangle].at(i);
            const std::uint32_t to = corners[triangle].at((i + 1) % 3);
            visit(HalfEdge{std::min(from, to), std::max(from, to), 3 * triangle + i, from < to});
        }
    }
}

}  // namespace

// Vertices are numbered without gaps, so that one counting sort orders the edges by their lower
// vertex.
Edges::Edges(const CornerIds& corners, const std::vector<bool>& isUsed) {
    std::vector<std::uint32_t> ends;  // by vertex: the end of the edges whose lower vertex it is
    forEachHalfEdge(corners, isUsed, [&](const HalfEdge& halfEdge) {
        if (halfEdge.high >= ends.size()) ends.resize(halfEdge.high + std::size_t{1});
        ++ends[halfEdge.low];
    });
    std::uint32_t sum = 0;
    for (std::uint32_t& end : ends) {
        const std::uint32_t count = end;
        end = sum;
        sum += count;
    }
    halfEdges.resize(sum);
    forEachHalfEdge(corners, isUsed,
                    [&](const HalfEdge& halfEdge) { halfEdges[ends[halfEdge.low]++] = halfEdge; });
    auto first = halfEdges.begin();
    for (const std::uint32_t end : ends) {
        const auto last = halfEdges.begin() + end;
        std::sort(first, last, [](const HalfEdge& a, const HalfEdge& b) {
            return std::tie(a.high, a.edge) < std::tie(b.high, b.edge);
        });
        first = last;
    }
}

}  // namespace quarn
