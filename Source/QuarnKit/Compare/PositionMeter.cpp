#include "PositionMeter.h"

#include <algorithm>
#include <cmath>

#include <QuarnKit/Base/Hash.h>

namespace quarn {

namespace {

// Visits of a search after the total is used up: about two descents from the root to a leaf.
constexpr std::uint64_t kCoarseVisits = 64;
// Tolerance of a result that follows from another position, as a multiple of that of a search.
constexpr double kReuseFactor = 2.0;

}  // namespace

bool PositionMeter::isAccurate(const TriangleTree::Nearest& nearest) const {
    const double tolerance = std::max(limits.tolerance, limits.relativeTolerance * nearest.distance);
    return nearest.distance - nearest.minDistance <= kReuseFactor * tolerance;
}

// Between two positions the distance changes by at most the length of the path between them.
MeasuredPosition PositionMeter::measureFromLast(const Point<double, 3>& position) const {
    const double path = length(position - last.position);
    return {position,
            {last.nearest.index, measuringTree.distanceTo(last.nearest.index, position),
             std::max(last.nearest.minDistance - path, 0.0)}};
}

MeasuredPosition PositionMeter::measure(const Point<double, 3>& position, std::uint32_t hint) {
    if (last.nearest.index != TriangleTree::kNone) {
        const MeasuredPosition measured = measureFromLast(position);
        if (isAccurate(measured.nearest)) return measured;
    }
    if (visits >= totalVisits) limits.maxVisits = kCoarseVisits;
    const std::uint64_t before = visits;
    const MeasuredPosition measured{position, measuringTree.nearest(position, hint, limits, visits)};
    if (visits - before > limits.exactVisits) last = measured;
    return measured;
}

const MeasuredPosition& PositionCache::measure(const Point<double, 3>& position) {
    MeasuredPosition& slot = slots[bitHashOf<3>(position) % kSlots];
    if (slot.nearest.index == TriangleTree::kNone || slot.position != position)
        slot = meter.measure(position, hint);
    hint = slot.nearest.index;
    return slot;
}

}  // namespace quarn
