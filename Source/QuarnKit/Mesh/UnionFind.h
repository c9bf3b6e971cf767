/// \file
/// Union-find with parity.
#pragma once

#include <cstdint>
#include <vector>

#include <Common/Detail/Assert.h>

namespace quarn {

/// Whether two members of a set are on the same side of it.
enum class Parity { Same, Different };

/// Disjoint sets of members, numbered from 0, which can be joined. Each member has a parity, its
/// side within its set. Not safe on several threads.
class UnionFind {
public:
    /// Creates \p members sets of one member each.
    explicit UnionFind(std::size_t members);

    /// Joins the sets of two members and gives the members the same or different parities.
    /// \return false if they already were in one set, with parities that contradict \p parity
    bool unite(std::uint32_t a, std::uint32_t b, Parity parity = Parity::Same);

    /// Returns the member that represents the set.
    [[nodiscard]] std::uint32_t findRoot(std::uint32_t member);
    /// Returns the parity of a member relative to the root of its set.
    /// \pre findRoot() was called for the member after the last unite()
    [[nodiscard]] bool parityOf(std::uint32_t member) const {
        QUARN_ASSERT(parents[parents[member]] == parents[member]);
        return parities[member];
    }

private:
    std::vector<std::uint32_t> parents;
    std::vector<std::uint32_t> sizes;
    std::vector<bool> parities;  // by member: true if it differs from its parent's
};

}  // namespace quarn
