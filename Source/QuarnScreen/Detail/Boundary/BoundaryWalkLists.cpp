#include "BoundaryWalkLists.h"

#include <algorithm>
#include <numeric>

#include <Common/Detail/Assert.h>

namespace {

bool isUpperEnd(std::uint32_t end) {
    return end % 2 != 0;
}

// Two cursors for each corner: over its lower ends, and over its upper ends.
enum class EndKind : std::size_t { Lower = 0, Upper = 1 };

std::size_t cursorIndex(std::uint32_t corner, EndKind kind) {
    return std::size_t{corner} * 2 + static_cast<std::size_t>(kind);
}

}  // namespace

namespace quarn::detail {

BoundaryWalkLists::BoundaryWalkLists(const std::vector<Triangle>& triangles,
                                     const std::vector<std::uint32_t>& edges)
    : isTaken(edges.size()), left(edges.size()) {
    edgeList.reserve(edges.size());
    for (const std::uint32_t edge : edges) edgeList.push_back(boundaryEdge(triangles[edge / 3], edge % 3));
    sortEnds();

    // Number the corners, and set the cursors of each corner to its first ends.
    cornerNumbers.resize(ends.size());
    for (std::size_t i = 0; i < ends.size(); ++i) {
        const bool isNew = i == 0 || !isSameCorner(cornerOf(ends[i - 1]), cornerOf(ends[i]));
        if (isNew) cursors.insert(cursors.end(), 2, static_cast<std::uint32_t>(i));
        const auto corner = static_cast<std::uint32_t>(cursors.size() / 2 - 1);
        cornerNumbers[ends[i]] = corner;
        if (!isUpperEnd(ends[i]))
            cursors[cursorIndex(corner, EndKind::Upper)] = static_cast<std::uint32_t>(i + 1);
    }
}

const TriangleVertex& BoundaryWalkLists::cornerOf(End end) const {
    const BoundaryEdge& edge = edgeList[end / 2];
    return isUpperEnd(end) ? *edge.upper : *edge.lower;
}

void BoundaryWalkLists::sortEnds() {
    ends.resize(edgeList.size() * 2);
    std::iota(ends.begin(), ends.end(), End{0});
    std::sort(ends.begin(), ends.end(), [this](End a, End b) {
        const TriangleVertex& first = cornerOf(a);
        const TriangleVertex& second = cornerOf(b);
        if (!isSameCorner(first, second)) return isLesserCorner(first, second);
        return isUpperEnd(a) != isUpperEnd(b) ? isUpperEnd(b) : a < b;
    });
}

BoundaryEdge BoundaryWalkLists::takeFirst() {
    QUARN_ASSERT(left != 0 && left == edgeList.size());
    // This is a lower end: the smallest corner is an upper end only of edges from itself to itself.
    take(ends.front());
    return edgeList[ends.front() / 2];
}

std::optional<BoundaryStep> BoundaryWalkLists::takeNext(WalkDirection direction) {
    const bool fromUpperEnds = direction == WalkDirection::Down;
    std::uint32_t& cursor = cursors[cursorIndex(current, fromUpperEnds ? EndKind::Upper : EndKind::Lower)];
    for (; cursor < ends.size(); ++cursor) {
        const End start = ends[cursor];
        if (cornerNumbers[start] != current || isUpperEnd(start) != fromUpperEnds) break;
        if (isTaken[start / 2]) continue;
        take(start);
        const BoundaryEdge& edge = edgeList[start / 2];
        return BoundaryStep{fromUpperEnds ? edge.lower : edge.upper, edge.triangle};
    }
    return std::nullopt;
}

void BoundaryWalkLists::take(End start) {
    constexpr End kOtherEnd = 1;
    isTaken[start / 2] = true;
    --left;
    current = cornerNumbers[start ^ kOtherEnd];
}

}  // namespace quarn::detail
