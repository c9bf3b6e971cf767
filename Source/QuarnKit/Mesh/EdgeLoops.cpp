#include "EdgeLoops.h"

#include <algorithm>
#include <limits>

namespace quarn {

namespace {

using Edge = std::pair<std::uint32_t, std::uint32_t>;

constexpr std::uint32_t kNone = std::numeric_limits<std::uint32_t>::max();

class Walker {
public:
    explicit Walker(const std::vector<Edge>& edgeList);

    [[nodiscard]] std::vector<EdgeLoop> loops();

private:
    std::uint32_t takeEdgeAt(std::uint32_t point);
    void walkFrom(std::uint32_t point);
    void cutLoop(EdgeLoop& walk, std::uint32_t place);

    const std::vector<Edge>& edges;
    std::vector<bool> isVisited;
    // By point: where its edges begin in incidentEdges; one more entry at the end.
    std::vector<std::uint32_t> offsets;
    std::vector<std::uint32_t> incidentEdges;
    std::vector<std::uint32_t> nextIncident;  // by point: the first edge that may be unvisited
    std::vector<std::uint32_t> placeOnWalk;   // by point: its index on the walk
    std::vector<EdgeLoop> result;
};

Walker::Walker(const std::vector<Edge>& edgeList) : edges(edgeList), isVisited(edges.size()) {
    std::uint32_t pointCount = 0;
    for (const auto& [from, to] : edges) pointCount = std::max({pointCount, from + 1, to + 1});
    offsets.resize(pointCount + std::size_t{1});
    for (const auto& [from, to] : edges) {
        ++offsets[from + std::size_t{1}];
        ++offsets[to + std::size_t{1}];
    }
    for (std::size_t i = 1; i < offsets.size(); ++i) offsets[i] += offsets[i - 1];
    nextIncident = offsets;
    incidentEdges.resize(edges.size() * 2);
    for (std::uint32_t i = 0; i < edges.size(); ++i) {
        incidentEdges[nextIncident[edges[i].first]++] = i;
        incidentEdges[nextIncident[edges[i].second]++] = i;
    }
    nextIncident = offsets;
    placeOnWalk.assign(pointCount, kNone);
}

std::vector<EdgeLoop> Walker::loops() {
    // Start at points of an odd number of edges, because walks that do not close end there.
    for (std::uint32_t point = 0; point < placeOnWalk.size(); ++point)
        if ((offsets[point + std::size_t{1}] - offsets[point]) % 2 == 1)
            while (nextIncident[point] < offsets[point + std::size_t{1}]) walkFrom(point);
    for (std::uint32_t i = 0; i < edges.size(); ++i)
        if (!isVisited[i]) walkFrom(edges[i].first);
    return std::move(result);
}

// Returns an unvisited edge at a point and marks it as visited; kNone if there is none.
std::uint32_t Walker::takeEdgeAt(std::uint32_t point) {
    for (std::uint32_t& next = nextIncident[point]; next < offsets[point + std::size_t{1}]; ++next) {
        const std::uint32_t edge = incidentEdges[next];
        if (isVisited[edge]) continue;
        isVisited[edge] = true;
        return edge;
    }
    return kNone;
}

void Walker::walkFrom(std::uint32_t point) {
    EdgeLoop walk{.points = {point}, .edges = {}};
    placeOnWalk[point] = 0;
    for (std::uint32_t edge = takeEdgeAt(point); edge != kNone; edge = takeEdgeAt(point)) {
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

// The walk has returned to a point; cut off the loop in between.
void Walker::cutLoop(EdgeLoop& walk, std::uint32_t place) {
    EdgeLoop& loop = result.emplace_back();
    loop.points.assign(walk.points.begin() + place, walk.points.end());
    loop.points.push_back(walk.points[place]);
    loop.edges.assign(walk.edges.begin() + place, walk.edges.end());
    walk.edges.resize(place);
    for (std::size_t i = place + std::size_t{1}; i < walk.points.size(); ++i)
        placeOnWalk[walk.points[i]] = kNone;
    walk.points.resize(place + std::size_t{1});
}

}  // namespace

std::vector<EdgeLoop> buildEdgeLoops(const std::vector<Edge>& edges) {
    return Walker(edges).loops();
}

}  // namespace quarn
