#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <numbers>

#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/SphericalScreen.h>

#include <QuarnKit/Plot/Page/PlotText.h>
#include <QuarnKit/Plot/PlotPage.h>
#include <QuarnKit/Plot/Views/PlotViews.h>
#include "Kit/Plot/RandomSphere.h"
#include "Support/Rng.h"
#include "Support/ScriptedScreen.h"

namespace quarn::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

constexpr double kPi = std::numbers::pi;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

const Point<double, 3> kOrigin;
const SphericalScreen kDome(kOrigin, 5.0, -kPi, kPi, 0.0, kPi / 2);

// Sides that a view shows, in the order in which they are painted.
std::vector<char> paintedSides(const IScreenGeometry& screen, const Camera& camera) {
    std::vector<char> sides;
    for (const Shape& shape : surfaceShapes(PlotSurface(screen), camera))
        if (shape.isArea) sides.push_back(shape.styleClass.front());
    return sides;
}

bool hasClass(const IScreenGeometry& screen, const std::string& styleClass) {
    const auto shapes = surfaceShapes(PlotSurface(screen), Camera::plan());
    return std::any_of(shapes.begin(), shapes.end(),
                       [&](const Shape& shape) { return shape.styleClass == styleClass; });
}

std::string pageOf(std::shared_ptr<IScreenGeometry> screen) {
    return plotPage({.file = "screen.xml", .geometry = std::move(screen)}, "m");
}

TEST(PlotViews, PlanAndFrontShowTheWorldAsTheViewerKnowsIt) {
    const Point<double, 3> right(1.0, 0.0, 0.0);
    const Point<double, 3> ahead(0.0, 1.0, 0.0);
    const Point<double, 3> up(0.0, 0.0, 1.0);
    EXPECT_EQ(Camera::plan().project(right), ViewPoint(1.0, 0.0));
    EXPECT_EQ(Camera::plan().project(ahead), ViewPoint(0.0, 1.0));
    EXPECT_EQ(Camera::plan().nearness(up), 1.0);
    EXPECT_EQ(Camera::front().project(right), ViewPoint(1.0, 0.0));
    EXPECT_EQ(Camera::front().project(up), ViewPoint(0.0, 1.0));
    EXPECT_EQ(Camera::front().nearness(ahead), -1.0);
}

TEST(PlotViews, PerspectiveLooksFromTheViewersSideAndFromAbove) {
    const Camera camera = Camera::perspective(0.0);
    EXPECT_GT(camera.project({1.0, 0.0, 0.0})[0], 0.5);
    EXPECT_GT(camera.project({0.0, 0.0, 1.0})[1], 0.5);
    EXPECT_GT(camera.nearness({0.0, -1.0, 0.0}), 0.5);
    EXPECT_GT(camera.nearness({0.0, 0.0, 1.0}), 0.2);
    const auto seenHeight = [&](double y) {
        return camera.project({0.0, y, 0.1})[1] - camera.project({0.0, y, 0.0})[1];
    };
    EXPECT_GT(seenHeight(-0.5), seenHeight(0.5)) << "what is nearer is larger";
}

TEST(PlotViews, ViewerSeesTheFrontOfAWallAndTheBackOfADome) {
    EXPECT_THAT(paintedSides(FlatScreen(4.0, 3.0), Camera::front()), ::testing::Each('f'));
    EXPECT_THAT(paintedSides(FlatScreen(4.0, 3.0), Camera::perspective(0.0)), ::testing::Each('f'));
    EXPECT_THAT(paintedSides(kDome, Camera::plan()), ::testing::Each('b'));
}

TEST(PlotViews, ReversedLimitsTurnFrontAndBackAround) {
    const CylinderScreen cylinder(kOrigin, 6.0, -1.0, 1.0, 3.0);
    const CylinderScreen reversed(kOrigin, 6.0, 1.0, -1.0, 3.0);
    EXPECT_THAT(paintedSides(cylinder, Camera::front()), ::testing::Each('f'));
    EXPECT_THAT(paintedSides(reversed, Camera::front()), ::testing::Each('b'));
}

