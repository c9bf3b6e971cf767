#include <QuarnKit/Compare/SurfaceDistance.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "Support/Bits.h"
#include "Support/Mesh/Meshes.h"

namespace quarn::test {
namespace {

using Point3 = Point<double, 3>;

constexpr double kAccuracy = 1e-4;

std::vector<TriangleCorners> cornersOf(const Mesh& mesh) {
    std::vector<TriangleCorners> triangles;
    for (const Triangle& triangle : mesh) {
        const auto& [a, b, c] = triangle.vertices;
        triangles.push_back({a.position, b.position, c.position});
    }
    return triangles;
}

SurfaceDistance distanceBetween(const std::vector<TriangleCorners>& from,
                                const std::vector<TriangleCorners>& to, std::size_t threads = 2) {
    ThreadPool pool(threads);
    return surfaceDistance(from, TriangleTree(to), {.accuracy = kAccuracy}, pool);
}

std::vector<TriangleCorners> moved(std::vector<TriangleCorners> triangles, const Point3& way) {
    for (TriangleCorners& triangle : triangles)
        for (Point3& corner : triangle) corner = corner + way;
    return triangles;
}

void expectWithin(const SurfaceDistance& distance, double greatest, double mean) {
    const double accuracy = std::max(kAccuracy, greatest * 1e-3);
    EXPECT_LE(distance.max, greatest + 1e-12);
    EXPECT_GE(distance.bound, greatest - 1e-12);
    EXPECT_LE(distance.bound - distance.max, accuracy * (1.0 + 1e-9));
    EXPECT_NEAR(distance.mean, mean, accuracy);
}

TEST(SurfaceDistance, OfAMeshFromItselfIsNothing) {
    for (const Mesh& mesh : {wave({40, 30}), dome({30, 20}), flatGrid({2, 1})}) {
        const auto triangles = cornersOf(mesh);
        const SurfaceDistance distance = distanceBetween(triangles, triangles);
        EXPECT_LE(distance.max, 1e-14);
        EXPECT_LE(distance.mean, 1e-14);
        EXPECT_LE(distance.bound, kAccuracy + 1e-14);
    }
}

TEST(SurfaceDistance, OfParallelPlanesIsTheirOffset) {
    const auto coarse = cornersOf(flatGrid({1, 1}));
    const auto fine = moved(cornersOf(flatGrid({37, 23})), {0.0, 0.25, 0.0});
    expectWithin(distanceBetween(coarse, fine), 0.25, 0.25);
    expectWithin(distanceBetween(fine, coarse), 0.25, 0.25);
}

TEST(SurfaceDistance, IsMeasuredEachWay) {
    // A wall of 4 by 3, and its middle alone: 2 by 3. The farthest side is 1 away, and half of the
    // area not at all.
    const auto wide = cornersOf(flatGrid({5, 4}, {4.0, 3.0}));
    const auto narrow = cornersOf(flatGrid({7, 3}, {2.0, 3.0}));
    expectWithin(distanceBetween(wide, narrow), 1.0, 0.25);
    expectWithin(distanceBetween(narrow, wide), 0.0, 0.0);
}

TEST(SurfaceDistance, FindsADentUnderTheMiddleOfABigTriangle) {
    // A grid of small cells, one of whose crossings is pushed in by 0.2.
    Mesh dented = flatGrid({101, 77});
    const Point3 place = dented[static_cast<std::size_t>(2 * (101 * 19 + 40))].vertices[0].position;
    for (Triangle& triangle : dented)
        for (TriangleVertex& corner : triangle.vertices)
            if (length(corner.position - place) < 1e-9) corner.position[1] += 0.2;
    const auto plain = cornersOf(flatGrid({1, 1}));
    const SurfaceDistance toPlain = distanceBetween(cornersOf(dented), plain);
    EXPECT_NEAR(toPlain.max, 0.2, 1e-12);
    EXPECT_LE(length(toPlain.where - place - Point3(0.0, 0.2, 0.0)), 1e-12);

    // From the plain wall the dent's sides are nearer than its tip: their feet lie within a cell of
    // it.
    const SurfaceDistance fromPlain = distanceBetween(plain, cornersOf(dented));
    EXPECT_GT(fromPlain.max, 0.01);
    EXPECT_LE(fromPlain.max, 0.05);
    EXPECT_LE(fromPlain.bound - fromPlain.max, kAccuracy * (1.0 + 1e-9));
    EXPECT_LE(length(fromPlain.where - place), 0.06);
}

TEST(SurfaceDistance, OfConcentricDomesIsTheDifferenceOfTheirRadii) {
    const DomeShape inner{5.0, -1.0, 1.0, -0.5, 1.0};
    DomeShape outer = inner;
    outer.radius = 5.1;
    const auto a = cornersOf(dome({60, 40}, inner));
    const auto b = cornersOf(dome({50, 45}, outer));
    // What the flat triangles cut off.
    const double chord = 5.1 * (1.0 - std::cos(std::hypot(1.0 / 50.0, 0.75 / 40.0)));
    for (const SurfaceDistance& distance : {distanceBetween(a, b), distanceBetween(b, a)}) {
        EXPECT_NEAR(distance.max, 0.1, 2.0 * chord);
        EXPECT_NEAR(distance.mean, 0.1, 2.0 * chord);
        EXPECT_LE(distance.bound - distance.max, 1e-3 * distance.max * (1.0 + 1e-9));
    }
}

TEST(SurfaceDistance, FromTheCenterOfADomeIsTheRadius) {
    // All positions are about equally far from all triangles of the dome.
    const auto shell = cornersOf(dome({400, 200}, kHalfSphere));
    const auto sheet = moved(cornersOf(flatGrid({30, 30}, {0.02, 0.02})), {0.0, 0.0, 0.02});
    const SurfaceDistance distance = distanceBetween(sheet, shell);
    EXPECT_LE(distance.max, 5.0);
    EXPECT_GE(distance.bound, 5.0 - 0.03);
    EXPECT_EQ(distance.end, SearchEnd::GoalReached);
    EXPECT_LE(distance.bound - distance.max, 1e-3 * distance.max * (1.0 + 1e-9));
    EXPECT_NEAR(distance.mean, 4.98, 0.01);
}

TEST(SurfaceDistance, ReachesAnAccuracyThatIsFinerThanAThousandthOfTheDistance) {
    const auto shell = cornersOf(dome({100, 60}, kHalfSphere));
    const auto sheet = cornersOf(flatGrid({2, 2}, {2.0, 2.0}));
    ThreadPool pool(2);
    const TriangleTree tree(shell);
    const SurfaceDistance distance =
        surfaceDistance(sheet, tree, {.accuracy = 1e-4, .relativeAccuracy = 0.0, .limit = {}}, pool);
    EXPECT_LE(distance.bound - distance.max, 1e-4 * (1.0 + 1e-9));
    EXPECT_EQ(distance.end, SearchEnd::GoalReached);
    EXPECT_EQ(tree.nearest(distance.where).distance, distance.max);
}

TEST(SurfaceDistance, SearchGoesOnUntilTheLimitIsDecided) {
    const auto inner = cornersOf(dome({60, 40}));
    const auto outer = moved(inner, {0.0, 0.1, 0.0});
    ThreadPool pool(2);
    const TriangleTree tree(outer);
    const SurfaceDistance first = surfaceDistance(inner, tree, {.accuracy = 0.05}, pool);
    const double limit = first.max + 1e-6;
    ASSERT_GT(first.bound, limit);
    const SurfaceDistance distance =
        surfaceDistance(inner, tree, {.accuracy = 0.05, .relativeAccuracy = 0.0, .limit = limit}, pool);
    EXPECT_TRUE(distance.bound <= limit || distance.max > limit)
        << distance.max << " to " << distance.bound << ", limit " << limit;
}

TEST(SurfaceDistance, BoundIsTrueAtTheLimitOfWork) {
    // The distance is about the same in the middle of each of the coarse cells.
    const auto from = cornersOf(dome({60, 40}, kHalfSphere));
    const TriangleTree tree(cornersOf(dome({400, 300}, kHalfSphere)));
    ThreadPool pool(2);
    const SurfaceDistance distance =
        surfaceDistance(from, tree, {.accuracy = 1e-7, .relativeAccuracy = 0.0, .limit = {}}, pool);
    EXPECT_EQ(distance.end, SearchEnd::WorkLimit);
    EXPECT_EQ(tree.nearest(distance.where).distance, distance.max);
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        const TriangleCorners& triangle =
            from[static_cast<std::size_t>(rng.integer(0, static_cast<int>(from.size()) - 1))];
        const double a = rng.uniform(0.0, 1.0);
        const double b = rng.uniform(0.0, 1.0 - a);
        const Point3 point = triangle[0] + (triangle[1] - triangle[0]) * a + (triangle[2] - triangle[0]) * b;
        EXPECT_LE(tree.nearest(point).distance, distance.bound + 1e-12);
    }
}

TEST(SurfaceDistance, NoSampleIsFartherThanTheBound) {
    for (int i = 0; i < seedCount(40); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const auto from = cornersOf(soup(rng, 30, 0.5));
        const TriangleTree to(cornersOf(soup(rng, 30, 0.5)));
        ThreadPool pool(1);
        const SurfaceDistance distance = surfaceDistance(from, to, {.accuracy = kAccuracy}, pool);
        ASSERT_LE(distance.max, distance.bound);
        ASSERT_NEAR(to.nearest(distance.where).distance, distance.max, 1e-12);
        double sum = 0.0;
        double area = 0.0;
        for (const TriangleCorners& triangle : from) {
            const double size = length(cross(triangle[1] - triangle[0], triangle[2] - triangle[0]));
            for (int k = 0; k < 200; ++k) {
                const double a = rng.uniform(0.0, 1.0);
                const double b = rng.uniform(0.0, 1.0);
                const bool isOutside = a + b > 1.0;
                const Point3 point = triangle[0] + (triangle[1] - triangle[0]) * (isOutside ? 1.0 - a : a) +
                                     (triangle[2] - triangle[0]) * (isOutside ? 1.0 - b : b);
                const double sample = to.nearest(point).distance;
                ASSERT_LE(sample, distance.bound + 1e-12);
                sum += sample * size;
                area += size * 1.0;
            }
        }
        EXPECT_NEAR(distance.mean, sum / area, 0.02);
    }
}

TEST(SurfaceDistance, DoesNotDependOnTheNumberOfThreads) {
    const auto a = cornersOf(wave({150, 120}, 0.3));
    const auto b = cornersOf(wave({130, 140}, 0.4));
    const SurfaceDistance one = distanceBetween(a, b, 1);
    for (const std::size_t threads : {2U, 5U}) {
        const SurfaceDistance many = distanceBetween(a, b, threads);
        EXPECT_TRUE(sameBits(many.max, one.max));
        EXPECT_TRUE(sameBits(many.bound, one.bound));
        EXPECT_TRUE(sameBits(many.mean, one.mean));
        EXPECT_TRUE(sameBits(many.where, one.where));
        EXPECT_EQ(many.samples, one.samples);
    }
}

TEST(SurfaceDistance, OfSurfacesWithoutAreaIsThatOfTheirPositions) {
    const Point3 a(0, 0, 0);
    const Point3 b(0, 3, 4);
    const SurfaceDistance distance = distanceBetween({{a, a, a}}, {{b, b, b}});
    EXPECT_EQ(distance.max, 5.0);
    EXPECT_EQ(distance.bound, 5.0);
    EXPECT_TRUE(std::isnan(distance.mean));
}

}  // namespace
}  // namespace quarn::test
