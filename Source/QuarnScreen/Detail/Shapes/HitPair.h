/// \file
/// Hits of a ray on a surface that it meets at most twice.
#pragma once

#include <array>
#include <optional>

#include <Common/Detail/Assert.h>
#include <QuarnScreen/IntersectionSet.h>

namespace quarn::detail {

/// Up to two hits in the order in which they were found. Unlike IntersectionSet, it does not
/// allocate memory.
class HitPair {
public:
    /// Appends a hit.
    /// \pre fewer than two hits have been added
    void add(const Intersection& hit) {
        QUARN_ASSERT(hitCount < hits.size());
        hits[hitCount++] = hit;
    }

    /// Returns the set of the hits for which \p keep returns true.
    template <class Keep>
    [[nodiscard]] IntersectionSet filtered(Keep keep) const {
        IntersectionSet result;
        for (std::size_t i = 0; i < hitCount; ++i)
            if (keep(hits[i])) result.add(hits[i]);
        return result;
    }

    /// Returns the first of these hits.
    template <class Keep>
    [[nodiscard]] std::optional<Intersection> firstOf(Keep keep) const {
        for (std::size_t i = 0; i < hitCount; ++i)
            if (keep(hits[i])) return hits[i];
        return std::nullopt;
    }

private:
    std::array<Intersection, 2> hits;
    std::size_t hitCount = 0;
};

}  // namespace quarn::detail
