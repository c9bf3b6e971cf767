#include <gtest/gtest.h>

#include <limits>

#include <QuarnScreen/Detail/Search/ContainingTriangleSearch.h>

#include "Support/GeometryBits.h"
#include "Support/Mesh/Meshes.h"
#include "Support/Rng.h"
#include "Support/WildNumbers.h"

using namespace quarn::test;

namespace {

// Triangles of which only the centroids matter.
Mesh meshWith(int count, Rng& rng, Point3 (*anyCentroid)(Rng&)) {
    Mesh mesh(static_cast<std::size_t>(count));
    for (Triangle& triangle : mesh) triangle.centroid = anyCentroid(rng);
    return mesh;
}

Point3 anywhere(Rng& rng) {
    return rng.point(-3.0, 3.0);
}
Point3 onLattice(Rng& rng) {
    const int x = rng.integer(-2, 2);
    const int y = rng.integer(-1, 1);
    return {0.5 * x, 0.5 * y, 0.5 * rng.integer(-2, 2)};
}
Point3 onSphere(Rng& rng) {
    Point3 point = rng.point(-1.0, 1.0);
    while (length(point) < 0.1) point = rng.point(-1.0, 1.0);
    return normalized(point);
}
Point3 atOneOfTwo(Rng& rng) {
    return rng.coin() ? Point3(1.0, 2.0, 3.0) : Point3(1.0, 2.0, -3.0);
}
Point3 ofAnySize(Rng& rng) {
    return rng.spreadPoint(-1070, 1020);
}
Point3 wild(Rng& rng) {
    Point3 point;
    for (std::size_t i = 0; i < 3; ++i)
        point[i] = rng.integer(0, 3) == 0 ? wildNumber(rng) : rng.uniform(-1.0, 1.0);
    return point;
}

// Positions of the same kind, the centroids themselves, and positions half-way between two.
Point3 anyQuestion(const Mesh& mesh, Rng& rng, Point3 (*anyCentroid)(Rng&)) {
    const auto any = [&] {
        return mesh[static_cast<std::size_t>(rng.integer(0, static_cast<int>(mesh.size()) - 1))].centroid;
    };
    switch (rng.integer(0, 3)) {
        case 0:
            return anyCentroid(rng);
        case 1:
            return any();
        case 2:
            return 0.5 * (any() + any());
        default:
            return {};
    }
}

// The walk decides, also between centroids at equal distances.
void compareWithWalk(Point3 (*anyCentroid)(Rng&)) {
    for (int i = 0; i < seedCount(600); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Mesh mesh = meshWith(rng.integer(1, rng.coin() ? 40 : 600), rng, anyCentroid);
        quarn::detail::ContainingTriangleSearch search;
        search.build(mesh);
        for (int question = 0; question < 60; ++question) {
            const Point3 point = anyQuestion(mesh, rng, anyCentroid);
            ASSERT_EQ(search.findNearest(point), search.tree().findNearest(point))
                << std::hexfloat << point[0] << ", " << point[1] << ", " << point[2];
        }
    }
}

}  // namespace

TEST(NearestCentroidSearch, FindsTheTriangleOfTheWalk) {
    compareWithWalk(anywhere);
}

TEST(NearestCentroidSearch, OfEquallyNearCentroidsTheWalkDecides) {
    compareWithWalk(onLattice);
    compareWithWalk(onSphere);
}

TEST(NearestCentroidSearch, OfCentroidsAtOnePointTheWalkDecides) {
    compareWithWalk(atOneOfTwo);
}

TEST(NearestCentroidSearch, FindsTheTriangleOfTheWalkAtAnyScale) {
    compareWithWalk(ofAnySize);
}

TEST(NearestCentroidSearch, FindsTheTriangleOfTheWalkWhereNumbersAreNotFinite) {
    compareWithWalk(wild);
}

TEST(NearestCentroidSearch, FindsNothingBeyondTheLargestDouble) {
    Rng rng(0);
    const Mesh mesh = meshWith(100, rng, anywhere);
    quarn::detail::ContainingTriangleSearch search;
    search.build(mesh);
    EXPECT_EQ(search.findNearest({1e200, 0.0, 0.0}), nullptr);
    EXPECT_EQ(search.findNearest({std::numeric_limits<double>::quiet_NaN(), 0.0, 0.0}), nullptr);
}

// As for a face that a file repeats: the ties are left to the walk.
TEST(NearestCentroidSearch, ManyEqualCentroidsAreThoseOfTheWalk) {
    Rng rng(1);
    const Mesh mesh = meshWith(20000, rng, atOneOfTwo);
    quarn::detail::ContainingTriangleSearch search;
    search.build(mesh);
    for (int question = 0; question < 500; ++question) {
        const Point3 point = question % 2 == 0 ? atOneOfTwo(rng) : anywhere(rng);
        ASSERT_EQ(search.findNearest(point), search.tree().findNearest(point)) << question;
    }
}

// Floats are too coarse for boxes there.
TEST(NearestCentroidSearch, FarFromTheOriginItIsTheWalk) {
    for (const double distance : {1e5, 1e7, 1e9, 1e40}) {
        Rng rng(2);
        Mesh mesh = meshWith(3000, rng, anywhere);
        const Point3 offset(distance, -distance, 0.0);
        for (Triangle& triangle : mesh) triangle.centroid = triangle.centroid + offset;
        quarn::detail::ContainingTriangleSearch search;
        search.build(mesh);
        for (int question = 0; question < 300; ++question) {
            const Point3 point = anywhere(rng) + offset;
            ASSERT_EQ(search.findNearest(point), search.tree().findNearest(point)) << distance;
        }
    }
}
