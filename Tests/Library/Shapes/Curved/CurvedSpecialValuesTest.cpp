// Special values in each parameter and each argument, alone and in pairs, against the reference
// implementation.
#include "Library/Shapes/Curved/CurvedCases.h"
#include "Support/SpecialArguments.h"

namespace quarn::test {
namespace {

template <class Case>
class CurvedSpecialValuesTest : public ::testing::Test {
protected:
    using Reference = typename Case::Reference;

    static Reference referenceOf(const std::array<double, Case::kParameters>& numbers) {
        Reference reference;
        std::size_t i = 0;
        fillParameters(reference, [&] { return numbers[i++]; });
        return reference;
    }
    // A section around azimuth 0 whose center lies off the origin.
    static constexpr std::array<double, Case::kParameters> kUsual = [] {
        std::array<double, Case::kParameters> numbers{0.25, -0.5, 0.125, 2.0, -1.0, 1.5, 0.75};
        if (Case::kParameters == 8) {
            numbers[6] = -0.5;
            numbers[7] = 0.75;
        }
        return numbers;
    }();
    static Reference usual() { return referenceOf(kUsual); }
};
TYPED_TEST_SUITE(CurvedSpecialValuesTest, CurvedShapes, CurvedNames);

TYPED_TEST(CurvedSpecialValuesTest, InEveryParameter) {
    withSpecialArguments(this->kUsual, [this](const auto& numbers) {
        const auto reference = this->referenceOf(numbers);
        const auto screen = TypeParam::screenOf(reference);
        const Point3 from(0.5, -3.0, 0.25);
        const Point3 to(0.25, 1.5, 0.125);
        EXPECT_TRUE(sameBits(screen.getScreenNormal(from), reference.normalAt(from)));
        EXPECT_TRUE(sameBits(screen.mapInto2D(to, false), reference.uvOf(to)));
        Point3 point;
        EXPECT_TRUE(screen.mapInto3D(Point2(0.25, 0.75), point, true));
        EXPECT_TRUE(sameBits(point, reference.positionAt(0.25, 0.75)));
        for (const int sign : {-1, 0, 1})
            EXPECT_TRUE(sameBits(screen.intersectExtrapolatedWithSpecifiedNormal(from, to, sign),
                                 reference.hitsOfSide(from, to, sign)));
        Samples samples;
        screen.sampleHorizontally(0.25, 0.0, 1.0, 3, 7, samples, false);
        EXPECT_TRUE(sameBits(samples, reference.samples({0.25, 0.0, 1.0, 3, 7, false})));
        EXPECT_TRUE(sameBits(screen.getDefaultCalibrationPoints(2, 2), reference.calibrationPoints(2, 2)));
        EXPECT_TRUE(sameBits(screen.getCenterOfScreenHeading(), reference.heading()));
        EXPECT_TRUE(sameBits(screen.getMaxAngleFromHeading(), reference.maxAngle()));
        EXPECT_EQ(screen.isValid(), reference.radius >= 0.0);
        if (!TypeParam::endsSectionTest(reference)) return;
        EXPECT_EQ(screen.isOnScreenSection(point), reference.isOnSection(point));
        EXPECT_TRUE(sameBits(screen.intersect(from, to), reference.hits(from, to)));
        EXPECT_TRUE(sameBits(screen.getClosestPoint(from), reference.closestPoint(from)));
    });
}

TYPED_TEST(CurvedSpecialValuesTest, InPositions) {
    const auto reference = this->usual();
    const auto screen = TypeParam::screenOf(reference);
    const Point3 onWall = reference.positionAt(0.5, 0.5);
    withSpecialArguments<3>({onWall[0], onWall[1], onWall[2]}, [&](const auto& numbers) {
        const Point3 point(numbers[0], numbers[1], numbers[2]);
        EXPECT_EQ(screen.isOnScreenSection(point), reference.isOnSection(point));
        EXPECT_TRUE(sameBits(screen.getScreenNormal(point), reference.normalAt(point)));
        EXPECT_TRUE(sameBits(screen.mapInto2D(point, true), reference.uvOf(point)));
        EXPECT_TRUE(sameBits(screen.getClosestPoint(point), reference.closestPoint(point)));
    });
}

TYPED_TEST(CurvedSpecialValuesTest, InUV) {
    const auto reference = this->usual();
    const auto screen = TypeParam::screenOf(reference);
    withSpecialArguments<2>({0.5, 0.25}, [&](const auto& numbers) {
        Point3 point(9, 9, 9);
        const Point3 expected = reference.positionAt(numbers[0], numbers[1]);
        EXPECT_EQ(screen.mapInto3D(Point2(numbers[0], numbers[1]), point, false),
                  reference.isOnSection(expected));
        EXPECT_TRUE(sameBits(point, expected));
        EXPECT_TRUE(screen.mapInto3D(Point2(numbers[0], numbers[1]), point, true));
    });
}

TYPED_TEST(CurvedSpecialValuesTest, InRays) {
    auto reference = this->usual();
    for (const double shift : {0.0, 0.25}) {
        reference.cx = shift;
        reference.cy = shift;
        auto screen = TypeParam::screenOf(reference);
        withSpecialArguments<6>({0.5, -3.0, 0.25, 0.25, 1.5, 0.125}, [&](const auto& numbers) {
            const Point3 from(numbers[0], numbers[1], numbers[2]);
            const Point3 to(numbers[3], numbers[4], numbers[5]);
            EXPECT_TRUE(sameBits(screen.intersect(from, to), reference.hits(from, to)));
            for (const int sign : {-1, 0, 1})
                EXPECT_TRUE(sameBits(screen.intersectExtrapolatedWithSpecifiedNormal(from, to, sign),
                                     reference.hitsOfSide(from, to, sign)));
            Intersection result;
            const auto expected = reference.closestIntersection(from, to, false);
            EXPECT_EQ(ScreenGeometry::getClosestIntersection(from, to, &screen, result, false),
                      expected.has_value());
            EXPECT_TRUE(sameBits(result, expected.value_or(Intersection())));
        });
    }
}

TYPED_TEST(CurvedSpecialValuesTest, InRowsOfAGrid) {
    const auto reference = this->usual();
    const auto screen = TypeParam::screenOf(reference);
    withSpecialArguments<3>({0.5, 0.0, 1.0}, [&](const auto& numbers) {
        for (const bool extrapolate : {false, true}) {
            const GridRow row{numbers[0], numbers[1], numbers[2], 3, -1, extrapolate};
            Samples samples;
            screen.sampleHorizontally(row.v, row.uStart, row.uEnd, row.count, row.row, samples, extrapolate);
            EXPECT_TRUE(sameBits(samples, reference.samples(row)));
        }
    });
}

}  // namespace
}  // namespace quarn::test
