/// \file
/// The hits of a ray on a surface that it meets at most twice.
#pragma once

#include <array>

#include <QuarnScreen/IntersectionSet.h>

namespace quarn {

/// Up to two hits in the order in which they were found. Unlike an IntersectionSet it allocates nothing.
class HitPair {
public:
    /// \pre fewer than two hits are held.
    void add(const Intersection& hit) { hits[held++] = hit; }

    /// The set of those hits that \p keep accepts.
    template <class Keep>
    [[nodiscard]] IntersectionSet filtered(Keep keep) const {
        IntersectionSet kept;
        for (std::size_t i = 0; i < held; ++i)
            if (keep(hits[i])) kept.add(hits[i]);
        return kept;
    }

private:
    std::array<Intersection, 2> hits;
    std::size_t held = 0;
};

}  // namespace quarn
