/// \file
/// Bounds of the positions that triangles can contain.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Boxes/BoxTree.h"
#include "Boxes/OccupancyGrid.h"
#include "DelayedVisits.h"
#include "TriangleBuckets.h"

namespace quarn::detail {

/// One box for each triangle of a mesh, below a tree of the boxes of each bucket. No triangle
/// contains a position outside of its box.
///
/// The boxes are conservative: they include the tolerances of testContainment() and rounding
/// errors. A triangle with inconsistent fields, or too large or too thin for the margins, has an
/// infinite box. A triangle that contains nothing has an empty box.
class ContainmentBounds {
public:
    /// Builds the boxes of a tree over \p triangles. The tree and the buckets are those of every
    /// search.
    void build(const CentroidTree& tree, const TriangleBuckets& buckets,
               const std::vector<Triangle>& triangles);

    /// Calls `visit(slot)` for each triangle that may contain a position, in unspecified order.
    template <class Visit>
    void visitCandidates(const TriangleBuckets& buckets, const Point<double, 3>& point, Visit&& visit) const;

private:
    // A position is in the boxes of two or three buckets.
    static constexpr std::size_t kBucketsAhead = 8;

    template <class Visit>
    void visitBucket(const TriangleBuckets& buckets, std::size_t bucket, const FloatPosition& position,
                     Visit& visit) const;
    void prefetch(const TriangleBuckets::Range& range) const {
        for (std::size_t group = range.first; group < range.last; ++group) {
            __builtin_prefetch(&groups[group].lower);
            __builtin_prefetch(&groups[group].upper);
        }
    }

    std::vector<FourBoxes> groups;  // of the triangles
    BoxTree bucketBoxes;
    OccupancyGrid grid;  // of the buckets
};

// The boxes of triangles are far apart in memory, so prefetch those of the first buckets before any
// is tested.
template <class Visit>
void ContainmentBounds::visitCandidates(const TriangleBuckets& buckets, const Point<double, 3>& point,
                                        Visit&& visit) const {
    const FloatPosition position(point);
    if (!grid.mayContain(position)) return;
    DelayedVisits<kBucketsAhead> ahead;
    const auto test = [&](std::uint32_t bucket) { visitBucket(buckets, bucket, position, visit); };
    bucketBoxes.visitContaining(position, [&](std::uint32_t bucket) {
        prefetch(buckets.groupsOf(bucket));
        ahead.add(bucket, test);
    });
    ahead.visitAll(test);
}

template <class Visit>
void ContainmentBounds::visitBucket(const TriangleBuckets& buckets, std::size_t bucket,
                                    const FloatPosition& position, Visit& visit) const {
    const TriangleBuckets::Range range = buckets.groupsOf(bucket);
    for (std::size_t group = range.first; group < range.last; ++group) {
        groups[group].lanesAround(position).forEach(
            [&](std::size_t lane) { visit(buckets.slotAt(group, lane)); });
    }
}

}  // namespace quarn::detail
