#include "NearestCentroidSearch.h"

#include <algorithm>
#include <limits>

namespace quarn::detail {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Ties that are resolved in any case, and the groups of centroids that pay for a further one.
constexpr std::size_t kFreeTies = 32;
constexpr std::size_t kGroupsPerTie = 8;

// Ratio of the lengths of a box after and before its rounding to floats, above which it separates
// too few centroids.
constexpr double kMaxCoarseness = 4.0;

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
    // True if rounding makes the box several times longer, as far from the origin.
    [[nodiscard]] bool isCoarseAs(const FloatBox& box) const {
        double longest = 0.0;
        double roundedLongest = 0.0;
        for (std::size_t i = 0; i < 3; ++i) {
            longest = std::max(longest, upper[i] - lower[i]);
            roundedLongest = std::max(roundedLongest, double{box.upper[i]} - double{box.lower[i]});
        }
        return longest > 0.0 && !(roundedLongest <= kMaxCoarseness * longest);
    }
};

// The nearest centroid so far. Each tie costs a descent of the tree, while the walk of the tree
// skips equally near centroids. So the ties since the last nearer centroid are limited.
class Best {
public:
    void test(double squared, std::uint32_t slot, const CentroidTree& tree, const Point<double, 3>& point) {
        if (squared < minSquared) {
            minSquared = squared;
            best = slot;
            ties = 0;
        } else if (best != TriangleBuckets::kNoSlot) {
            ++ties;
            if (tree.isMetBefore(slot, best, point)) best = slot;
        }
    }
    // Returns false, and ends the search, if the walk is faster.
    [[nodiscard]] bool mayTestGroup() {
        if (ties > kFreeTies + groups / kGroupsPerTie) minSquared = -1.0;
        ++groups;
        return !isGivenUp();
    }
    [[nodiscard]] bool isGivenUp() const { return minSquared < 0.0; }
    [[nodiscard]] const double& squared() const { return minSquared; }
    [[nodiscard]] std::uint32_t slot() const { return best; }

private:
    double minSquared = std::numeric_limits<double>::max();
    std::uint32_t best = TriangleBuckets::kNoSlot;
    std::size_t ties = 0;
    std::size_t groups = 0;
};

}  // namespace

void NearestCentroidSearch::build(const CentroidTree& tree, const TriangleBuckets& buckets) {
    groups.clear();
    groups.resize(buckets.groupCount());
    std::vector<FloatBox> boxOfBucket;
    boxOfBucket.reserve(buckets.size());
    std::size_t coarseBoxes = 0;
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
        if (extent.isCoarseAs(boxOfBucket.back())) ++coarseBoxes;
    }
    boxes.build(boxOfBucket);
    haveBoxesEffect = 2 * coarseBoxes <= buckets.size();
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
    if (!haveBoxesEffect) return tree.findNearest(point);
    Best best;
    boxes.visitNear(point, best.squared(), [&](std::size_t bucket) {
        const TriangleBuckets::Range range = buckets.groupsOf(bucket);
        for (std::size_t group = range.first; group < range.last && best.mayTestGroup(); ++group) {
            const std::array<double, kLanes> squared = groups[group].squaredDistances(point);
            for (std::size_t lane = 0; lane < kLanes; ++lane)
                if (squared[lane] <= best.squared())
                    best.test(squared[lane], buckets.slotAt(group, lane), tree, point);
        }
    });
    if (best.isGivenUp()) return tree.findNearest(point);
    return best.slot() == TriangleBuckets::kNoSlot ? nullptr : tree.valueAt(best.slot());
}

}  // namespace quarn::detail
