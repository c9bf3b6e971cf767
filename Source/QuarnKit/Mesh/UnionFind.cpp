#include "UnionFind.h"

#include <numeric>
#include <utility>

namespace quarn {

UnionFind::UnionFind(std::size_t members) : parents(members), sizes(members, 1), parities(members) {
    std::iota(parents.begin(), parents.end(), 0U);
}

std::uint32_t UnionFind::findRoot(std::uint32_t member) {
    std::uint32_t root = member;
    bool parity = false;
    while (parents[root] != root) {
        parity = parity != parities[root];
        root = parents[root];
    }
    // Compress the path: attach its members to the root, with their parities relative to it.
    while (parents[member] != root && member != root) {
        const std::uint32_t next = parents[member];
        const bool fromParent = parities[member];
        parents[member] = root;
        parities[member] = parity;
        parity = parity != fromParent;
        member = next;
    }
    return root;
}

bool UnionFind::unite(std::uint32_t a, std::uint32_t b, Parity parity) {
    std::uint32_t rootA = findRoot(a);
    std::uint32_t rootB = findRoot(b);
    const bool isOdd = (parityOf(a) != parityOf(b)) != (parity == Parity::Different);
    if (rootA == rootB) return !isOdd;
    if (sizes[rootA] < sizes[rootB]) std::swap(rootA, rootB);
    parents[rootB] = rootA;
    parities[rootB] = isOdd;
    sizes[rootA] += sizes[rootB];
    return true;
}

}  // namespace quarn
