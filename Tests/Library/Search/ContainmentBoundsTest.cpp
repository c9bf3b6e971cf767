#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

#include <QuarnScreen/Detail/Search/ContainingTriangleSearch.h>
#include <QuarnScreen/Detail/Search/TriangleContainment.h>

#include "Support/Mesh/MeshCases.h"
#include "Support/Mesh/Meshes.h"

using namespace quarn::test;

namespace {

Point3 anyUnitVector(Rng& rng) {
    Point3 vector = rng.point(-1.0, 1.0);
    while (length(vector) < 0.1) vector = rng.point(-1.0, 1.0);
    if (rng.integer(0, 3) == 0) vector[static_cast<std::size_t>(rng.integer(0, 2))] = 0.0;
    return normalized(vector);
}

// A number around a limit, on both sides.
double around(double limit, Rng& rng) {
    return limit * rng.uniform(0.3, 1.7);
}

// A triangle as thin, as large, as small, as far off and as tilted as the boxes allow for, and a
// little more.
Triangle extremeTriangle(Rng& rng) {
    constexpr double kMinSine = 1e-4;
    Point3 direction(1.0, 0.0, 0.0);
    Point3 across(0.0, 0.0, 1.0);
    if (rng.integer(0, 2) != 0) {
        direction = anyUnitVector(rng);
        across = normalized(cross(direction, anyUnitVector(rng)));
    }
    const double first = std::abs(rng.integer(0, 3) == 0 ? rng.spread(-62, 62) : rng.spread(-12, 12));
    const double second = rng.coin() ? first * rng.uniform(0.5, 2.0) : std::abs(rng.spread(-30, 30));
    const std::array sines = {around(kMinSine, rng), std::abs(rng.spread(-36, -2)), rng.uniform(0.0, 1.0),
                              1.0};
    const double sine = sines[static_cast<std::size_t>(rng.integer(0, 3))];
    const double cosine = std::sqrt(std::abs(1.0 - sine * sine)) * (rng.coin() ? 1.0 : -1.0);

    Triangle triangle;
    triangle.vertices[0].position = rng.integer(0, 2) == 0 ? rng.spreadPoint(-60, 62) : rng.point(-3.0, 3.0);
    triangle.vertices[1].position = triangle.vertices[0].position + first * direction;
    triangle.vertices[2].position =
        triangle.vertices[0].position + second * (cosine * direction + sine * across);
    computeFields(triangle);
    if (rng.coin()) {
        // Edges that did not lose their digits in the sum.
        triangle.edge1 = first * direction;
        triangle.edge2 = second * (cosine * direction + sine * across);
        triangle.normal = normalized(cross(triangle.edge1, triangle.edge2));
    }
    const double tilt = rng.coin() ? around(1e-7, rng) : rng.spread(-22, -8);
    if (rng.coin()) triangle.normal = triangle.normal + tilt * anyUnitVector(rng);
    const double excess = rng.coin() ? around(5e-7, rng) : rng.uniform(0.0, 5.0);
    if (rng.coin()) triangle.normal = triangle.normal * (1.0 + (rng.coin() ? excess : -0.1 * excess));
    return triangle;
}

// The triangle that contains a position and has the nearest centroid, from a scan over all.
const Triangle* scan(const Mesh& mesh, const Point3& point, bool& isTied) {
    const Triangle* best = nullptr;
    double bestSquared = std::numeric_limits<double>::max();
    isTied = false;
    for (const Triangle& triangle : mesh) {
        const Point3 apart = point - triangle.centroid;
        const double squared = dot(apart, apart);
        if (!quarn::detail::testContainment(triangle, point).contains) continue;
        if (squared == bestSquared) isTied = true;
        if (!(squared < bestSquared)) continue;
        isTied = false;
        bestSquared = squared;
        best = &triangle;
    }
    return best;
}

// From a position that a triangle contains, as far as it goes on holding in a random direction.
Point3 pushedOut(const Triangle& triangle, Point3 point, Rng& rng) {
    Point3 direction = anyUnitVector(rng);
    if (rng.coin()) direction = direction - dot(direction, triangle.normal) * triangle.normal;
    double step = rng.coin() ? 1e-6 : 1e-6 * length(triangle.edge1);
    for (int i = 0; i < 60; ++i) {
        const Point3 next = point + step * direction;
        const bool contains = quarn::detail::testContainment(triangle, next).contains;
        if (contains) point = next;
        step *= contains ? 2.0 : 0.4;
    }
    return point;
}

}  // namespace

TEST(ContainmentBounds, LoseNoPositionOfATriangleAtTheirLimits) {
    int held = 0;
    for (int i = 0; i < seedCount(100'000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Mesh mesh = {extremeTriangle(rng)};
        quarn::detail::ContainingTriangleSearch search;
        search.build(mesh);
        for (int question = 0; question < 6; ++question) {
            Point3 point = questionAround(mesh[0], rng);
            if (quarn::detail::testContainment(mesh[0], point).contains)
                point = pushedOut(mesh[0], point, rng);
            const bool contains = quarn::detail::testContainment(mesh[0], point).contains;
            held += contains ? 1 : 0;
            ASSERT_EQ(search.findContaining(point), contains ? mesh.data() : nullptr);
        }
    }
    EXPECT_GT(held, seedCount(100'000));
}

TEST(ContainmentBounds, LoseNoTriangleAmongManyAtTheirLimits) {
    int held = 0;
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh;
        for (int count = rng.integer(2, 60); count > 0; --count) mesh.push_back(extremeTriangle(rng));
        makeStale(mesh, rng, rng.coin() ? 0.0 : 0.2);
        quarn::detail::ContainingTriangleSearch search;
        search.build(mesh);
        for (int question = 0; question < 20; ++question) {
            const Triangle& triangle = anyOf(mesh, rng);
            const Point3 point = pushedOut(triangle, questionAround(triangle, rng), rng);
            bool isTied = false;
            const Triangle* expected = scan(mesh, point, isTied);
            if (isTied) continue;
            held += expected == nullptr ? 0 : 1;
            ASSERT_EQ(search.findContaining(point), expected);
        }
    }
    EXPECT_GT(held, seedCount(5'000));
}

// The same flat grid at every scale and place that a double can hold.
TEST(ContainmentBounds, LoseNoTriangleAtAnyScaleAndPlace) {
    for (int exponent = -1000; exponent <= 1000; exponent += 25) {
        for (const double offset : {0.0, 1.0, 1e6, 1e15}) {
            SCOPED_TRACE(::testing::Message() << "2^" << exponent << " with offset " << offset);
            Rng rng(exponent + 1000);
            Mesh mesh = gridOnSurface({3, 3}, [&](double u, double v) {
                const double size = std::ldexp(1.0, exponent);
                return Point3(size * (u + offset), size * 0.1 * u * v, size * (v - offset));
            });
            quarn::detail::ContainingTriangleSearch search;
            search.build(mesh);
            for (int question = 0; question < 60; ++question) {
                const Point3 point = questionAround(anyOf(mesh, rng), rng);
                bool isTied = false;
                const Triangle* expected = scan(mesh, point, isTied);
                if (isTied) continue;
                ASSERT_EQ(search.findContaining(point), expected);
            }
        }
    }
}
