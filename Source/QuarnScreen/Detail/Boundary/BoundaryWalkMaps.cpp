#include "BoundaryWalkMaps.h"

#include <algorithm>

#include <Common/Detail/Assert.h>

namespace quarn::detail {

BoundaryWalkMaps::BoundaryWalkMaps(const std::vector<Triangle>& triangles) {
    for (const Triangle& triangle : triangles)
        for (std::size_t corner = 0; corner < 3; ++corner) toggle(boundaryEdge(triangle, corner));
}

BoundaryWalkMaps::Map::iterator BoundaryWalkMaps::find(Map& map, const TriangleVertex& start,
                                                       const TriangleVertex& end) {
    const auto [first, last] = map.equal_range(&start);
    const auto found = std::find_if(first, last, [&](const Map::value_type& entry) {
        return isSameCorner(*entry.first, start) && isSameCorner(*entry.second.end, end);
    });
    return found == last ? map.end() : found;
}

void BoundaryWalkMaps::eraseIfPresent(Map& map, const TriangleVertex& start, const TriangleVertex& end) {
    const auto found = find(map, start, end);
    if (found != map.end()) map.erase(found);
}

const BoundaryWalkMaps::Map& BoundaryWalkMaps::mapOf(WalkDirection direction) const {
    return direction == WalkDirection::Up ? lowerToUpper : upperToLower;
}

void BoundaryWalkMaps::toggle(const BoundaryEdge& edge) {
    const auto found = find(lowerToUpper, *edge.lower, *edge.upper);
    if (found != lowerToUpper.end()) {
        lowerToUpper.erase(found);
        eraseIfPresent(upperToLower, *edge.upper, *edge.lower);
        return;
    }
    lowerToUpper.emplace(edge.lower, BoundaryStep{edge.upper, edge.triangle});
    upperToLower.emplace(edge.upper, BoundaryStep{edge.lower, edge.triangle});
}

BoundaryEdge BoundaryWalkMaps::takeFirst() {
    QUARN_ASSERT(!lowerToUpper.empty() && current == nullptr);
    const auto first = lowerToUpper.begin();
    const TriangleVertex* const lower = first->first;
    const BoundaryStep step = take(WalkDirection::Up, first);
    return {lower, step.end, step.triangle};
}

std::optional<BoundaryStep> BoundaryWalkMaps::takeNext(WalkDirection direction) {
    Map& map = direction == WalkDirection::Up ? lowerToUpper : upperToLower;
    const auto found = map.lower_bound(current);
    if (found == map.end() || !isSameCorner(*found->first, *current)) return std::nullopt;
    return take(direction, found);
}

BoundaryStep BoundaryWalkMaps::take(WalkDirection direction, Map::iterator found) {
    const bool isUp = direction == WalkDirection::Up;
    const BoundaryStep step = found->second;
    eraseIfPresent(isUp ? upperToLower : lowerToUpper, *step.end, *found->first);
    (isUp ? lowerToUpper : upperToLower).erase(found);
    current = step.end;
    return step;
}

}  // namespace quarn::detail
