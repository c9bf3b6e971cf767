// Face normals near a position.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include <QuarnScreen/Detail/Search/ContainingTriangleSearch.h>

#include "Reference/Mesh/ReferenceKDTree.h"
#include "Reference/Mesh/ReferenceMesh.h"
#include "Support/Mesh/MeshCases.h"

using namespace quarn::test;

namespace {

const Point3 kAnyDirection(0.0, 1.0, 0.0);

std::vector<Point3> referenceNormals(const Mesh& mesh, const Point3& point, int count) {
    ReferenceKDTree<const Triangle*, 3, ReferenceCentroidKey> tree;
    std::vector<const Triangle*> pointers;
    for (const Triangle& triangle : mesh) pointers.push_back(&triangle);
    tree.build(pointers);
    std::vector<Point3> normals;
    for (const Triangle* triangle : tree.findKNearest(point, count)) normals.push_back(triangle->normal);
    return normals;
}

}  // namespace

TEST(NearestNormals, EmptyMeshHasNone) {
    quarn::detail::ContainingTriangleSearch search;
    EXPECT_TRUE(search.getNearestNormals({}, kAnyDirection, 5).empty());
    search.build({});
    EXPECT_TRUE(search.getNearestNormals({}, kAnyDirection, 5).empty());
}

TEST(NearestNormals, CountOfZeroOrLessGivesNone) {
    quarn::detail::ContainingTriangleSearch search;
    const Mesh mesh = flatGrid({4, 4});
    search.build(mesh);
    for (const int count : {0, -1, std::numeric_limits<int>::min()})
        EXPECT_TRUE(search.getNearestNormals({}, kAnyDirection, count).empty());
}

// Triangles at x = 0, 10, 20, ..., whose stored normals distinguish them.
TEST(NearestNormals, NearestComeFirst) {
    Mesh mesh;
    for (int i = 0; i < 6; ++i) {
        const double x = 10.0 * i;
        mesh.push_back(wholeTriangle({x - 1.0, 0.0, -1.0}, {x + 1.0, 0.0, -1.0}, {x, 0.0, 2.0}));
        mesh.back().normal = {static_cast<double>(i), 0.0, 0.0};
    }
    quarn::detail::ContainingTriangleSearch search;
    search.build(mesh);
    const auto of = [&](int count, const Point3& direction) {
        std::vector<double> indices;
        for (const Point3& normal : search.getNearestNormals({32.0, 0.0, 0.0}, direction, count))
            indices.push_back(normal[0]);
        return indices;
    };
    EXPECT_EQ(of(4, kAnyDirection), (std::vector<double>{3.0, 4.0, 2.0, 5.0}));
    EXPECT_EQ(of(99, kAnyDirection), (std::vector<double>{3.0, 4.0, 2.0, 5.0, 1.0, 0.0}));
    for (const Point3& direction : {Point3(), Point3(-1.0, 0.0, 0.0), Point3(std::nan(""), 0.0, 0.0)})
        EXPECT_EQ(of(4, direction), of(4, kAnyDirection)) << "the direction is not read";
}

TEST(NearestNormals, AnswersOfTheReference) {
    for (int i = 0; i < seedCount(400); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Mesh mesh = anyMesh(rng);
        quarn::detail::ContainingTriangleSearch search;
        search.build(mesh);
        for (int k = 0; k < 10; ++k) {
            const Point3 point = anyQuestion(mesh, rng);
            const int count = rng.integer(1, static_cast<int>(mesh.size()) + 2);
            EXPECT_TRUE(sameBits(search.getNearestNormals(point, rng.point(-1.0, 1.0), count),
                                 referenceNormals(mesh, point, count)));
        }
        if (HasFailure()) return;
    }
}
