#include <gtest/gtest.h>
#include <log4cxx/logger.h>

#include <memory>
#include <numbers>
#include <string>
#include <vector>

#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/SphericalScreen.h>

#include "Library/Memory/CountedAllocations.h"

using quarn::test::allocationCount;

namespace {

using Point2 = Point<double, 2>;
using Point3 = Point<double, 3>;

// How often `query` takes memory.
template <class Query>
long allocationsOf(const Query& query) {
    const long before = allocationCount();
    query();
    return allocationCount() - before;
}

std::shared_ptr<const ScreenGeometry> screenNamed(const std::string& shape) {
    constexpr double kPi = std::numbers::pi;
    if (shape == "Cylinder") return std::make_shared<CylinderScreen>(Point3(), 2.0, -kPi, kPi, 4.0);
    if (shape == "Sphere") return std::make_shared<SphericalScreen>(Point3(), 2.0, -kPi, kPi, -1.5, 1.5);
    return std::make_shared<RuledSurfaceScreen>(4.0, 3.0, -0.75, 0.75, -0.5, 0.5);
}

class CurvedAllocation : public ::testing::TestWithParam<std::string> {
protected:
    // A log line allocates memory, so no level is enabled.
    void SetUp() override { log4cxx::Logger::getLogger("Quarn")->setLevel(log4cxx::Level::getOff()); }
    void TearDown() override { log4cxx::Logger::getLogger("Quarn")->setLevel(nullptr); }

    std::shared_ptr<const ScreenGeometry> screen = screenNamed(GetParam());
};

}  // namespace

TEST_P(CurvedAllocation, QueriesOfOnePositionTakeNone) {
    const Point3 position(0.5, 1.5, 0.25);
    const long count = allocationsOf([&] {
        Point3 point;
        Point3 other;
        for (const Point3& place : {position, Point3(9.0, 9.0, 9.0)}) {
            (void)screen->isOnScreenSection(place);
            (void)screen->getScreenNormal(place);
            (void)screen->mapInto2D(place, false);
            (void)screen->getClosestPoint(place);
            (void)screen->getShortestDistance(place);
        }
        (void)screen->mapInto3D(Point2(0.25, 0.5), point, true);
        (void)screen->mapInto3D(Point2(0.25, 0.5), point, false);
        (void)screen->getEyepoint();
        (void)screen->getCenterOfScreenHeading();
        (void)screen->getUniqueDataHash();
        screen->getBounds(&point, &other);
        screen->getCentreFromScreenBounds(&point);
        (void)(screen->isValid() && screen->isPlanar() && screen->hasParameterization());
    });
    EXPECT_EQ(count, 0);
}

TEST_P(CurvedAllocation, RaysThatMissTakeNone) {
    const long count = allocationsOf([&] {
        (void)screen->intersect(Point3(5, -5, 0), Point3(5, 5, 0));
        (void)screen->intersect(Point3(0, 0, 0), Point3(0, 0, 0));
        (void)screen->intersect(Point3(0, -5, 9), Point3(0, 5, 9));
    });
    EXPECT_EQ(count, 0);
}

TEST_P(CurvedAllocation, AHitTakesTheListThatHoldsIt) {
    const auto shoot = [&](const Point3& from) { return screen->intersect(from, Point3(0, 5, 0)); };
    ASSERT_EQ(shoot(Point3()).count(), 1);
    EXPECT_EQ(allocationsOf([&] { (void)shoot(Point3()); }), 1);
    const int hitsFromOutside = shoot(Point3(0, -5, 0)).count();
    EXPECT_LE(allocationsOf([&] { (void)shoot(Point3(0, -5, 0)); }), hitsFromOutside);
    EXPECT_LE(allocationsOf([&] {
                  (void)screen->intersectExtrapolatedWithSpecifiedNormal(Point3(0, -5, 0), Point3(0, 5, 0),
                                                                         1);
              }),
              1);
}

TEST_P(CurvedAllocation, CalibrationPointsTakeTheirListAlone) {
    EXPECT_EQ(allocationsOf([&] { (void)screen->getDefaultCalibrationPoints(5, 4); }), 1);
    EXPECT_EQ(allocationsOf([&] { (void)screen->getDefaultCalibrationPoints(0, 4); }), 0);
}

// Besides the points of each edge, a list of the edges before and after they are moved.
TEST_P(CurvedAllocation, BoundaryTakesThePointsOfEachEdgeOnce) {
    constexpr long kLists = 2;
    IScreenGeometry::Polylines boundary;
    const long count = allocationsOf([&] { screen->sampleBoundary(boundary); });
    ASSERT_EQ(boundary.size(), 4U);
    long edges = 0;
    for (const auto& edge : boundary) {
        edges += allocationsOf([&] {
            std::vector<Point3> appended;
            if (GetParam() == "Ruled") appended.reserve(edge.size());
            for (const Point3& point : edge) appended.push_back(point);
        });
    }
    EXPECT_EQ(count, kLists + edges);
}

INSTANTIATE_TEST_SUITE_P(Shapes, CurvedAllocation, ::testing::Values("Cylinder", "Sphere", "Ruled"),
                         [](const auto& shape) { return shape.param; });
