#include "BoundaryWalk.h"

#include "BoundaryEdgeSearch.h"
#include "BoundaryWalkLists.h"
#include "BoundaryWalkMaps.h"

namespace {

using quarn::detail::BoundaryEdge;
using quarn::detail::BoundaryStep;
using quarn::detail::BoundaryWalkResult;
using quarn::detail::WalkDirection;

// Appends points to a boundary and records whether all of them have a UV.
class BoundaryWriter {
public:
    BoundaryWriter(Boundary& output, std::size_t expectedPoints) : boundary(output) {
        boundary.points.reserve(expectedPoints);
        boundary.uvPoints.reserve(expectedPoints);
        boundary.triangles.reserve(expectedPoints);
    }

    void append(const TriangleVertex& corner, const Triangle* triangle) {
        boundary.points.push_back(corner.position);
        boundary.uvPoints.push_back(corner.uv);
        boundary.triangles.push_back(triangle);
        uvGood = uvGood && corner.uv != kNoUV;
    }

    // Compare positions only, although the search for the next edge compares UVs as well.
    [[nodiscard]] bool isClosed() const { return boundary.points.front() == boundary.points.back(); }
    [[nodiscard]] bool isUVGood() const { return uvGood; }

private:
    Boundary& boundary;
    bool uvGood = true;
};

// `Edges` is BoundaryWalkLists or BoundaryWalkMaps.
template <class Edges>
BoundaryWalkResult walk(Edges edges, Boundary& boundary) {
    WalkDirection direction = WalkDirection::Up;
    if (edges.count(direction) == 0) return {};

    BoundaryWriter writer(boundary, edges.count(direction) + 1);
    const BoundaryEdge first = edges.takeFirst();
    writer.append(*first.lower, first.triangle);
    writer.append(*first.upper, first.triangle);
    while (edges.count(direction) != 0 && !writer.isClosed()) {
        bool hasMoved = false;
        while (const std::optional<BoundaryStep> step = edges.takeNext(direction)) {
            writer.append(*step->end, step->triangle);
            hasMoved = true;
        }
        if (!hasMoved) direction = direction == WalkDirection::Up ? WalkDirection::Down : WalkDirection::Up;
    }
    if (edges.count(direction) == 0) return {writer.isUVGood(), std::nullopt};
    return {false, edges.count(WalkDirection::Up)};
}

}  // namespace

namespace quarn::detail {

BoundaryWalkResult findBoundary(const std::vector<Triangle>& triangles, Boundary& boundary) {
    boundary.points.clear();
    boundary.uvPoints.clear();
    boundary.triangles.clear();
    if (const auto boundaryEdges = findBoundaryEdges(triangles))
        return walk(BoundaryWalkLists(triangles, *boundaryEdges), boundary);
    return walk(BoundaryWalkMaps(triangles), boundary);
}

}  // namespace quarn::detail
