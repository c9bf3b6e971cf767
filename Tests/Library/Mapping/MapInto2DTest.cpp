// UVs of positions.
#include <gtest/gtest.h>

#include <limits>

#include <Common/ZelmoreException.h>

#include "Library/Mapping/MappingCases.h"
#include "Support/Mesh/MeshCases.h"

using namespace quarn::test;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Corner 0 at the origin, then along +X and +Z; u is x and v is z.
Mesh oneTriangle() {
    return {wholeTriangle({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {0.0, 0.0, 1.0})};
}

struct Tally {
    int on = 0;
    int off = 0;
};

void compareWithReference(const TriangleScreen& screen, const ReferenceMesh& plain, const Point3& point,
                          Tally& tally) {
    SCOPED_TRACE(::testing::Message() << std::hexfloat << point[0] << ", " << point[1] << ", " << point[2]);
    for (const bool extrapolate : {false, true}) {
        const Point2 expected = referenceMapInto2D(plain, point, extrapolate);
        EXPECT_TRUE(sameBits(screen.mapInto2D(point, extrapolate), expected)) << extrapolate;
        ++(expected == kNoUV ? tally.off : tally.on);
    }
}

}  // namespace

TEST(MapInto2D, ScreenWithoutParameterisationHasNoUV) {
    TriangleScreen screen(oneTriangle());
    screen.parameterized = false;
    for (const bool extrapolate : {false, true})
        EXPECT_TRUE(sameBits(screen.mapInto2D({0.25, 0.0, 0.25}, extrapolate), Point2(-999.0, -999.0)));
    TriangleScreen empty;
    empty.parameterized = false;
    EXPECT_TRUE(sameBits(empty.mapInto2D({}, true), kNoUV)) << "the tree is not searched";
}

TEST(MapInto2D, EmptyScreenRaisesOnlyWhereItExtrapolates) {
    TriangleScreen screen;
    for (int built = 0; built < 2; ++built) {
        EXPECT_TRUE(sameBits(screen.mapInto2D({}, false), kNoUV));
        try {
            (void)screen.mapInto2D({}, true);
            ADD_FAILURE() << "nothing was raised";
        } catch (const ZelmoreException& error) {
            EXPECT_EQ(error.message(), L"There are no values in the KDTree");
        }
        screen.load({});
    }
}

TEST(MapInto2D, PositionOnTheMeshHasTheUVOfItsTriangle) {
    const TriangleScreen screen(oneTriangle());
    for (const bool extrapolate : {false, true}) {
        EXPECT_TRUE(sameBits(screen.mapInto2D({0.25, 0.0, 0.5}, extrapolate), Point2(0.25, 0.5)));
        EXPECT_TRUE(sameBits(screen.mapInto2D({1.0, 0.0, 0.0}, extrapolate), Point2(1.0, 0.0)));
    }
}

TEST(MapInto2D, PositionOffThePlaneCountsUpToTheToleranceOrWithExtrapolation) {
    const TriangleScreen screen(oneTriangle());
    for (const double side : {1.0, -1.0}) {
        EXPECT_TRUE(sameBits(screen.mapInto2D({0.25, side * 0.99e-5, 0.5}, false), Point2(0.25, 0.5)));
        EXPECT_TRUE(sameBits(screen.mapInto2D({0.25, side * 1.01e-5, 0.5}, false), kNoUV));
        EXPECT_TRUE(sameBits(screen.mapInto2D({0.25, side * 2.0, 0.5}, true), Point2(0.25, 0.5)));
    }
}

TEST(MapInto2D, ExtrapolationGoesBeyondTwoEdgesButNotBeyondThatBetweenCorners0And2) {
    const TriangleScreen screen(oneTriangle());
    EXPECT_TRUE(sameBits(screen.mapInto2D({3.0, 0.0, 0.5}, true), Point2(3.0, 0.5)));
    EXPECT_TRUE(sameBits(screen.mapInto2D({0.25, 0.0, -4.0}, true), Point2(0.25, -4.0)));
    EXPECT_TRUE(sameBits(screen.mapInto2D({-0.99e-6, 0.0, 0.5}, true), Point2(-0.99e-6, 0.5)));
    EXPECT_TRUE(sameBits(screen.mapInto2D({-1.01e-6, 0.0, 0.5}, true), kNoUV));
    EXPECT_TRUE(sameBits(screen.mapInto2D({3.0, 0.0, 0.5}, false), kNoUV));
}

TEST(MapInto2D, DegenerateTriangleHasNoUVs) {
    const TriangleScreen screen({wholeTriangle({0.0, 0.0, 0.0}, {1.0, 0.0, 0.0}, {2.0, 0.0, 0.0})});
    for (const bool extrapolate : {false, true})
        EXPECT_TRUE(sameBits(screen.mapInto2D({1.0, 0.0, 0.0}, extrapolate), kNoUV));
}

TEST(MapInto2D, PositionNearestToNoCentroidHasNoUV) {
    const TriangleScreen screen(flatGrid({4, 3}));
    for (const bool extrapolate : {false, true}) {
        EXPECT_TRUE(sameBits(screen.mapInto2D({kNaN, 0.0, 0.0}, extrapolate), kNoUV));
        EXPECT_TRUE(sameBits(screen.mapInto2D({0.0, 1e200, 0.0}, extrapolate), kNoUV));
    }
}

// The direction is the difference of the two positions, in which a far position loses the normal.
TEST(MapInto2D, FarPositionsLoseTheNormalAndHaveNoUV) {
    const TriangleScreen screen(oneTriangle());
    EXPECT_TRUE(sameBits(screen.mapInto2D({0.25, 1e15, 0.5}, true), Point2(0.25, 0.5)));
    EXPECT_TRUE(sameBits(screen.mapInto2D({0.25, 1e17, 0.5}, true), kNoUV));
}

TEST(MapInto2D, AnswersOfTheReferenceOnMeshesOfAnyKind) {
    Tally tally;
    for (int i = 0; i < seedCount(1000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const TriangleScreen screen(anyUVMesh(rng));
        const ReferenceMesh plain(screen.mesh(), screen.outline().uvPoints, screen.hasValidBoundary());
        for (int k = 0; k < 40; ++k)
            compareWithReference(screen, plain, anyQuestion(screen.mesh(), rng), tally);
        if (HasFailure()) return;
    }
    EXPECT_GT(tally.on, seedCount(20'000));
    EXPECT_GT(tally.off, 10'000);
}
