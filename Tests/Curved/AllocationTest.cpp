// How often queries take memory. The counting `new` serves a whole program, so these tests are one of their own.
#include <new>
#include <numbers>

#include "AllocationCount.h"
#include "CurvedCases.h"

namespace quarn::test {
namespace {

// How often `query` takes memory.
template <class Query>
int allocationsOf(const Query& query) {
    const int before = allocationCount();
    query();
    return allocationCount() - before;
}

template <class Case>
class CurvedAllocation : public ::testing::Test {
protected:
    static typename Case::Screen screen() {
        typename Case::Reference r;
        r.radius = 2.0;
        r.minTheta = -std::numbers::pi;
        r.maxTheta = std::numbers::pi;
        if constexpr (std::is_same_v<Case, CylinderCase>) {
            r.height = 4.0;
        } else {
            r.minPhi = -1.5;
            r.maxPhi = 1.5;
        }
        return Case::screenOf(r);
    }
};
TYPED_TEST_SUITE(CurvedAllocation, CurvedShapes, CurvedNames);

TEST(AllocationCount, CountsEachCall) {
    EXPECT_EQ(allocationsOf([] { ::operator delete(::operator new(3)); }), 1);
}

TYPED_TEST(CurvedAllocation, QueriesOfOnePositionTakeNone) {
    const auto screen = this->screen();
    const IScreenGeometry& contract = screen;
    const Point3 position(0.5, 1.5, 0.25);
    const int count = allocationsOf([&] {
        Point3 point;
        Point3 other;
        (void)contract.isOnScreenSection(position);
        (void)contract.getScreenNormal(position);
        (void)contract.mapInto2D(position, false);
        (void)contract.mapInto3D(Point2(0.25, 0.5), point, true);
        (void)contract.mapInto3D(Point2(0.25, 0.5), point, false);
        (void)contract.getClosestPoint(position);
        (void)contract.getShortestDistance(position);
        (void)contract.getEyepoint();
        (void)contract.getCenterOfScreenHeading();
        (void)contract.getUniqueDataHash();
        contract.getBounds(&point, &other);
        screen.getCentreFromScreenBounds(&point);
        (void)(contract.isValid() && contract.isPlanar() && contract.hasParameterization());
    });
    EXPECT_EQ(count, 0);
}

TYPED_TEST(CurvedAllocation, RaysThatMissTakeNone) {
    const auto screen = this->screen();
    const int count = allocationsOf([&] {
        (void)screen.intersect(Point3(5, -5, 0), Point3(5, 5, 0));
        (void)screen.intersect(Point3(0, 0, 0), Point3(0, 0, 0));
        (void)screen.intersect(Point3(0, -5, 9), Point3(0, 5, 9));
        (void)screen.intersectExtrapolatedWithSpecifiedNormal(Point3(0, -5, 0), Point3(0, 5, 0), 0);
    });
    EXPECT_EQ(count, 0);
}

TYPED_TEST(CurvedAllocation, HitsTakeTheListThatHoldsThem) {
    const auto screen = this->screen();
    const auto shoot = [&](const Point3& from) { return screen.intersect(from, Point3(0, 5, 0)); };
    ASSERT_EQ(shoot(Point3()).count(), 1);
    EXPECT_EQ(allocationsOf([&] { (void)shoot(Point3()); }), 1);
    ASSERT_EQ(shoot(Point3(0, -5, 0)).count(), 2);
    EXPECT_LE(allocationsOf([&] { (void)shoot(Point3(0, -5, 0)); }), 2) << "no more than one for each hit";
    EXPECT_EQ(allocationsOf([&] {
                  (void)screen.intersectExtrapolatedWithSpecifiedNormal(Point3(0, -5, 0), Point3(0, 5, 0), 1);
              }),
              1);
}

TYPED_TEST(CurvedAllocation, CalibrationPointsTakeTheirListAlone) {
    const auto screen = this->screen();
    EXPECT_EQ(allocationsOf([&] { (void)screen.getDefaultCalibrationPoints(5, 4); }), 1);
    EXPECT_EQ(allocationsOf([&] { (void)screen.getDefaultCalibrationPoints(0, 4); }), 0);
}

}  // namespace
}  // namespace quarn::test
