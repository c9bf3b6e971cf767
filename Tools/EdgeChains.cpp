#include "EdgeChains.h"

#include <algorithm>

namespace quarn {

namespace {

using Edge = std::pair<std::uint32_t, std::uint32_t>;

class Walker {
public:
    explicit Walker(const std::vector<Edge>& walkedEdges);

    [[nodiscard]] std::vector<EdgeChain> chains();

private:
    // A point, and an edge that it ends.
    using Meeting = std::pair<std::uint32_t, std::uint32_t>;

    [[nodiscard]] std::size_t firstAt(std::uint32_t point) const;
    void walkFrom(std::uint32_t point, std::uint32_t edge, std::vector<EdgeChain>& result);

    const std::vector<Edge>& edges;
    std::vector<Meeting> meetings;  // sorted
    std::vector<bool> isWalked;
};

Walker::Walker(const std::vector<Edge>& walkedEdges) : edges(walkedEdges), isWalked(walkedEdges.size()) {
    for (std::uint32_t i = 0; i < edges.size(); ++i) {
        meetings.emplace_back(edges[i].first, i);
        meetings.emplace_back(edges[i].second, i);
    }
    std::sort(meetings.begin(), meetings.end());
}

std::vector<EdgeChain> Walker::chains() {
    std::vector<EdgeChain> result;
    for (std::size_t i = 0; i < meetings.size();) {
        std::size_t end = i;
        while (end < meetings.size() && meetings[end].first == meetings[i].first) ++end;
        // Where an odd number of edges meet, a walk has to end.
        if ((end - i) % 2 == 1)
            for (std::size_t k = i; k < end; ++k) walkFrom(meetings[k].first, meetings[k].second, result);
        i = end;
    }
    for (std::uint32_t i = 0; i < edges.size(); ++i) walkFrom(edges[i].first, i, result);
    return result;
}

std::size_t Walker::firstAt(std::uint32_t point) const {
    const auto found = std::lower_bound(meetings.begin(), meetings.end(), Meeting{point, 0});
    return static_cast<std::size_t>(found - meetings.begin());
}

void Walker::walkFrom(std::uint32_t point, std::uint32_t edge, std::vector<EdgeChain>& result) {
    if (isWalked[edge]) return;
    EdgeChain chain{.points = {point}, .edges = {}};
    for (bool isGoingOn = true; isGoingOn;) {
        isWalked[edge] = true;
        point = edges[edge].first == point ? edges[edge].second : edges[edge].first;
        chain.points.push_back(point);
        chain.edges.push_back(edge);
        isGoingOn = false;
        for (std::size_t i = firstAt(point); i < meetings.size() && meetings[i].first == point; ++i) {
            if (isWalked[meetings[i].second]) continue;
            edge = meetings[i].second;
            isGoingOn = point != chain.points.front();  // a loop ends where it closes
            break;
        }
    }
    result.push_back(std::move(chain));
}

}  // namespace

std::vector<EdgeChain> joinEdges(const std::vector<Edge>& edges) {
    return Walker(edges).chains();
}

}  // namespace quarn