TEST(PlotViews, NearWallOfAFullCylinderCoversTheFarOne) {
    const std::vector<char> sides =
        paintedSides(CylinderScreen(kOrigin, 6.0, -kPi, kPi, 3.0), Camera::front());
    ASSERT_FALSE(sides.empty());
    EXPECT_EQ(sides.front(), 'f');
    EXPECT_EQ(sides.back(), 'b');
    EXPECT_TRUE(std::is_partitioned(sides.begin(), sides.end(), [](char side) { return side == 'f'; }));
}

TEST(PlotViews, SurfaceSeenFromItsEdgeHasNoAreas) {
    EXPECT_TRUE(paintedSides(FlatScreen(4.0, 3.0), Camera::plan()).empty());
    EXPECT_TRUE(hasClass(FlatScreen(4.0, 3.0), kBoundaryClass));
}

TEST(PlotViews, WhereTwoEdgesMeetTheyAreASeam) {
    EXPECT_TRUE(hasClass(kDome, kSeamClass));
    EXPECT_TRUE(hasClass(kDome, kBoundaryClass));
    EXPECT_FALSE(hasClass(CylinderScreen(kOrigin, 6.0, -3.0, 3.0, 3.0), kSeamClass));
    EXPECT_FALSE(hasClass(SphericalScreen(kOrigin, 5.0, -kPi, kPi, -kPi / 2, kPi / 2), kBoundaryClass));
}

TEST(PlotViews, DomeHidesItsCentreAndAWallNotItsViewer) {
    const PlotSurface dome(kDome);
    EXPECT_TRUE(hides(dome, Camera::plan(), dome.toScene(kOrigin)));
    EXPECT_TRUE(hides(dome, Camera::perspective(0.0), dome.toScene(kOrigin)));
    EXPECT_FALSE(hides(dome, Camera::plan(), dome.toScene({0.0, 0.0, 9.0})));
    const PlotSurface wall(FlatScreen(4.0, 3.0));
    EXPECT_FALSE(hides(wall, Camera::front(), wall.toScene({0.0, -2.0, 0.0})));
    EXPECT_TRUE(hides(wall, Camera::front(), wall.toScene({0.0, 2.0, 0.0})));
}

TEST(PlotViews, CellsWithoutAPositionAreLeftOut) {
    ScriptedScreen torn;
    torn.onMapInto3D = [](const Point2& uv, Point3& point, bool /*extrapolate*/) {
        point = Point3(uv[0], 0.0, uv[0] > 0.3 && uv[0] < 0.7 ? kNaN : -uv[1]);
        return true;
    };
    const auto shapes = surfaceShapes(PlotSurface(torn), Camera::front());
    ASSERT_FALSE(shapes.empty());
    for (const Shape& shape : shapes)
        for (const ViewPoint& point : shape.points) {
            ASSERT_TRUE(std::isfinite(point[0]) && std::isfinite(point[1]));
            ASSERT_GE(std::abs(point[0]), 0.19);
        }
}

TEST(PlotViews, AllRandomScreensHaveFiniteShapes) {
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const SphericalScreen screen = randomSphere(rng);
        const PlotSurface surface(screen);
        if (!surface.isDrawable()) continue;
        for (const Shape& shape : surfaceShapes(surface, Camera::perspective(0.0)))
            for (const ViewPoint& point : shape.points) ASSERT_LT(length(point), 2.0);
    }
}

TEST(PlotViews, PolygonHoldsItsMiddleAndNoPointBeside) {
    const std::vector<Point<double, 2>> square = {{0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0}, {0.0, 1.0}};
    EXPECT_TRUE(isInside(square, {0.5, 0.5}));
    EXPECT_FALSE(isInside(square, {1.5, 0.5}));
    EXPECT_FALSE(isInside(square, {-0.5, 0.5}));
    EXPECT_FALSE(isInside(square, {0.5, 1.5}));
    EXPECT_FALSE(isInside({}, {0.5, 0.5}));
}

TEST(PlotText, NumbersHaveFourDigits) {
    EXPECT_EQ(shortNumber(4.0, 0.0), "4");
    EXPECT_EQ(shortNumber(20.943951, 0.0), "20.94");
    EXPECT_EQ(shortNumber(-0.0123456, 0.0), "-0.01235");
    EXPECT_EQ(shortNumber(999.99, 0.0), "1000");
    EXPECT_EQ(shortNumber(10392.3, 0.0), "10392");
    EXPECT_EQ(shortNumber(1234567.8, 0.0), "1234568");
    EXPECT_EQ(shortNumber(3e150, 0.0), "3e+150");
    EXPECT_EQ(shortNumber(2e-5, 0.0), "2e-05");
    EXPECT_EQ(shortNumber(kNaN, 1.0), "nan");
}

