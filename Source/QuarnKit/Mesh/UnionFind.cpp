#include "UnionFind.h"

#include <numeric>
#include <utility>

namespace quarn {

Groups::Groups(std::size_t members) : parents(members), sizes(members, 1), differs(members) {
    std::iota(parents.begin(), parents.end(), 0U);
}

std::uint32_t Groups::groupOf(std::uint32_t member) {
    std::uint32_t root = member;
    bool isDifferent = false;
    while (parents[root] != root) {
        isDifferent = isDifferent != differs[root];
        root = parents[root];
    }
    // All on the way get a short one, with their sides seen from the root.
    while (parents[member] != root && member != root) {
        const std::uint32_t next = parents[member];
        const bool fromParent = differs[member];
        parents[member] = root;
        differs[member] = isDifferent;
        isDifferent = isDifferent != fromParent;
        member = next;
    }
    return root;
}

bool Groups::join(std::uint32_t a, std::uint32_t b, bool isSideDifferent) {
    std::uint32_t rootA = groupOf(a);
    std::uint32_t rootB = groupOf(b);
    const bool isDifferent = (sideOf(a) != sideOf(b)) != isSideDifferent;
    if (rootA == rootB) return !isDifferent;
    if (sizes[rootA] < sizes[rootB]) std::swap(rootA, rootB);
    parents[rootB] = rootA;
    differs[rootB] = isDifferent;
    sizes[rootA] += sizes[rootB];
    return true;
}

}  // namespace quarn
