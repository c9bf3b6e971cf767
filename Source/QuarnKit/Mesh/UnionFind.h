/// \file
/// Triangles in groups that hang together.
#pragma once

#include <cstdint>
#include <vector>

namespace quarn {

/// Disjoint groups of numbered members that can be joined. Each member has a side, 0 or 1, within its group.
class UnionFind {
public:
    explicit UnionFind(std::size_t members);

    /// Joins the groups of two members, which get sides that differ or not. False where they were in one group already
    /// with sides that say otherwise.
    bool unite(std::uint32_t a, std::uint32_t b, bool isParityDifferent = false);

    /// The member that stands for the group.
    [[nodiscard]] std::uint32_t findRoot(std::uint32_t member);
    /// \pre findRoot() has been asked for the member since the last unite
    [[nodiscard]] bool parityOf(std::uint32_t member) const { return parities[member]; }

private:
    std::vector<std::uint32_t> parents;
    std::vector<std::uint32_t> sizes;
    std::vector<bool> parities;  // by member: whether its side is not that of its parent
};

}  // namespace quarn
