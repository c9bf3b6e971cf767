#include "BoxTree.h"

namespace quarn::detail {
namespace {

// Returns the nodes above a sequence of boxes.
std::vector<FourBoxes> nodesAbove(const std::vector<FloatBox>& boxes) {
    std::vector<FourBoxes> nodes((boxes.size() + kLanes - 1) / kLanes, FourBoxes::nowhere());
    for (std::size_t i = 0; i < boxes.size(); ++i) nodes[i / kLanes].set(i % kLanes, boxes[i]);
    return nodes;
}

}  // namespace

void BoxTree::build(const std::vector<FloatBox>& boxes) {
    nodes.clear();
    levelCount = 0;
    if (boxes.empty()) return;
    // From the bottom to the top.
    std::vector<std::vector<FourBoxes>> levels = {nodesAbove(boxes)};
    while (levels.back().size() > 1) {
        std::vector<FloatBox> wholes;
        wholes.reserve(levels.back().size());
        for (const FourBoxes& node : levels.back()) wholes.push_back(node.whole());
        levels.push_back(nodesAbove(wholes));
    }
    std::reverse(levels.begin(), levels.end());
    // After this, nothing allocates memory: no level may remain without its nodes.
    std::size_t count = 0;
    for (const std::vector<FourBoxes>& level : levels) count += level.size();
    nodes.reserve(count);
    for (const std::vector<FourBoxes>& level : levels) {
        starts[levelCount++] = nodes.size();
        nodes.insert(nodes.end(), level.begin(), level.end());
    }
}

}  // namespace quarn::detail
