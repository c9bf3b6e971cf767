#include "NearestCentroidSearch.h"

#include <algorithm>
#include <limits>

namespace quarn::detail {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Bounds in double precision.
struct Extent {
    std::array<double, 3> lower = {kInfinity, kInfinity, kInfinity};
    std::array<double, 3> upper = {-kInfinity, -kInfinity, -kInfinity};

    void include(const std::array<double, 3>& position) {
        for (std::size_t i = 0; i < 3; ++i) {
            lower[i] = std::min(lower[i], position[i]);
            upper[i] = std::max(upper[i], position[i]);
        }
    }
    [[nodiscard]] FloatBox rounded() const {
        return {{roundedDown(lower[0]), roundedDown(lower[1]), roundedDown(lower[2])},
                {roundedUp(upper[0]), roundedUp(upper[1]), roundedUp(upper[2])}};
    }
};

// The nearest centroid so far.
struct Best {
    double squared = std::numeric_limits<double>::max();
    std::uint32_t slot = TriangleBuckets::kNoSlot;
};

}  // namespace

void NearestCentroidSearch::build(const CentroidTree& tree, const TriangleBuckets& buckets) {
    groups.clear();
    groups.resize(buckets.groupCount());
    std::vector<FloatBox> boxOfBucket;
    boxOfBucket.reserve(buckets.size());
    for (std::size_t bucket = 0; bucket < buckets.size(); ++bucket) {
        Extent extent;
        const TriangleBuckets::Range range = buckets.groupsOf(bucket);
        for (std::size_t group = range.first; group < range.last; ++group) {
            for (std::size_t lane = 0; lane < kLanes; ++lane) {
                std::array<double, 3> position = {kInfinity, kInfinity, kInfinity};
                if (const std::uint32_t slot = buckets.slotAt(group, lane);
                    slot != TriangleBuckets::kNoSlot) {
                    position = tree.keyAt(slot);
                    extent.include(position);
                }
                for (std::size_t axis = 0; axis < 3; ++axis)
                    groups[group].coordinates[axis][lane] = position[axis];
            }
        }
        boxOfBucket.push_back(extent.rounded());
    }
    boxes.build(boxOfBucket);
}

// The same operations in the same order as in CentroidTree::squaredDistance().
std::array<double, kLanes> NearestCentroidSearch::Centroids::squaredDistances(
    const Point<double, 3>& point) const {
    const double x = point[0];
    const double y = point[1];
    const double z = point[2];
    std::array<double, kLanes> squared{};
    for (std::size_t i = 0; i < kLanes; ++i) {
        const double differenceX = x - coordinates[0][i];
        const double differenceY = y - coordinates[1][i];
        const double differenceZ = z - coordinates[2][i];
        squared[i] = differenceX * differenceX + differenceY * differenceY + differenceZ * differenceZ;
    }
    return squared;
}

const Triangle* NearestCentroidSearch::find(const CentroidTree& tree, const TriangleBuckets& buckets,
                                            const Point<double, 3>& point) const {
    Best best;
    const auto test = [&](double squared, std::uint32_t slot) {
        const bool isTied = squared == best.squared;
        if (isTied && (best.slot == TriangleBuckets::kNoSlot || !tree.isMetBefore(slot, best.slot, point)))
            return;
        best = {squared, slot};
    };
    boxes.visitNear(point, best.squared, [&](std::size_t bucket) {
        const TriangleBuckets::Range range = buckets.groupsOf(bucket);
        for (std::size_t group = range.first; group < range.last; ++group) {
            const std::array<double, kLanes> squared = groups[group].squaredDistances(point);
            for (std::size_t lane = 0; lane < kLanes; ++lane)
                if (squared[lane] <= best.squared) test(squared[lane], buckets.slotAt(group, lane));
        }
    });
    return best.slot == TriangleBuckets::kNoSlot ? nullptr : tree.valueAt(best.slot);
}

}  // namespace quarn::detail
