#include <gtest/gtest.h>

#include <new>
#include <vector>

#include <Common/ZelmoreException.h>
#include <QuarnScreen/IntersectionSet.h>

#include "Library/Memory/CountedAllocations.h"
#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/TriangleScreen.h"

using namespace quarn::test;

namespace {

// More than any work here needs, so that a loop over the failures has an end.
constexpr long kMaxAllocations = 100'000;

// Whether `work` gets through with so many allocations. It fails by the standard exception or not
// at all.
template <class Work>
bool succeedsWithin(long allowed, const Work& work) {
    const AllocationLimit limit(allowed);
    try {
        work();
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

}  // namespace

// What is allocated here outlives the work: the compiler may leave out the rest.
TEST(AllocationFailure, LimitEndsWithItsScope) {
    std::vector<double> numbers;
    const auto take = [&] { numbers = std::vector<double>(100); };
    EXPECT_FALSE(succeedsWithin(0, take));
    EXPECT_TRUE(succeedsWithin(1, take));
    take();
    EXPECT_EQ(numbers.size(), 100U);
}

TEST(AllocationFailure, OfAListOfHitsPassesThrough) {
    IntersectionSet hits;
    EXPECT_FALSE(succeedsWithin(0, [&] { hits.add(Intersection()); }));
    EXPECT_TRUE(hits.empty());
    EXPECT_FALSE(succeedsWithin(0, [&] { hits = IntersectionSet(Point3(1.0, 2.0, 3.0)); }));
    EXPECT_TRUE(hits.empty());
    hits.add(Intersection());
    IntersectionSet copy;
    EXPECT_FALSE(succeedsWithin(0, [&] { copy = hits; }));
    EXPECT_TRUE(copy.empty());
    EXPECT_EQ(hits.count(), 1);
}

// The list of triangles is there already; what fails is each step of building the trees, the map
// and the boundary.
TEST(AllocationFailure, OfBuildingAMeshPassesThroughAndTheNextBuildIsWhole) {
    const Mesh mesh = dome({5, 4});
    const Point3 inside = mesh[7].centroid;
    TriangleScreen screen;
    long allowed = 0;
    const auto build = [&] { screen.initTriangleData(); };
    for (; allowed < kMaxAllocations; ++allowed) {
        screen.mesh() = mesh;
        if (succeedsWithin(allowed, build)) break;
        // Any result is right, but no index may be half built.
        (void)screen.isOnScreenSection(inside);
        try {
            (void)screen.getClosestPoint(inside);
        } catch (const ZelmoreException& /*emptyTree*/) {
        }
    }
    EXPECT_GT(allowed, 3) << "trees, map and boundary allocate memory each";
    ASSERT_LT(allowed, kMaxAllocations);
    EXPECT_TRUE(screen.hasValidBoundary());
    EXPECT_TRUE(sameBits(screen.getScreenNormal(inside), mesh[7].normal));
    const Point2 uv = screen.mapInto2D(inside, false);
    Point3 back;
    EXPECT_TRUE(screen.mapInto3D(uv, back, false));
    EXPECT_LT(length(back - inside), 1e-12);
}
