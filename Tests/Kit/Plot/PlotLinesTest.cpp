#include <QuarnKit/Plot/Mesh/PlotLines.h>

#include <gmock/gmock.h>

#include <cmath>

namespace quarn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// A square of 1 in the plane y = 0.
const std::vector<TriangleCorners> kSquare = {
    {Point<double, 3>(0.0, 0.0, 0.0), Point<double, 3>(1.0, 0.0, 0.0), Point<double, 3>(1.0, 0.0, 1.0)},
    {Point<double, 3>(0.0, 0.0, 0.0), Point<double, 3>(1.0, 0.0, 1.0), Point<double, 3>(0.0, 0.0, 1.0)}};

TEST(PlotLines, StraightLineNeedsItsEndsAlone) {
    std::vector<ViewPoint> line;
    for (int i = 0; i <= 100; ++i) line.emplace_back(i * 0.01, i * 0.02);
    EXPECT_THAT(simplifyLine(line, 1e-6), ElementsAre(line.front(), line.back()));
    EXPECT_THAT(simplifyLine({}, 1e-6), IsEmpty());
}

TEST(PlotLines, NoPointIsFartherFromASimplifiedLineThanTheTolerance) {
    std::vector<ViewPoint> circle;
    for (int i = 0; i <= 720; ++i) circle.emplace_back(std::cos(i * 0.00872665), std::sin(i * 0.00872665));
    const double tolerance = 0.01;
    const std::vector<ViewPoint> few = simplifyLine(circle, tolerance);
    EXPECT_LT(few.size(), 60U);
    // A chord that keeps the tolerance has its middle at least at 1 - tolerance.
    for (std::size_t i = 1; i < few.size(); ++i)
        EXPECT_GE(length((few[i - 1] + few[i]) * 0.5), 1.0 - tolerance - 1e-9);
}

TEST(PlotLines, LineThatGoesBehindASurfaceHasTwoParts) {
    const Camera camera = Camera::front();
    const PlotRaster raster(kSquare, camera, 200);
    SampleBudget budget;
    const auto parts = visibleParts({{0.5, -0.5, 0.5}, {0.6, 0.5, 0.5}}, camera, raster, budget);
    ASSERT_THAT(parts, SizeIs(2));
    EXPECT_FALSE(parts[0].isHidden);
    EXPECT_TRUE(parts[1].isHidden);
    EXPECT_EQ(parts[0].points.back(), parts[1].points.front());
    EXPECT_NEAR(parts[0].points.back()[0], 0.55, 0.01);
}

TEST(PlotLines, LineOnTheSurfaceIsSeenAsOnePart) {
    for (const Camera& camera : {Camera::front(), Camera::perspective(0.0), Camera::plan()}) {
        const PlotRaster raster(kSquare, camera, 200);
        SampleBudget budget;
        const auto parts =
            visibleParts({{0.0, 0.0, 0.0}, {1.0, 0.0, 1.0}, {0.0, 0.0, 1.0}}, camera, raster, budget);
        ASSERT_THAT(parts, SizeIs(1));
        EXPECT_FALSE(parts[0].isHidden);
    }
}

TEST(PlotLines, PointIsNoLine) {
    const Camera camera = Camera::front();
    SampleBudget budget;
    EXPECT_THAT(visibleParts({{0.5, 0.0, 0.5}}, camera, PlotRaster(kSquare, camera, 10), budget), IsEmpty());
}

TEST(PlotLines, LineEndsWhereTheBudgetDoes) {
    const Camera camera = Camera::front();
    SampleBudget budget{.left = 10};
    const auto parts =
        visibleParts({{0.0, 0.0, 0.5}, {1.0, 0.0, 0.5}}, camera, PlotRaster(kSquare, camera, 300), budget);
    ASSERT_THAT(parts, SizeIs(1));
    // A sample each 1.5 of 300 cells.
    EXPECT_NEAR(parts[0].points.back()[0], 10 * 1.5 / 300.0, 1e-9);
    EXPECT_EQ(budget.left, 0U);
}

TEST(PlotLines, LineAcrossTheEdgeOfAPanoramaHasAPartOnEachSide) {
    const Camera camera = Camera::fromEye({}, {0.0, 1.0, 0.0}, Projection::Panorama);
    const std::vector<TriangleCorners> far = {
        {Point<double, 3>(-9.0, 9.0, 0.0), Point<double, 3>(9.0, 9.0, 0.0), Point<double, 3>(0.0, 9.0, 9.0)}};
    SampleBudget budget;
    const auto parts =
        visibleParts({{-0.5, -1.0, 0.0}, {0.5, -1.0, 0.0}}, camera, PlotRaster(far, camera, 100), budget);
    ASSERT_THAT(parts, SizeIs(2));
    EXPECT_LT(parts[0].points.back()[0], -3.1);
    EXPECT_GT(parts[1].points.front()[0], 3.1);
}

}  // namespace
}  // namespace quarn::test
