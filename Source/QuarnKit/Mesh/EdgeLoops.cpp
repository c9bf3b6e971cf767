#include "EdgeLoops.h"

#include <algorithm>
#include <limits>

namespace quarn {

namespace {

using Edge = std::pair<std::uint32_t, std::uint32_t>;

constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

class Walker {
public:
    explicit Walker(const std::vector<Edge>& walkedEdges);

    [[nodiscard]] std::vector<EdgeChain> chains();

private:
    std::uint32_t takeFrom(std::uint32_t point);
    void walkFrom(std::uint32_t point);
    void cutLoop(EdgeChain& walk, std::uint32_t place);

    const std::vector<Edge>& edges;
    std::vector<bool> isWalked;
    // By point: where its edges begin in the list of meetings, and one more at the end.
    std::vector<std::uint32_t> begins;
    std::vector<std::uint32_t> meetings;
    std::vector<std::uint32_t> nextMeeting;  // by point: the first one that may be left
    std::vector<std::uint32_t> placeOnWalk;  // by point: where the walk visits it
    std::vector<EdgeChain> result;
};

Walker::Walker(const std::vector<Edge>& walkedEdges) : edges(walkedEdges), isWalked(edges.size()) {
    std::uint32_t pointCount = 0;
    for (const auto& [from, to] : edges) pointCount = std::max({pointCount, from + 1, to + 1});
    begins.resize(pointCount + std::size_t{1});
    for (const auto& [from, to] : edges) {
        ++begins[from + std::size_t{1}];
        ++begins[to + std::size_t{1}];
    }
    for (std::size_t i = 1; i < begins.size(); ++i) begins[i] += begins[i - 1];
    nextMeeting = begins;
    meetings.resize(edges.size() * 2);
    for (std::uint32_t i = 0; i < edges.size(); ++i) {
        meetings[nextMeeting[edges[i].first]++] = i;
        meetings[nextMeeting[edges[i].second]++] = i;
    }
    nextMeeting = begins;
    placeOnWalk.assign(pointCount, kNone);
}

std::vector<EdgeChain> Walker::chains() {
    // Where an odd number of edges meet, a walk has to end.
    for (std::uint32_t point = 0; point < placeOnWalk.size(); ++point)
        if ((begins[point + std::size_t{1}] - begins[point]) % 2 == 1)
            while (nextMeeting[point] < begins[point + std::size_t{1}]) walkFrom(point);
    for (std::uint32_t i = 0; i < edges.size(); ++i)
        if (!isWalked[i]) walkFrom(edges[i].first);
    return std::move(result);
}

// An edge that ends at a point; kNone where none is left.
std::uint32_t Walker::takeFrom(std::uint32_t point) {
    for (std::uint32_t& next = nextMeeting[point]; next < begins[point + std::size_t{1}]; ++next) {
        const std::uint32_t edge = meetings[next];
        if (isWalked[edge]) continue;
        isWalked[edge] = true;
        return edge;
    }
    return kNone;
}

void Walker::walkFrom(std::uint32_t point) {
    EdgeChain walk{.points = {point}, .edges = {}};
    placeOnWalk[point] = 0;
    for (std::uint32_t edge = takeFrom(point); edge != kNone; edge = takeFrom(point)) {
        point = edges[edge].first == point ? edges[edge].second : edges[edge].first;
        walk.edges.push_back(edge);
        if (placeOnWalk[point] == kNone) {
            placeOnWalk[point] = static_cast<std::uint32_t>(walk.points.size());
            walk.points.push_back(point);
        } else {
            cutLoop(walk, placeOnWalk[point]);
        }
    }
    for (const std::uint32_t visited : walk.points) placeOnWalk[visited] = kNone;
    if (!walk.edges.empty()) result.push_back(std::move(walk));
}

// The walk has come back to a point: what lies between is a loop.
void Walker::cutLoop(EdgeChain& walk, std::uint32_t place) {
    EdgeChain& loop = result.emplace_back();
    loop.points.assign(walk.points.begin() + place, walk.points.end());
    loop.points.push_back(walk.points[place]);
    loop.edges.assign(walk.edges.begin() + place, walk.edges.end());
    walk.edges.resize(place);
    for (std::size_t i = place + std::size_t{1}; i < walk.points.size(); ++i)
        placeOnWalk[walk.points[i]] = kNone;
    walk.points.resize(place + std::size_t{1});
}

}  // namespace

std::vector<EdgeChain> joinEdges(const std::vector<Edge>& edges) {
    return Walker(edges).chains();
}

}  // namespace quarn
