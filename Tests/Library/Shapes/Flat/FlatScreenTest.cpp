#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <type_traits>

#include <QuarnScreen/FlatScreen.h>

#include "Support/FixedConfig.h"
#include "Support/GeometryBits.h"

using namespace quarn::test;

namespace {

// Reaches the protected way to change both sizes.
class ResettableScreen : public FlatScreen {
public:
    using FlatScreen::FlatScreen;
    using FlatScreen::reset;
};

std::vector<Point3> cornersOf(const FlatScreen& screen) {
    Point3 viewPoint;
    std::vector<int> indices;
    std::vector<Point3> vertices;
    std::vector<Point3> normals;
    screen.generateGeometry(viewPoint, indices, vertices, normals);
    return vertices;
}

Point3 viewPointOf(const FlatScreen& screen) {
    Point3 viewPoint;
    std::vector<int> indices;
    std::vector<Point3> vertices;
    std::vector<Point3> normals;
    screen.generateGeometry(viewPoint, indices, vertices, normals);
    return viewPoint;
}

std::vector<Point3> rectangle(double w, double h) {
    return {Point3(-w / 2, 0, h / 2), Point3(w / 2, 0, h / 2), Point3(-w / 2, 0, -h / 2),
            Point3(w / 2, 0, -h / 2)};
}

}  // namespace

TEST(FlatScreen, DefaultConstructedIsInvalidWithCornersOfMinusOne) {
    const FlatScreen screen;
    EXPECT_FALSE(screen.isValid());
    EXPECT_EQ(screen.getWidth(), -1.0);
    EXPECT_EQ(screen.getHeight(), -1.0);
    EXPECT_TRUE(sameBits(cornersOf(screen), std::vector{Point3(0.5, 0, -0.5), Point3(-0.5, 0, -0.5),
                                                        Point3(0.5, 0, 0.5), Point3(-0.5, 0, 0.5)}));
}

TEST(FlatScreen, SmallestAndLargestSizesAreKept) {
    const double least = std::numeric_limits<double>::denorm_min();
    const double greatest = std::numeric_limits<double>::max();
    const FlatScreen screen(least, greatest);
    EXPECT_TRUE(screen.isValid());
    EXPECT_EQ(screen.getWidth(), least);
    EXPECT_EQ(screen.getHeight(), greatest);
    // Half of the least number rounds to zero.
    EXPECT_TRUE(sameBits(cornersOf(screen)[0], Point3(-0.0, 0.0, greatest / 2)));
}

TEST(FlatScreen, IsValidLooksAtTheWidthAlone) {
    EXPECT_TRUE(FlatScreen(2.0, -3.0).isValid());
    EXPECT_TRUE(FlatScreen(0.0, 0.0).isValid());
    EXPECT_TRUE(FlatScreen(-0.0, 1.0).isValid());
    EXPECT_FALSE(FlatScreen(-std::numeric_limits<double>::denorm_min(), 1.0).isValid());
    EXPECT_FALSE(FlatScreen(std::nan(""), 1.0).isValid());
}

TEST(FlatScreen, EveryWayOfGivingSizesComputesTheCorners) {
    FixedConfig config(4.0, 3.0);
    EXPECT_TRUE(sameBits(cornersOf(FlatScreen(4.0, 3.0)), rectangle(4.0, 3.0)));
    EXPECT_TRUE(sameBits(cornersOf(FlatScreen(&config)), rectangle(4.0, 3.0)));

    ResettableScreen screen(1.0, 1.0);
    screen.updateGeometry(&config);
    EXPECT_TRUE(sameBits(cornersOf(screen), rectangle(4.0, 3.0)));
    screen.reset(7.0, 5.0);
    EXPECT_TRUE(sameBits(cornersOf(screen), rectangle(7.0, 5.0)));
    EXPECT_EQ(screen.getWidth(), 7.0);
    EXPECT_EQ(screen.getHeight(), 5.0);
}

TEST(FlatScreen, UpdateGeometryReadsTheHeightFirst) {
    FixedConfig config(4.0, 3.0);
    FlatScreen screen;
    screen.updateGeometry(&config);
    EXPECT_EQ(config.calls, (std::vector<std::string>{"getHeight", "getWidth"}));
    config.calls.clear();
    EXPECT_EQ(FlatScreen(&config).getWidth(), 4.0);
    EXPECT_EQ(config.calls, (std::vector<std::string>{"getHeight", "getWidth"}));
}

TEST(FlatScreen, KeepsNoHoldOfItsConfig) {
    FixedConfig config(4.0, 3.0);
    const FlatScreen screen(&config);
    config.width = 9.0;
    EXPECT_EQ(screen.getWidth(), 4.0);
    EXPECT_TRUE(sameBits(cornersOf(screen), rectangle(4.0, 3.0)));
}

TEST(FlatScreen, CopiesCarrySizesAndCorners) {
    const FlatScreen original(4.0, 3.0);
    const FlatScreen copy(original);
    FlatScreen assigned;
    assigned = original;
    for (const FlatScreen* screen : {&copy, static_cast<const FlatScreen*>(&assigned)}) {
        EXPECT_EQ(screen->getWidth(), 4.0);
        EXPECT_EQ(screen->getHeight(), 3.0);
        EXPECT_TRUE(sameBits(cornersOf(*screen), rectangle(4.0, 3.0)));
    }
}

