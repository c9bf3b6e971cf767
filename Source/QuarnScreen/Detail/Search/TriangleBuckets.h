/// \file
/// Small groups of triangles that lie together.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "Boxes/FourBoxes.h"
#include "TriangleTrees.h"

namespace quarn::detail {

/// The slots of a centroid tree in buckets, each of neighbors in space. Neighbors in the sequence
/// of buckets are neighbors in space, too.
///
/// A bucket contains a subtree of the centroid tree and those slots above it that lie in the
/// subtree's part of space.
class TriangleBuckets {
public:
    /// Fills the last group of a bucket.
    static constexpr std::uint32_t kNoSlot = std::numeric_limits<std::uint32_t>::max();

    /// Slots in groups of kLanes. A bucket is a range of groups.
    struct Range {
        std::size_t first;
        std::size_t last;  ///< Exclusive.
    };

    /// Rebuilds the buckets of a tree. O(n log n), with few steps per slot.
    void build(const CentroidTree& tree);

    /// Returns the number of buckets.
    [[nodiscard]] std::size_t size() const { return starts.empty() ? 0 : starts.size() - 1; }
    /// Returns the number of groups of all buckets.
    [[nodiscard]] std::size_t groupCount() const { return slots.size() / kLanes; }
    /// Returns the groups of a bucket.
    [[nodiscard]] Range groupsOf(std::size_t bucket) const { return {starts[bucket], starts[bucket + 1]}; }
    /// Returns a slot of a group, or kNoSlot.
    [[nodiscard]] std::uint32_t slotAt(std::size_t group, std::size_t lane) const {
        return slots[group * kLanes + lane];
    }

private:
    void fill(const CentroidTree& tree, const CentroidTree::Subtree& subtree, std::size_t axis,
              std::size_t levels, std::size_t firstAbove);
    void closeBucket();

    std::vector<std::uint32_t> slots;
    std::vector<std::uint32_t> starts;  // of the buckets, and the end
    std::vector<std::uint32_t> above;   // during a build: slots that no bucket contains yet
};

}  // namespace quarn::detail
