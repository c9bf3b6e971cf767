#include <QuarnKit/Plot/Views/PlotEyeView.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/SphericalScreen.h>

#include <QuarnKit/Base/Bounds.h>
#include <QuarnKit/Plot/Views/PlotViews.h>
#include "Kit/Plot/RandomSphere.h"
#include "Support/Rng.h"

namespace quarn::test {
namespace {

using ::testing::Each;
using ::testing::StartsWith;

constexpr double kPi = std::numbers::pi;
const Point<double, 3> kOrigin;
const Point<double, 3> kAhead(0.0, 1.0, 0.0);
const Point<double, 3> kUp(0.0, 0.0, 1.0);

Camera fisheye(const Point<double, 3>& heading) {
    return Camera::fromEye(kOrigin, heading, Projection::Fisheye);
}

void expectNear(const ViewPoint& found, const ViewPoint& expected) {
    EXPECT_NEAR(found[0], expected[0], 1e-12);
    EXPECT_NEAR(found[1], expected[1], 1e-12);
}

EyeView viewOf(const IScreenGeometry& screen) {
    return eyeViewOf(screen, PlotSurface(screen));
}

// Classes of the areas that the view from the eye shows.
std::vector<std::string> seenSides(const IScreenGeometry& screen) {
    std::vector<std::string> classes;
    for (const Shape& shape : surfaceShapes(PlotSurface(screen), viewOf(screen).camera))
        if (shape.isArea) classes.push_back(shape.styleClass);
    return classes;
}

// The extent of the view, in radians.
ViewPoint extentOf(const IScreenGeometry& screen) {
    const EyeView view = viewOf(screen);
    Bounds<2> bounds;
    for (const Shape& shape : surfaceShapes(PlotSurface(screen), view.camera))
        for (const ViewPoint& point : shape.points)
            bounds.include({view.camera.angleOf(point[0]), view.camera.angleOf(point[1])});
    return bounds.extent();
}

TEST(PlotCamera, FisheyeShowsAnglesAsDistances) {
    expectNear(fisheye(kAhead).project({0.0, 7.0, 0.0}), {0.0, 0.0});
    expectNear(fisheye(kAhead).project({2.0, 2.0, 0.0}), {kPi / 4, 0.0});
    expectNear(fisheye(kAhead).project({0.0, 0.0, 0.1}), {0.0, kPi / 2});
    expectNear(fisheye(kAhead).project({0.0, -3.0, -3.0}), {0.0, -kPi * 3 / 4});
    EXPECT_NEAR(length(fisheye(kAhead).project({0.0, -1.0, 0.0})), kPi, 1e-9);
}

TEST(PlotCamera, SeenUpwardsTheFrontIsBelowAndTheRightStaysOnTheRight) {
    expectNear(fisheye(kUp).project(kAhead), {0.0, -kPi / 2});
    expectNear(fisheye(kUp).project({1.0, 0.0, 0.0}), {kPi / 2, 0.0});
    expectNear(fisheye(kUp * -1.0).project(kAhead), {0.0, kPi / 2});
    expectNear(fisheye(kUp * -1.0).project({1.0, 0.0, 0.0}), {kPi / 2, 0.0});
    // The same if the heading has rounding errors.
    EXPECT_NEAR(fisheye({1e-9, 1e-9, 1.0}).project(kAhead)[1], -kPi / 2, 1e-6);
}

TEST(PlotCamera, PanoramaShowsAzimuthAndElevation) {
    const Camera camera = Camera::fromEye(kOrigin, kAhead, Projection::Panorama);
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        const double azimuth = rng.uniform(-3.1, 3.1);
        const double elevation = rng.uniform(-1.5, 1.5);
        const Point<double, 3> direction(std::sin(azimuth) * std::cos(elevation),
                                         std::cos(azimuth) * std::cos(elevation), std::sin(elevation));
        const ViewPoint seen = camera.project(direction * rng.uniform(0.1, 9.0));
        ASSERT_NEAR(seen[0], azimuth, 1e-9);
        ASSERT_NEAR(seen[1], elevation, 1e-9);
    }
}

TEST(PlotCamera, PerspectiveKeepsStraightLines) {
    const Camera camera = Camera::fromEye({0.0, -2.0, 0.0}, kAhead, Projection::Perspective);
    expectNear(camera.project({1.0, 0.0, 0.5}), {1.0, 0.5});
    EXPECT_NEAR(camera.angleOf(camera.project({2.0, 0.0, 0.0})[0]), kPi / 4, 1e-12);
    std::array<ViewPoint, 2> seen;
    EXPECT_FALSE(camera.projectShape(std::array{kOrigin, Point<double, 3>(0.0, -3.0, 0.0)}, seen))
        << "behind the camera";
}

TEST(PlotCamera, ShapesAcrossTheEdgeOfAPanoramaStayTogether) {
    const Camera camera = Camera::fromEye(kOrigin, kAhead, Projection::Panorama);
    std::array<ViewPoint, 2> seen;
    ASSERT_TRUE(camera.projectShape(
        std::array{Point<double, 3>(-0.1, -1.0, 0.0), Point<double, 3>(0.1, -1.0, 0.0)}, seen));
    EXPECT_NEAR(length(seen[1] - seen[0]), 2 * std::atan(0.1), 1e-9);
}

TEST(PlotCamera, ShapeAroundTheOppositeOfAFisheyeAxisIsNotShown) {
    std::array<ViewPoint, 3> seen;
    EXPECT_FALSE(fisheye(kAhead).projectShape(
        std::array{Point<double, 3>(-0.1, -1.0, -0.1), Point<double, 3>(0.2, -1.0, -0.1),
                   Point<double, 3>(-0.1, -1.0, 0.2)},
        seen));
}

TEST(PlotEyeView, DomeIsAFisheyePictureOfItsFrontFromItsCenter) {
    for (const Point<double, 3>& center : {kOrigin, Point<double, 3>(30.0, -20.0, 5.0)}) {
        const SphericalScreen dome(center, 5.0, -kPi, kPi, 0.0, kPi / 2);
        EXPECT_EQ(viewOf(dome).place, EyePlace::Center);
        EXPECT_EQ(viewOf(dome).camera.projection(), Projection::Fisheye);
        EXPECT_NEAR(viewOf(dome).maxAngle, kPi / 2, 1e-9);
        EXPECT_NEAR(extentOf(dome)[0], kPi, 1e-6);
        EXPECT_NEAR(extentOf(dome)[1], kPi, 1e-6);
        EXPECT_THAT(seenSides(dome), Each(StartsWith(kFrontClass)));
    }
}

TEST(PlotEyeView, SphereShowsAllOfItsCells) {
    const SphericalScreen sphere(kOrigin, 5.0, -kPi, kPi, -kPi / 2, kPi / 2);
    const PlotSurface surface(sphere);
    EXPECT_EQ(seenSides(sphere).size(), static_cast<std::size_t>(surface.columns() * surface.rows()));
    EXPECT_NEAR(viewOf(sphere).maxAngle, kPi, 1e-6);
}

TEST(PlotEyeView, CylinderIsAPanoramaOfItsAngles) {
    const double arc = 210.0 / 180.0 * kPi;
    const CylinderScreen cylinder(Point<double, 3>(3.0, 4.0, 5.0), 3.0, -arc / 2, arc / 2, 2.0);
    EXPECT_EQ(viewOf(cylinder).place, EyePlace::Center);
    EXPECT_EQ(viewOf(cylinder).camera.projection(), Projection::Panorama);
    EXPECT_NEAR(extentOf(cylinder)[0], arc, 1e-6);
    EXPECT_NEAR(extentOf(cylinder)[1], 2 * std::atan(1.0 / 3.0), 1e-6);
    EXPECT_THAT(seenSides(cylinder), Each(StartsWith(kFrontClass)));
    const CylinderScreen full(kOrigin, 3.0, 0.0, 2 * kPi, 2.0);
    EXPECT_NEAR(extentOf(full)[0], 2 * kPi, 1e-6);
}

TEST(PlotEyeView, WallsAreInPerspectiveFromTheEyePoint) {
    const FlatScreen wall(4.0, 3.0);
    EXPECT_EQ(viewOf(wall).place, EyePlace::EyePoint);
    EXPECT_EQ(viewOf(wall).camera.projection(), Projection::Perspective);
    EXPECT_NEAR(extentOf(wall)[0], kPi / 2, 1e-9);
    EXPECT_THAT(seenSides(wall), Each(StartsWith(kFrontClass)));
    // Up to 89.9 degrees to the side.
    EXPECT_EQ(viewOf(FlatScreen(2000.0, 3.0)).camera.projection(), Projection::Perspective);
    EXPECT_EQ(viewOf(RuledSurfaceScreen(4.0, 2.5, -0.5, 0.5, -0.4, 0.4)).camera.projection(),
              Projection::Perspective);
}

TEST(PlotEyeView, AllRandomScreensHaveFiniteShapes) {
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const SphericalScreen screen = randomSphere(rng);
        const PlotSurface surface(screen);
        if (!surface.isDrawable()) continue;
        for (const Projection projection :
             {Projection::Fisheye, Projection::Panorama, Projection::Perspective}) {
            const Camera camera = Camera::fromEye(rng.point(-2.0, 2.0), kAhead, projection);
            for (const Shape& shape : surfaceShapes(surface, camera))
                for (const ViewPoint& point : shape.points)
                    ASSERT_TRUE(std::isfinite(point[0]) && std::isfinite(point[1]));
        }
    }
}

}  // namespace
}  // namespace quarn::test
