#include "Check/Loops.h"

#include <algorithm>
#include <limits>

namespace quarn {

namespace {

constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

// Edges by the corners at which they end.
class Rim {
public:
    explicit Rim(const std::vector<EdgeUse>& rimEdges) : edges(rimEdges), isTaken(rimEdges.size()) {
        ends.reserve(edges.size() * 2);
        for (std::uint32_t i = 0; i < edges.size(); ++i) {
            ends.push_back({edges[i].low, i});
            ends.push_back({edges[i].high, i});
        }
        std::sort(ends.begin(), ends.end());
        firstEnds.assign(ends.empty() ? 0 : ends.back().corner + std::size_t{1}, 0);
        for (std::size_t i = ends.size(); i-- > 0;) firstEnds[ends[i].corner] = static_cast<std::uint32_t>(i);
    }

    // Takes an edge that ends at a corner; kNone where none is left.
    std::uint32_t takeFrom(std::uint32_t corner) {
        for (std::uint32_t& i = firstEnds[corner]; i < ends.size() && ends[i].corner == corner; ++i) {
            if (isTaken[ends[i].edge]) continue;
            isTaken[ends[i].edge] = true;
            return ends[i].edge;
        }
        return kNone;
    }

    [[nodiscard]] std::size_t cornerCount() const { return firstEnds.size(); }

private:
    struct End {
        std::uint32_t corner;
        std::uint32_t edge;

        friend bool operator<(const End& a, const End& b) {
            return a.corner != b.corner ? a.corner < b.corner : a.edge < b.edge;
        }
    };

    const std::vector<EdgeUse>& edges;
    std::vector<bool> isTaken;
    std::vector<End> ends;
    std::vector<std::uint32_t> firstEnds;  // by corner: the first of its ends that may be left
};

}  // namespace

std::vector<Loop> loopsOf(const std::vector<EdgeUse>& edges) {
    std::vector<Loop> loops;
    Rim rim(edges);
    std::vector<std::uint32_t> placeOnWalk(rim.cornerCount(), kNone);
    for (const EdgeUse& beginning : edges) {
        std::vector<std::uint32_t> corners = {beginning.low};
        Loop walk;
        placeOnWalk[beginning.low] = 0;
        for (std::uint32_t edge = rim.takeFrom(corners.back()); edge != kNone;
             edge = rim.takeFrom(corners.back())) {
            const EdgeUse& use = edges[edge];
            const std::uint32_t next = use.low == corners.back() ? use.high : use.low;
            walk.push_back(use);
            if (placeOnWalk[next] == kNone) {
                placeOnWalk[next] = static_cast<std::uint32_t>(corners.size());
                corners.push_back(next);
                continue;
            }
            // The walk meets itself: what lies between is a loop.
            const std::uint32_t place = placeOnWalk[next];
            loops.emplace_back(walk.begin() + place, walk.end());
            walk.resize(place);
            for (std::size_t i = place + std::size_t{1}; i < corners.size(); ++i)
                placeOnWalk[corners[i]] = kNone;
            corners.resize(place + std::size_t{1});
        }
        placeOnWalk[beginning.low] = kNone;
    }
    return loops;
}

}  // namespace quarn
