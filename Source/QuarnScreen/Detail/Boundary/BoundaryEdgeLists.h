/// \file
/// The edges of an outline, ordered for walking along them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "BoundaryEdge.h"

namespace quarn::detail {

/// The edges of an outline, each of which can be taken once, from either end.
///
/// Where several edges start at a corner, the first of the list is taken first. Corners are told apart
/// by position and UV, exactly; none may hold a NaN.
///
/// Taking all edges costs O(e log e) for e edges, most of it in the constructor.
class BoundaryEdgeLists {
public:
    /// \param triangles must outlive this object
    /// \param edges numbers of edges as findBoundaryEdges() gives them
    BoundaryEdgeLists(const std::vector<Triangle>& triangles, const std::vector<std::uint32_t>& edges);

    /// Edges that are left; they can be taken in both directions.
    [[nodiscard]] std::size_t count(WalkDirection) const { return left; }

    /// The edge whose lower end is least, the first of the list if there are several.
    /// \pre there is an edge, and none has been taken.
    BoundaryEdge takeFirst();

    /// Takes the first edge that leads on from where the last one ended; nothing if there is none.
    std::optional<BoundaryStep> takeNext(WalkDirection direction);

private:
    // An end of an edge: twice the edge's place in the list, plus one for the upper end.
    using End = std::uint32_t;

    [[nodiscard]] const TriangleVertex& cornerOf(End end) const;
    void sortEnds();
    void take(End start);

    std::vector<BoundaryEdge> edgeList;
    std::vector<bool> isTaken;  // for each edge
    // All ends by corner, for each corner the lower ends before the upper ends, each in the order of the list.
    std::vector<End> ends;
    std::vector<std::uint32_t> cornerNumbers;  // for each end, by End; equal corners have the same number
    // For each corner and direction: index in `ends` before which no edge is left to take.
    std::vector<std::uint32_t> cursors;
    std::size_t left;
    std::uint32_t current = 0;  // number of the corner at which the last edge ended
};

}  // namespace quarn::detail
