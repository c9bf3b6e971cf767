/// \file
/// The edges of an outline in two multimaps, for meshes with coordinates that are not numbers.
#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <vector>

#include "BoundaryEdge.h"

namespace quarn::detail {

/// The edges with an odd number of triangles, found and kept in two ordered multimaps, from the lower to the
/// upper end of each edge and the other way round.
///
/// A NaN agrees with nothing and breaks the order of corners. What becomes of it depends on the very
/// comparisons that the maps make, and on nothing else. Without a NaN it gives what findBoundaryEdges() and
/// BoundaryEdgeLists give, for several times the time and memory.
class BoundaryEdgeMaps {
public:
    /// \param triangles must outlive this object
    explicit BoundaryEdgeMaps(const std::vector<Triangle>& triangles);

    /// Edges that are left in the map of a direction.
    [[nodiscard]] std::size_t count(WalkDirection direction) const { return mapOf(direction).size(); }

    /// The edge whose lower end is least, the first of the list if there are several.
    /// \pre there is an edge, and none has been taken.
    BoundaryEdge takeFirst();

    /// Takes the first edge that leads on from where the last one ended; nothing if there is none.
    std::optional<BoundaryStep> takeNext(WalkDirection direction);

private:
    struct IsLesser {
        bool operator()(const TriangleVertex* a, const TriangleVertex* b) const {
            return isLesserCorner(*a, *b);
        }
    };
    // From one end to the other.
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
