#include <gtest/gtest.h>

#include <array>

#include <QuarnScreen/FlatScreen.h>

#include "Reference/Shapes/ReferenceContract.h"
#include "Reference/Shapes/ReferenceFlat.h"
#include "Support/SpecialValues.h"

using namespace quarn::test;

namespace {

// Calls check(reference, screen) for every pair of special sizes.
template <class Check>
void forEachSpecialScreen(const Check& check) {
    for (const double w : kSpecialValues) {
        for (const double h : kSpecialValues) {
            SCOPED_TRACE(::testing::Message() << "width " << w << " height " << h);
            check(ReferenceFlat{w, h}, FlatScreen(w, h));
            if (::testing::Test::HasFailure()) return;
        }
    }
}

template <class Check>
void forEachSpecialPair(const Check& check) {
    for (const double a : kSpecialValues)
        for (const double b : kSpecialValues) check(a, b);
}

}  // namespace

TEST(FlatScreenSpecialValues, InMapInto2D) {
    forEachSpecialScreen([](const ReferenceFlat& reference, const FlatScreen& screen) {
        forEachSpecialPair([&](double x, double z) {
            for (const double y : kSpecialValues)
                EXPECT_TRUE(sameBits(screen.mapInto2D({x, y, z}, false), reference.uvOf({x, 0.0, z})));
        });
    });
}

TEST(FlatScreenSpecialValues, InMapInto3D) {
    forEachSpecialScreen([](const ReferenceFlat& reference, const FlatScreen& screen) {
        forEachSpecialPair([&](double u, double v) {
            const Point3 expected = reference.positionAt(u, v);
            Point3 point;
            EXPECT_EQ(screen.mapInto3D(Point2(u, v), point, false), reference.isOnSection(expected));
            EXPECT_TRUE(sameBits(point, expected));
            EXPECT_TRUE(screen.mapInto3D(Point2(u, v), point, true));
        });
    });
}

TEST(FlatScreenSpecialValues, InSectionTestAndClosestPoint) {
    forEachSpecialScreen([](const ReferenceFlat& reference, const FlatScreen& screen) {
        forEachSpecialPair([&](double x, double z) {
            for (const double y : kSpecialValues)
                EXPECT_EQ(screen.isOnScreenSection(Point3(x, y, z)), reference.isOnSection({x, y, z}));
            EXPECT_TRUE(sameBits(screen.getClosestPoint({x, 0, z}), reference.closestPoint({x, 0, z})));
        });
    });
}

TEST(FlatScreenSpecialValues, InEveryPairOfRayCoordinates) {
    // An ordinary ray of which any two coordinates are replaced.
    constexpr std::array<double, 6> kOrdinary = {0.25, -2.0, 0.5, 0.5, 1.0, -0.25};
    const ReferenceFlat reference{4.0, 3.0};
    const FlatScreen screen(4.0, 3.0);
    for (std::size_t i = 0; i < kOrdinary.size(); ++i) {
        for (std::size_t j = i + 1; j < kOrdinary.size(); ++j) {
            forEachSpecialPair([&](double a, double b) {
                auto ray = kOrdinary;
                ray[i] = a;
                ray[j] = b;
                const Point3 from(ray[0], ray[1], ray[2]);
                const Point3 to(ray[3], ray[4], ray[5]);
                EXPECT_TRUE(sameBits(screen.intersect(from, to), asSet(reference.hit(from, to))));
                EXPECT_TRUE(sameBits(screen.intersectExtrapolatedWithSpecifiedNormal(from, to, 1),
                                     asSet(reference.planeHit(from, to))));
            });
        }
    }
}

TEST(FlatScreenSpecialValues, InTheSizesThatARayMeets) {
    forEachSpecialScreen([](const ReferenceFlat& reference, const FlatScreen& screen) {
        const Point3 from(0.25, -2.0, 0.5);
        const Point3 to(0.5, 1.0, -0.25);
        EXPECT_TRUE(sameBits(screen.intersect(from, to), asSet(reference.hit(from, to))));
    });
}

TEST(FlatScreenSpecialValues, InHorizontalSamples) {
    for (const ReferenceFlat& reference : {ReferenceFlat{4.0, 3.0}, ReferenceFlat{1e300, 5e-324}}) {
        const FlatScreen screen(reference.w, reference.h);
        forEachSpecialPair([&](double uStart, double uEnd) {
            for (const double v : kSpecialValues) {
                for (const bool extrapolate : {false, true}) {
                    IScreenGeometry::GridSamples samples;
                    screen.sampleHorizontally(v, uStart, uEnd, 4, 2, samples, extrapolate);
                    EXPECT_TRUE(
                        sameBits(samples, reference.horizontalSamples(v, uStart, uEnd, 4, 2, extrapolate)));
                }
            }
        });
    }
}

TEST(FlatScreenSpecialValues, InTheSizesOfGridOutlineAndCalibrationPoints) {
    forEachSpecialScreen([](const ReferenceFlat& reference, const FlatScreen& screen) {
        const auto positionsAt = [&](const std::vector<Point2>& path) {
            std::vector<Point3> positions;
            for (const Point2& uv : path) positions.push_back(reference.positionAt(uv[0], uv[1]));
            return positions;
        };
        IScreenGeometry::Polylines grid;
        screen.sampleGrid(grid, 3);
        EXPECT_TRUE(sameBits(grid, IScreenGeometry::Polylines{positionsAt(gridPath(3))}));

        IScreenGeometry::Polylines expected;
        for (const auto& edge : boundaryPath()) expected.push_back(positionsAt(edge));
        IScreenGeometry::Polylines boundary;
        screen.sampleBoundary(boundary);
        EXPECT_TRUE(sameBits(boundary, expected));

        for (const int count : {1, 2, 3})
            EXPECT_TRUE(sameBits(screen.getDefaultCalibrationPoints(count, 2),
                                 reference.calibrationPoints(count, 2)));
    });
}

TEST(FlatScreenSpecialValues, InBothPointsOfTheClosestIntersection) {
    FlatScreen screen(4.0, 3.0);
    const ReferenceFlat reference{4.0, 3.0};
    forEachSpecialPair([&](double a, double b) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            Point3 from(0.5, -1.0, 0.25);
            Point3 direction(0.125, 1.0, 0.0);
            from[axis] = a;
            direction[axis] = b;
            const auto expected = reference.closestIntersection(from, direction, false);
            Intersection result;
            EXPECT_EQ(ScreenGeometry::getClosestIntersection(from, direction, &screen, result, false),
                      expected.has_value());
            EXPECT_TRUE(sameBits(result, expected.value_or(Intersection())));
        }
    });
}
