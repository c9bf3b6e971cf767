/// \file
/// Triangles in groups that hang together.
#pragma once

#include <cstdint>
#include <vector>

namespace quarn {

/// Disjoint groups of numbered members that can be joined. Each member has a side, 0 or 1, within its group.
class Groups {
public:
    explicit Groups(std::size_t members);

    /// Joins the groups of two members, which get sides that differ or not. False where they were in one group already
    /// with sides that say otherwise.
    bool join(std::uint32_t a, std::uint32_t b, bool isSideDifferent = false);

    /// The member that stands for the group.
    [[nodiscard]] std::uint32_t groupOf(std::uint32_t member);
    /// \pre groupOf() has been asked for the member since the last join
    [[nodiscard]] bool sideOf(std::uint32_t member) const { return differs[member]; }

private:
    std::vector<std::uint32_t> parents;
    std::vector<std::uint32_t> sizes;
    std::vector<bool> differs;  // by member: whether its side is not that of its parent
};

}  // namespace quarn
