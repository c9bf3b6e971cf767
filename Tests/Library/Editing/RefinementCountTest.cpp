#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

#include <QuarnScreen/Detail/Limits/TerminationChecks.h>

#include "Reference/Mesh/ReferenceRefinement.h"
#include "Support/Mesh/Meshes.h"

using namespace quarn::test;
using quarn::detail::countRefinedTriangles;

namespace {

constexpr std::uint64_t kAny = std::numeric_limits<std::uint64_t>::max();

}  // namespace

TEST(RefinementCount, IsThatOfTheReference) {
    for (int i = 0; i < seedCount(500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Mesh mesh = soup(rng, 5);
        const double bound = rng.uniform(0.02, 0.5);
        const std::uint64_t count = referenceRefine(mesh, bound).pieces.size();
        ASSERT_EQ(quarn::detail::countRefinedTriangles(mesh, bound, kAny), count);
        const auto most = static_cast<std::uint64_t>(rng.integer(0, 40));
        ASSERT_EQ(quarn::detail::countRefinedTriangles(mesh, bound, most), std::min(most, count));
    }
}

TEST(RefinementCount, EndsAtOnceWhereThereWouldBeTooMany) {
    EXPECT_EQ(quarn::detail::countRefinedTriangles(flatGrid({2, 2}), 1e-12, 1000), 1000U);
}

TEST(RefinementCount, OfNothingIsNothing) {
    EXPECT_EQ(quarn::detail::countRefinedTriangles({}, 1.0, kAny), 0U);
    EXPECT_EQ(quarn::detail::countRefinedTriangles(flatGrid({2, 2}), 100.0, kAny), 8U);
}
