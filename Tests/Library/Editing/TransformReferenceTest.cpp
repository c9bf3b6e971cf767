#include <gtest/gtest.h>

#include <cmath>

#include <QuarnScreen/Detail/Editing/RigidTransform.h>

#include "Reference/Mesh/ReferenceTransform.h"
#include "Support/Mesh/MeshCases.h"
#include "Support/Mesh/TriangleBits.h"
#include "Support/Mesh/TriangleScreen.h"
#include "Support/WildNumbers.h"

using namespace quarn::test;

namespace {

double anyAngle(Rng& rng) {
    switch (rng.integer(0, 3)) {
        case 0:
            return 0.0;
        case 1:
            return 90.0 * rng.integer(-4, 4);
        default:
            return rng.uniform(-720.0, 720.0);
    }
}

Point3 anyRotation(Rng& rng) {
    const double first = anyAngle(rng);
    const double second = anyAngle(rng);
    return {first, second, anyAngle(rng)};
}

// The position of one corner after a transform, by the reference implementation.
Point3 plainlyMoved(const Point3& position, const Point3& move, const Point3& rotation, double scale) {
    Triangle triangle;
    triangle.vertices[0].position = position;
    return referenceTransform({triangle}, move, rotation, scale)[0].vertices[0].position;
}

}  // namespace

TEST(MeshTransformReference, AnyMeshIsMovedAsByTheReference) {
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Mesh mesh = anyMesh(rng);
        const Point3 move = rng.coin() ? Point3() : rng.point(-10.0, 10.0);
        const Point3 rotation = anyRotation(rng);
        const double factor = rng.coin() ? 1.0 : rng.uniform(-3.0, 3.0);
        TriangleScreen screen(mesh);
        screen.applyTransform(move, rotation, factor);
        ASSERT_TRUE(sameTriangles(screen.mesh(), referenceTransform(mesh, move, rotation, factor)));
    }
}

TEST(MeshTransformReference, MovesInARowAddUp) {
    for (int i = 0; i < seedCount(50); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh expected = anyShape(rng);
        TriangleScreen screen(expected);
        for (int round = 0; round < 4; ++round) {
            const Point3 move = rng.point(-1.0, 1.0);
            const Point3 rotation = anyRotation(rng);
            screen.applyTransform(move, rotation, 1.1);
            expected = referenceTransform(expected, move, rotation, 1.1);
        }
        ASSERT_TRUE(sameTriangles(screen.mesh(), expected));
    }
}

TEST(RigidTransform, MovesPositionsOfAnyNumbersAsTheReferenceDoes) {
    for (int i = 0; i < seedCount(50000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const Point3 position = wildPoint<3>(rng);
        const Point3 move = rng.coin() ? Point3() : wildPoint<3>(rng);
        const Point3 rotation = rng.coin() ? anyRotation(rng) : wildPoint<3>(rng);
        const double factor = rng.coin() ? 1.0 : wildNumber(rng);
        ASSERT_TRUE(sameBits(quarn::detail::RigidTransform(move, rotation, factor).apply(position),
                             plainlyMoved(position, move, rotation, factor)));
    }
}

TEST(RigidTransform, AnAngleThatIsNotFiniteMakesEveryCoordinateNaN) {
    for (const double angle : {std::nan(""), std::numeric_limits<double>::infinity()}) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            Point3 rotation;
            rotation[axis] = angle;
            const Point3 moved = quarn::detail::RigidTransform({}, rotation, 1.0).apply({1.0, 2.0, 3.0});
            for (std::size_t i = 0; i < 3; ++i) EXPECT_TRUE(std::isnan(moved[i])) << axis << i;
        }
    }
}
