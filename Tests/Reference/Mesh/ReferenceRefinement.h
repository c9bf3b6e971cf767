/// \file
/// Reference implementation of the refinement, with its steps counted.
#pragma once

#include <cstddef>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::test {

/// Which edges of a triangle are longer than a bound, as bits: 1 for v0-v1, 2 for v1-v2, 4 for
/// v2-v0.
[[nodiscard]] unsigned longEdges(const Triangle& triangle, double bound);

/// The pieces of one cut, in order; none where no edge is long.
[[nodiscard]] std::vector<Triangle> referenceCut(const Triangle& triangle, double bound);

struct ReferenceRefinement {
    std::vector<Triangle> pieces;
    bool hasEnded = true;  // nothing else counts if it has not
    /// How often each value of longEdges() was met.
    std::size_t tally[8] = {};
};

/// \param stepLimit triangles after which it is broken off; it may run without end
[[nodiscard]] ReferenceRefinement referenceRefine(const std::vector<Triangle>& triangles, double bound,
                                                  std::size_t stepLimit = 10'000'000);

}  // namespace quarn::test