TEST(FlatScreen, EyepointLiesHalfTheLongerSideInFront) {
    EXPECT_TRUE(sameBits(FlatScreen(4.0, 3.0).getEyepoint(), Point3(0, -2, 0)));
    EXPECT_TRUE(sameBits(FlatScreen(3.0, 4.0).getEyepoint(), Point3(0, -2, 0)));
    EXPECT_TRUE(sameBits(FlatScreen().getEyepoint(), Point3(0, 0.5, 0)));
}

TEST(FlatScreen, ViewPointDistanceGrowsInThreeSteps) {
    EXPECT_TRUE(sameBits(viewPointOf(FlatScreen(4.0, 3.0)), Point3(0, -20, 0)));
    EXPECT_TRUE(sameBits(viewPointOf(FlatScreen(5.0, 3.0)), Point3(0, -50, 0)));
    EXPECT_TRUE(sameBits(viewPointOf(FlatScreen(0.5, 0.2)), Point3(0, -0.5, 0)));
    EXPECT_TRUE(sameBits(viewPointOf(FlatScreen(0.2, 0.5)), Point3(0, -0.5, 0)));
    EXPECT_TRUE(sameBits(viewPointOf(FlatScreen(1.0, 1.0)), Point3(0, -5, 0)));
    const double belowOne = std::nextafter(1.0, 0.0);
    EXPECT_TRUE(sameBits(viewPointOf(FlatScreen(belowOne, 0.0)), Point3(0, -belowOne, 0)));
    const double belowFive = std::nextafter(5.0, 0.0);
    EXPECT_TRUE(sameBits(viewPointOf(FlatScreen(1.0, belowFive)), Point3(0, belowFive * -5.0, 0)));
}

TEST(FlatScreen, GenerateGeometryReplacesIndicesAndAppendsTheRest) {
    const FlatScreen screen(4.0, 3.0);
    Point3 viewPoint(9, 9, 9);
    std::vector<int> indices{7, 7, 7, 7, 7, 7, 7, 7};
    std::vector<Point3> vertices{Point3(1, 2, 3)};
    std::vector<Point3> normals{Point3(4, 5, 6)};
    screen.generateGeometry(viewPoint, indices, vertices, normals);
    screen.generateGeometry(viewPoint, indices, vertices, normals);
    EXPECT_EQ(indices, (std::vector<int>{0, 2, 1, 1, 2, 3}));

    std::vector<Point3> expectedVertices{Point3(1, 2, 3)};
    for (int i = 0; i < 2; ++i)
        for (const Point3& corner : rectangle(4.0, 3.0)) expectedVertices.push_back(corner);
    EXPECT_TRUE(sameBits(vertices, expectedVertices));
    std::vector<Point3> expectedNormals(9, Point3(0, -1, 0));
    expectedNormals[0] = Point3(4, 5, 6);
    EXPECT_TRUE(sameBits(normals, expectedNormals));
}

TEST(FlatScreen, TrianglesFaceTheirNormals) {
    Point3 viewPoint;
    std::vector<int> indices;
    std::vector<Point3> vertices;
    std::vector<Point3> normals;
    FlatScreen(4.0, 3.0).generateGeometry(viewPoint, indices, vertices, normals);
    for (std::size_t i = 0; i < indices.size(); i += 3) {
        const auto corner = [&](std::size_t k) { return vertices[static_cast<std::size_t>(indices[i + k])]; };
        EXPECT_EQ(normalized(cross(corner(1) - corner(0), corner(2) - corner(0))), Point3(0, -1, 0));
    }
}

TEST(FlatScreen, MaxAngleTakesTheWholeDiagonalOverHalfTheLongerSide) {
    // sqrt(3^2 + 4^2) = 5 over 4 / 2 = 2, both exact.
    EXPECT_TRUE(sameBits(FlatScreen(3.0, 4.0).getMaxAngleFromHeading(), std::atan2(5.0, 2.0)));
    EXPECT_TRUE(sameBits(FlatScreen(4.0, 3.0).getMaxAngleFromHeading(), std::atan2(5.0, 2.0)));
    EXPECT_TRUE(sameBits(FlatScreen(0.0, 0.0).getMaxAngleFromHeading(), 0.0));
}

TEST(FlatScreen, BoundsAreTheRectangle) {
    Point3 min(9, 9, 9);
    Point3 max(9, 9, 9);
    FlatScreen(4.0, 3.0).getBounds(&min, &max);
    EXPECT_TRUE(sameBits(min, Point3(-2, 0, -1.5)));
    EXPECT_TRUE(sameBits(max, Point3(2, 0, 1.5)));
    // A negative size turns the bounds over.
    FlatScreen(-4.0, 3.0).getBounds(&min, &max);
    EXPECT_TRUE(sameBits(min, Point3(2, 0, -1.5)));
    EXPECT_TRUE(sameBits(max, Point3(-2, 0, 1.5)));
}

TEST(FlatScreen, IsAPlaneWithUVAndWithoutTriangles) {
    const FlatScreen screen(4.0, 3.0);
    EXPECT_TRUE(screen.isPlanar());
    EXPECT_TRUE(screen.hasParameterization());
    EXPECT_FALSE(screen.hasTesselation());
    EXPECT_TRUE(sameBits(screen.getCenterOfScreenHeading(), Point3(0, 1, 0)));
    EXPECT_TRUE(sameBits(screen.getScreenNormal(Point3(1, 2, 3)), Point3(0, -1, 0)));

    std::vector<Triangle> triangles(2);
    screen.getTesselation(triangles);
    EXPECT_EQ(triangles.size(), 2U);
    std::vector<Point2> outline{Point2(1, 2)};
    screen.sampleBoundaryUV(outline);
    EXPECT_TRUE(sameBits(outline, std::vector{Point2(1, 2)}));
}
