#include "TriangleBuckets.h"

#include <algorithm>
#include <numeric>

namespace quarn::detail {
namespace {

// Largest subtree that is not divided. With fewer triangles per bucket, the tree above the buckets
// is larger; with more, a search tests more triangles in vain.
constexpr std::size_t kMaxSubtree = 15;

}  // namespace

void TriangleBuckets::build(const CentroidTree& tree) {
    slots.clear();
    starts.clear();
    above.clear();
    if (tree.size() == 0) return;
    const std::size_t levels = levelOfSubtrees(tree.size(), kMaxSubtree);
    starts.reserve((std::size_t{1} << levels) + 1);
    slots.reserve(tree.size() + tree.size() / 4 + kLanes);
    starts.push_back(0);
    fill(tree, tree.whole(), 0, levels, 0);
}

// Takes the last ones of `above`, beginning with `firstAbove`, along.
void TriangleBuckets::fill(const CentroidTree& tree, const CentroidTree::Subtree& subtree, std::size_t axis,
                           std::size_t levels, std::size_t firstAbove) {
    const auto first = above.begin() + static_cast<std::ptrdiff_t>(firstAbove);
    if (levels == 0) {
        const std::size_t start = slots.size();
        slots.resize(start + subtree.size);
        std::iota(slots.begin() + static_cast<std::ptrdiff_t>(start), slots.end(),
                  static_cast<std::uint32_t>(subtree.slot));
        slots.insert(slots.end(), first, above.end());
        above.erase(first, above.end());
        closeBucket();
        return;
    }
    const double split = tree.keyAt(subtree.slot)[axis];
    const auto firstLeft = std::partition(
        first, above.end(), [&](std::uint32_t slot) { return !(tree.keyAt(slot)[axis] < split); });
    const std::size_t nextAxis = axis == 2 ? 0 : axis + 1;
    fill(tree, subtree.left(), nextAxis, levels - 1, static_cast<std::size_t>(firstLeft - above.begin()));
    above.push_back(static_cast<std::uint32_t>(subtree.slot));
    fill(tree, subtree.right(), nextAxis, levels - 1, firstAbove);
}

void TriangleBuckets::closeBucket() {
    slots.resize((slots.size() + kLanes - 1) / kLanes * kLanes, kNoSlot);
    starts.push_back(static_cast<std::uint32_t>(slots.size() / kLanes));
}

}  // namespace quarn::detail