TEST(PlotText, NumberThatIsNothingBesideTheScaleIsZero) {
    EXPECT_EQ(shortNumber(6.1e-17, 1.0), "0");
    EXPECT_EQ(shortNumber(-6.1e-17, 1.0), "0");
    EXPECT_EQ(shortNumber(-0.0, 0.0), "0");
    EXPECT_EQ(positionText({1.0, -6.1e-17, -2.5}, 1.0), "(1, 0, -2.5)");
}

TEST(PlotText, LongNamesAreCutBetweenCharacters) {
    EXPECT_EQ(shortFileName("/a/b/screen.xml"), "screen.xml");
    std::string name;
    for (int i = 0; i < 100; ++i) name += "ä";
    const std::string text = shortFileName(name + ".xml");
    EXPECT_THAT(text, StartsWith("ää"));
    EXPECT_THAT(text, HasSubstr("ä…ä"));
    EXPECT_THAT(text, ::testing::EndsWith(".xml"));
    EXPECT_EQ(text.find("\xEF\xBF\xBD"), std::string::npos);
}

TEST(PlotText, ShapesHaveNames) {
    const auto name = [](const IScreenGeometry& screen) { return shapeText(screen, PlotSurface(screen)); };
    EXPECT_EQ(name(FlatScreen(4.0, 3.0)), "Flat wall");
    EXPECT_EQ(name(CylinderScreen(kOrigin, 6.0, -1.0, 1.0, 3.0)), "Section of a cylinder");
    EXPECT_EQ(name(CylinderScreen(kOrigin, 6.0, 0.0, 2 * kPi, 3.0)), "Full cylinder");
    EXPECT_EQ(name(kDome), "Dome, closed around and above");
    EXPECT_EQ(name(SphericalScreen(kOrigin, 5.0, -1.0, 1.0, 0.0, 1.0)), "Section of a sphere");
    EXPECT_EQ(name(SphericalScreen(kOrigin, 5.0, -kPi, kPi, -kPi / 2, kPi / 2)), "Full sphere");
    EXPECT_EQ(name(SphericalScreen(kOrigin, 5.0, -kPi, kPi, 0.0, 1.0)), "Ring of a sphere, closed around");
    EXPECT_EQ(name(RuledSurfaceScreen(6.0, 3.0, -1.0, 1.0, -0.5, 0.5)), "Ruled surface between two arcs");
}

TEST(PlotPage, ScreenWithoutPositionsSaysSo) {
    const std::string page = pageOf(std::make_shared<FlatScreen>(kNaN, 3.0));
    EXPECT_THAT(page, HasSubstr("not drawable"));
    EXPECT_THAT(page, Not(HasSubstr("NaN")));
    EXPECT_EQ(page.find("=\"nan"), std::string::npos);
    EXPECT_THAT(pageOf(std::make_shared<FlatScreen>(4.0, 3.0)), Not(HasSubstr("not drawable")));
}

TEST(PlotPage, LegendListsOnlyWhatThePageShows) {
    const std::string wall = pageOf(std::make_shared<FlatScreen>(4.0, 3.0));
    EXPECT_THAT(wall, HasSubstr(">front: "));
    for (const char* absent : {">back: ", ">seam: ", "dashed: hidden"})
        EXPECT_THAT(wall, Not(HasSubstr(absent)));
    const std::string dome = pageOf(std::make_shared<SphericalScreen>(kDome));
    for (const char* present : {">front: ", ">back: ", ">seam: ", "dashed: hidden"})
        EXPECT_THAT(dome, HasSubstr(present));
}

TEST(PlotPage, FarEyePointIsStatedAndNotDrawn) {
    const auto far = std::make_shared<CylinderScreen>(Point<double, 3>(1e5, 0.0, 0.0), 6.0, -1.0, 1.0, 3.0);
    EXPECT_THAT(pageOf(far), HasSubstr("too far away to be drawn"));
    const auto near = std::make_shared<CylinderScreen>(kOrigin, 6.0, -1.0, 1.0, 3.0);
    EXPECT_THAT(pageOf(near), Not(HasSubstr("too far away to be drawn")));
}

}  // namespace
}  // namespace quarn::test
