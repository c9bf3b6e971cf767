/// \file
/// The boundary edges of a mesh in two multimaps, for meshes with NaN coordinates.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <vector>

#include "BoundaryEdge.h"

namespace quarn::detail {

/// The edges that an odd number of triangles share, in two ordered multimaps: from the lower to the
/// upper end of each edge, and in the opposite direction.
///
/// NaN is equal to nothing and breaks the order of corners: a map's key that is neither less nor
/// greater than a corner may differ from it. A key is therefore also compared for equality. For a
/// mesh with NaN the result depends on the exact comparisons of the maps. Without NaN the result is
/// that of findBoundaryEdges() and BoundaryWalkLists, at several times the time and memory.
class BoundaryWalkMaps {
public:
    /// \param triangles must outlive this object
    explicit BoundaryWalkMaps(const std::vector<Triangle>& triangles);

    /// Returns the number of edges in the map of a direction.
    [[nodiscard]] std::size_t count(WalkDirection direction) const { return mapOf(direction).size(); }

    /// Takes the edge with the smallest lower end; of several, the first one that was added.
    /// \pre there is an edge, and none has been taken
    BoundaryEdge takeFirst();

    /// Takes the first edge that starts where the last one ended.
    /// \return the step; nothing if there is no such edge
    std::optional<BoundaryStep> takeNext(WalkDirection direction);

private:
    struct IsLesser {
        bool operator()(const TriangleVertex* a, const TriangleVertex* b) const {
            return isLesserCorner(*a, *b);
        }
    };
    // Maps one end of an edge to the step to its other end.
    using Map = std::multimap<const TriangleVertex*, BoundaryStep, IsLesser>;

    static Map::iterator find(Map& map, const TriangleVertex& start, const TriangleVertex& end);
    static void eraseIfPresent(Map& map, const TriangleVertex& start, const TriangleVertex& end);
    [[nodiscard]] const Map& mapOf(WalkDirection direction) const;
    void toggle(const BoundaryEdge& edge);
    BoundaryStep take(WalkDirection direction, Map::iterator found);

    Map lowerToUpper;
    Map upperToLower;
    const TriangleVertex* current = nullptr;  // where the last edge ended
};

}  // namespace quarn::detail
