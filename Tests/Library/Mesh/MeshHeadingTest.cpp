#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "Reference/Mesh/ReferenceViews.h"
#include "Support/Mesh/MeshCases.h"
#include "Support/Mesh/OverriddenScreen.h"

using namespace quarn::test;

TEST(MeshHeading, OfAnEmptyMeshIsNaNAndItsAngleZero) {
    const TriangleScreen screen;
    EXPECT_TRUE(
        sameBits(screen.getCenterOfScreenHeading(), Point3(std::nan(""), std::nan(""), std::nan(""))));
    EXPECT_TRUE(sameBits(screen.getMaxAngleFromHeading(), 0.0));
    EXPECT_EQ(screen.getEyepoint(), Point3());
}

TEST(MeshHeading, OfASheetBeforeTheEyeIsStraightAhead) {
    TriangleScreen screen(flatGrid({2, 2}, {4.0, 4.0}));
    screen.applyTransform({0.0, 2.0, 0.0}, {}, 1.0);
    const Point3 heading = screen.getCenterOfScreenHeading();
    EXPECT_NEAR(heading[0], 0.0, 1e-12);
    EXPECT_NEAR(heading[1], 1.0, 1e-12);
    EXPECT_NEAR(heading[2], 0.0, 1e-12);
    // Its corners lie at (2, 2, 2).
    EXPECT_NEAR(screen.getMaxAngleFromHeading(), std::acos(1.0 / std::numbers::sqrt3), 1e-12);
}

TEST(MeshHeading, CountsEachCornerOfEachTriangle) {
    const Triangle toX = wholeTriangle({1.0, 0.0, 0.0}, {2.0, 0.0, 0.0}, {3.0, 0.0, 0.0});
    const Triangle toY = wholeTriangle({0.0, 1.0, 0.0}, {0.0, 2.0, 0.0}, {0.0, 3.0, 0.0});
    const Point3 heading = TriangleScreen({toX, toY, toY, toY}).getCenterOfScreenHeading();
    EXPECT_NEAR(heading[1] / heading[0], 3.0, 1e-12);
}

TEST(MeshHeading, ACornerAtTheEyeMakesItNaN) {
    const TriangleScreen screen({wholeTriangle({}, {1.0, 0.0, 0.0}, {0.0, 1.0, 0.0})});
    const Point3 heading = screen.getCenterOfScreenHeading();
    for (std::size_t i = 0; i < 3; ++i) EXPECT_TRUE(std::isnan(heading[i]));
    EXPECT_TRUE(sameBits(screen.getMaxAngleFromHeading(), 0.0));
}

TEST(MeshHeading, AnAngleWhoseCosineIsRoundedAboveOneIsPassedOver) {
    OverriddenScreen screen;
    int passedOver = 0;
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        const Point3 corner = rng.point(-1.0, 1.0);
        const Point3 unit = normalized(corner);
        if (!(dot(unit, normalized(unit)) > 1.0)) continue;
        ++passedOver;
        screen.load({wholeTriangle(corner, corner, corner)});
        screen.onGetHeading = [&] { return unit; };
        EXPECT_TRUE(sameBits(screen.getMaxAngleFromHeading(), 0.0));
    }
    EXPECT_GT(passedOver, 5);
}

TEST(MeshHeading, UsesTheScreensOwnEyeAndHeading) {
    OverriddenScreen screen({wholeTriangle({5.0, 1.0, 0.0}, {5.0, 2.0, 0.0}, {5.0, 3.0, 0.0})});
    screen.onGetEyepoint = [] { return Point3(5.0, 0.0, 0.0); };
    EXPECT_EQ(screen.getCenterOfScreenHeading(), Point3(0.0, 1.0, 0.0));
    screen.onGetHeading = [] { return Point3(7.0, 0.0, 0.0); };
    EXPECT_NEAR(screen.getMaxAngleFromHeading(), std::numbers::pi / 2.0, 1e-15);
}

TEST(MeshHeading, IsThatOfTheReference) {
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Mesh mesh = anyMesh(rng);
        OverriddenScreen screen(mesh);
        const Point3 eye = rng.coin() ? Point3() : rng.point(-3.0, 3.0);
        screen.onGetEyepoint = [&] { return eye; };
        const Point3 heading = referenceHeading(mesh, eye);
        ASSERT_TRUE(sameBits(screen.getCenterOfScreenHeading(), heading));
        ASSERT_TRUE(sameBits(screen.getMaxAngleFromHeading(), referenceMaxAngle(mesh, eye, heading)));
        const Point3 other = rng.point(-2.0, 2.0);
        screen.onGetHeading = [&] { return other; };
        ASSERT_TRUE(sameBits(screen.getMaxAngleFromHeading(), referenceMaxAngle(mesh, eye, other)));
    }
}
