#include "FirstVisit.h"

namespace quarn::detail {
namespace {

// Subtrees of at most so many nodes are a few cache lines.
constexpr std::size_t kMaxSubtree = 15;

}  // namespace

void FirstVisit::build(const CentroidTree& tree) {
    planes.clear();
    levelCount = 0;
    const std::size_t levels = levelOfSubtrees(tree.size(), kMaxSubtree);
    planes.resize((std::size_t{1} << levels) - 1);
    levelCount = levels;
    const auto copy = [&](const auto& self, const CentroidTree::Subtree& subtree, std::size_t axis,
                          std::size_t plane) -> void {
        if (plane >= planes.size()) return;
        planes[plane] = tree.keyAt(subtree.slot)[axis];
        self(self, subtree.left(), nextAxis(axis), 2 * plane + 1);
        self(self, subtree.right(), nextAxis(axis), 2 * plane + 2);
    };
    copy(copy, tree.whole(), 0, 0);
}

}  // namespace quarn::detail
