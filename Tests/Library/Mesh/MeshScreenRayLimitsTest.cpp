#include <gtest/gtest.h>

#include <xmmintrin.h>
#include <algorithm>
#include <array>
#include <cfenv>
#include <cmath>
#include <limits>

#include "Support/Mesh/MeshCases.h"
#include "Support/Mesh/TriangleScreen.h"
#include "Support/SpecialArguments.h"
#include "Support/WildNumbers.h"

using namespace quarn::test;

namespace {

constexpr float kMaxFloat = 1.844e18F;
const double kGreatest = static_cast<double>(kMaxFloat);
const double kNextGreater = static_cast<double>(std::nextafter(kMaxFloat, 2e18F));

// Control bits of the processor's floating point: all but the flags that record what has happened.
unsigned int floatingPointControl() {
    constexpr unsigned int kFlags = 0x3F;
    return _mm_getcsr() & ~kFlags;
}

int hitsOfRay(const TriangleScreen& screen, const Point3& start, const Point3& end) {
    return screen.intersect(start, end).count();
}

}  // namespace

TEST(MeshScreenRayLimits, GreatestStartThatIsTracedIsHitAndTheNextIsNot) {
    const TriangleScreen screen(flatGrid({1, 1}));
    EXPECT_EQ(hitsOfRay(screen, {0.3, -kGreatest, 0.1}, {0.3, 0.0, 0.1}), 1);
    EXPECT_EQ(hitsOfRay(screen, {0.3, kGreatest, 0.1}, {0.3, 0.0, 0.1}), 1);
    EXPECT_EQ(hitsOfRay(screen, {0.3, -kNextGreater, 0.1}, {0.3, -kNextGreater / 2.0, 0.1}), 0);
    EXPECT_EQ(hitsOfRay(screen, {0.3, kNextGreater, 0.1}, {0.3, kNextGreater / 2.0, 0.1}), 0);
}

TEST(MeshScreenRayLimits, GreatestDirectionThatIsTracedIsHitAndTheNextIsNot) {
    const TriangleScreen screen(flatGrid({1, 1}));
    EXPECT_EQ(hitsOfRay(screen, {0.3, -1.0, 0.1}, {0.3, kGreatest, 0.1}), 1);
    EXPECT_EQ(hitsOfRay(screen, {0.3, 1.0, 0.1}, {0.3, -kGreatest, 0.1}), 1);
    EXPECT_EQ(hitsOfRay(screen, {0.3, -1.0, 0.1}, {0.3, kNextGreater, 0.1}), 0);
    EXPECT_EQ(hitsOfRay(screen, {0.3, 1.0, 0.1}, {0.3, -kNextGreater, 0.1}), 0);
}

// The tracer ends the process on some of these rays.
TEST(MeshScreenRayLimits, RaysOfSpecialValuesAreSurvived) {
    const TriangleScreen screen(wave({4, 4}));
    withSpecialArguments<6>({0.3, -1.0, 0.1, 0.3, 1.0, 0.1}, [&](const std::array<double, 6>& n) {
        const IntersectionSet hits = screen.intersect({n[0], n[1], n[2]}, {n[3], n[4], n[5]});
        ASSERT_LE(hits.count(), 10);
        const bool isTraced =
            std::all_of(n.begin(), n.end(), [](double number) { return std::abs(number) <= kGreatest; });
        ASSERT_TRUE(isTraced || hits.empty());
    });
}

TEST(MeshScreenRayLimits, WildRaysAreSurvived) {
    const TriangleScreen screen(dome({6, 6}));
    for (int i = 0; i < seedCount(20'000); ++i) {
        Rng rng(i);
        const Point3 start = wildPoint<3>(rng);
        ASSERT_LE(
            hitsOfRay(screen, start, rng.coin() ? wildPoint<3>(rng) : start + rng.spreadPoint(-150, 60)), 10);
    }
}

TEST(MeshScreenRayLimits, RayWithoutADirectionHitsNothing) {
    const TriangleScreen screen(flatGrid({1, 1}));
    EXPECT_EQ(hitsOfRay(screen, {0.3, -1.0, 0.1}, {0.3, -1.0, 0.1}), 0);
    EXPECT_EQ(hitsOfRay(screen, {0.3, 0.0, 0.1}, {0.3, 0.0, 0.1}), 0);
    // Below single precision a direction is zero as well.
    EXPECT_EQ(hitsOfRay(screen, {0.0, -1e-60, 0.0}, {0.0, 1e-60, 0.0}), 0);
}

// Coordinates beyond single precision are infinite to the tracer, which passes over such triangles.
TEST(MeshScreenRayLimits, MeshesOfAnyScaleAreSurvived) {
    for (int i = 0; i < seedCount(400); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh = soup(rng, 20);
        for (Triangle& triangle : mesh) {
            if (rng.coin()) continue;
            TriangleVertex& vertex = triangle.vertices[static_cast<std::size_t>(rng.integer(0, 2))];
            const double number = wildNumber(rng);
            // A NaN agrees with no corner, and a boundary walk that reaches one may not terminate.
            if (!std::isnan(number)) vertex.position[static_cast<std::size_t>(rng.integer(0, 2))] = number;
            computeFields(triangle);
        }
        const TriangleScreen screen(mesh);
        for (int ray = 0; ray < 20; ++ray) {
            const Point3 start = rng.point(-2.0, 2.0);
            for (const Intersection& hit : screen.intersect(start, anyOf(mesh, rng).centroid)) {
                ASSERT_GE(hit.triangleIndex, 0);
                ASSERT_LT(hit.triangleIndex, 20);
            }
        }
    }
}

TEST(MeshScreenRayLimits, LeaveTheProcessorsRoundingAsItWas) {
    constexpr unsigned int kFlushToZero = 0x8000;
    constexpr unsigned int kDenormalsAreZero = 0x0040;
    const unsigned int before = _mm_getcsr();
    for (const unsigned int extra : {0U, kFlushToZero | kDenormalsAreZero}) {
        for (const int rounding : {FE_TONEAREST, FE_UPWARD}) {
            SCOPED_TRACE(::testing::Message() << "control " << extra << ", rounding " << rounding);
            std::fesetround(rounding);
            _mm_setcsr(_mm_getcsr() | extra);
            const unsigned int control = floatingPointControl();
            {
                const TriangleScreen screen(dome({20, 20}));
                EXPECT_EQ(floatingPointControl(), control);
                (void)screen.intersect({0.0, 0.0, 0.0}, {0.1, 1.0, 0.1});
                (void)screen.intersect({0.0, 0.0, 0.0}, {0.1, 1e30, 0.1});
                (void)screen.getScreenNormal({0.0, 5.0, 0.0});
                (void)screen.getClosestPoint({0.0, 5.0, 0.0});
                EXPECT_EQ(floatingPointControl(), control);
                EXPECT_EQ(std::fegetround(), rounding);
            }
            EXPECT_EQ(floatingPointControl(), control);
            std::fesetround(FE_TONEAREST);
            _mm_setcsr(before);
        }
    }
}
