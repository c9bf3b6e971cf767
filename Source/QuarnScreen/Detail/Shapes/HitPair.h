/// \file
/// The hits of a ray on a surface that it meets at most twice.
#pragma once

#include <array>

#include <Common/Detail/Assert.h>
#include <QuarnScreen/IntersectionSet.h>

namespace quarn::detail {

/// Up to two hits in the order in which they were found. Unlike an IntersectionSet it allocates nothing.
class HitPair {
public:
    /// \pre fewer than two hits are hitCount.
    void add(const Intersection& hit) {
        QUARN_ASSERT(hitCount < hits.size());
        hits[hitCount++] = hit;
    }

    /// The set of those hits that \p keep accepts.
    template <class Keep>
    [[nodiscard]] IntersectionSet filtered(Keep keep) const {
        IntersectionSet result;
        for (std::size_t i = 0; i < hitCount; ++i)
            if (keep(hits[i])) result.add(hits[i]);
        return result;
    }

private:
    std::array<Intersection, 2> hits;
    std::size_t hitCount = 0;
};

}  // namespace quarn::detail
