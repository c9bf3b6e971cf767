/// \file
/// Distances from positions to a surface, within limits of work.
#pragma once

#include <cstdint>
#include <vector>

#include "TriangleTree.h"

namespace quarn {

/// A position on one surface, and the nearest triangle of the other.
struct MeasuredPosition {
    Point<double, 3> position;
    TriangleTree::Nearest nearest{TriangleTree::kNone, 0.0, 0.0};
};

/// Measures positions, and counts the work. A distance is exact unless many triangles are about
/// equally near: then it is as accurate as the limits require, and the result of a position near by
/// may be enough. After a number of visits in total, only the next triangles are searched;
/// `distance` and `minDistance` remain bounds. Not safe on several threads.
class PositionMeter {
public:
    /// \param newTotalVisits number of visits of tree nodes after which searches are coarse
    PositionMeter(const TriangleTree& surface, const TriangleTree::SearchLimits& searchLimits,
                  std::uint64_t newTotalVisits)
        : measuringTree(surface), limits(searchLimits), totalVisits(newTotalVisits) {}

    /// Finds the nearest triangle of a position.
    /// \param hint as for TriangleTree::nearest()
    [[nodiscard]] MeasuredPosition measure(const Point<double, 3>& position, std::uint32_t hint);

    [[nodiscard]] const TriangleTree& tree() const { return measuringTree; }
    [[nodiscard]] std::uint64_t visitCount() const { return visits; }

private:
    // Returns bounds that follow from the last position with a long search.
    [[nodiscard]] MeasuredPosition measureFromLast(const Point<double, 3>& position) const;
    [[nodiscard]] bool isAccurate(const TriangleTree::Nearest& nearest) const;

    const TriangleTree& measuringTree;
    TriangleTree::SearchLimits limits;
    std::uint64_t totalVisits;
    std::uint64_t visits = 0;
    MeasuredPosition last;  // the last one with a long search
};

/// Measures positions and caches some of them, because triangles share their corners. Not safe on
/// several threads.
class PositionCache {
public:
    explicit PositionCache(PositionMeter& positionMeter) : meter(positionMeter), slots(kSlots) {}

    [[nodiscard]] const MeasuredPosition& measure(const Point<double, 3>& position);

private:
    static constexpr std::size_t kSlots = 1U << 13U;

    PositionMeter& meter;
    std::vector<MeasuredPosition> slots;
    std::uint32_t hint = TriangleTree::kNone;
};

}  // namespace quarn
