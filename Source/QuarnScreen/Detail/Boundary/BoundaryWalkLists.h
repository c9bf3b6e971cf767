/// \file
/// The boundary edges of a mesh, sorted for a walk along them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "BoundaryEdge.h"

namespace quarn::detail {

/// The boundary edges of a mesh. Each edge can be taken once, from either end.
///
/// If several edges start at a corner, the first one of the list is taken first. Corners are the
/// same if position and UV are equal exactly. No corner may have a NaN.
///
/// Taking all e edges costs O(e log e), most of it in the constructor.
class BoundaryWalkLists {
public:
    /// \param triangles must outlive this object
    /// \param edges numbers of edges as findBoundaryEdges() returns them
    BoundaryWalkLists(const std::vector<Triangle>& triangles, const std::vector<std::uint32_t>& edges);

    /// Returns the number of edges that have not been taken. Each of them can be taken in both
    /// directions.
    [[nodiscard]] std::size_t count(WalkDirection) const { return left; }

    /// Takes the edge with the smallest lower end; of several, the first one of the list.
    /// \pre there is an edge, and none has been taken
    BoundaryEdge takeFirst();

    /// Takes the first edge that starts where the last one ended.
    /// \return the step; nothing if there is no such edge
    std::optional<BoundaryStep> takeNext(WalkDirection direction);

private:
    // An end of an edge: twice the index of the edge in the list, plus one for the upper end.
    using End = std::uint32_t;

    [[nodiscard]] const TriangleVertex& cornerOf(End end) const;
    void sortEnds();
    void take(End start);

    std::vector<BoundaryEdge> edgeList;
    std::vector<bool> isTaken;  // for each edge
    // All ends by corner. The lower ends of a corner precede its upper ends, both in list order.
    std::vector<End> ends;
    std::vector<std::uint32_t> cornerNumbers;  // by End; equal corners share a number
    // For each corner and direction: an index in `ends` before which all edges have been taken.
    std::vector<std::uint32_t> cursors;
    std::size_t left;
    std::uint32_t current = 0;  // corner number at which the last edge ended
};

}  // namespace quarn::detail
