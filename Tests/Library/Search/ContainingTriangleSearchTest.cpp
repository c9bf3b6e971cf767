#include <gtest/gtest.h>

#include <limits>
#include <optional>

#include <Common/ZelmoreException.h>
#include <QuarnScreen/Detail/Search/ContainingTriangleSearch.h>

#include "Reference/Mesh/ReferenceMesh.h"
#include "Support/Mesh/MeshCases.h"
#include "Support/WildNumbers.h"

using namespace quarn::test;

namespace {

// What the searches of a test came to.
struct Tally {
    int held = 0;
    int heldByNone = 0;
    int rejectedNone = 0;
};

// Runs both searches at the same position. The result must be the same triangle, not only an equal
// one.
void compareAt(const quarn::detail::ContainingTriangleSearch& search, const ReferenceMesh& plain,
               const Point3& point, Tally& tally) {
    SCOPED_TRACE(::testing::Message() << std::hexfloat << point[0] << ", " << point[1] << ", " << point[2]);
    const ReferenceMesh::Search expected = plain.searchHolding(point);
    ASSERT_EQ(search.findContaining(point), expected.triangle);
    ASSERT_EQ(search.tree().findNearest(point), plain.findNearestCentroid(point));
    ASSERT_EQ(search.findNearest(point), plain.findNearestCentroid(point));
    const std::optional<Point2> rejected = search.firstRejectedUV(point);
    ASSERT_EQ(rejected.has_value(), expected.firstRejectedUV.has_value());
    if (rejected) {
        ASSERT_TRUE(sameBits(*rejected, *expected.firstRejectedUV));
    }
    const auto [triangle, rejectedUV] = search.find(point);
    ASSERT_EQ(triangle, expected.triangle);
    ASSERT_EQ(rejectedUV.has_value(), triangle != nullptr && rejected.has_value());
    if (rejectedUV) {
        ASSERT_TRUE(sameBits(*rejectedUV, *rejected));
    }
    ++(expected.triangle == nullptr ? tally.heldByNone : tally.held);
    if (!rejected) ++tally.rejectedNone;
}

void compareAround(const Mesh& mesh, Rng& rng, int questions, Tally& tally) {
    quarn::detail::ContainingTriangleSearch search;
    search.build(mesh);
    const ReferenceMesh plain(mesh);
    for (int i = 0; i < questions && !::testing::Test::HasFatalFailure(); ++i)
        compareAt(search, plain, anyQuestion(mesh, rng), tally);
}

}  // namespace

TEST(ContainingTriangleSearch, EmptyMeshHoldsNothing) {
    quarn::detail::ContainingTriangleSearch search;
    EXPECT_EQ(search.findContaining({}), nullptr);
    EXPECT_FALSE(search.firstRejectedUV({}));
    search.build(Mesh());
    EXPECT_EQ(search.findContaining({}), nullptr);
    EXPECT_FALSE(search.firstRejectedUV({}));
    EXPECT_EQ(search.find({}).triangle, nullptr);
    EXPECT_THROW((void)search.findNearest({}), ZelmoreException);
    EXPECT_THROW((void)search.tree().findNearest({}), ZelmoreException);
}

TEST(ContainingTriangleSearch, FindsTheTrianglesOfTheReferenceOnMeshesOfAnyShape) {
    Tally tally;
    for (int i = 0; i < seedCount(600); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        compareAround(anyShape(rng), rng, 60, tally);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(tally.held, seedCount(10'000));
    EXPECT_GT(tally.heldByNone, seedCount(10'000));
    EXPECT_GT(tally.rejectedNone, 100);
}

TEST(ContainingTriangleSearch, FindsTheTrianglesOfTheReferenceOnSpoiledMeshes) {
    Tally tally;
    for (int i = 0; i < seedCount(1500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        compareAround(anyMesh(rng), rng, 40, tally);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(tally.held, seedCount(15'000));
    EXPECT_GT(tally.heldByNone, seedCount(15'000));
}

// An order is no order where a number is NaN, and the walk then depends on every step.
TEST(ContainingTriangleSearch, FindsTheTrianglesOfTheReferenceWhereFieldsAreNotFinite) {
    Tally tally;
    for (int i = 0; i < seedCount(1500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh = anyMesh(rng);
        for (Triangle& triangle : mesh) {
            if (rng.integer(0, 7) != 0) continue;
            Point3& field = rng.coin()
                                ? triangle.centroid
                                : triangle.vertices[static_cast<std::size_t>(rng.integer(0, 2))].position;
            field[static_cast<std::size_t>(rng.integer(0, 2))] = wildNumber(rng);
            if (rng.coin()) computeFields(triangle);
        }
        compareAround(mesh, rng, 40, tally);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(tally.held, seedCount(10'000));
}

// A corner that is not a number, in a triangle whose centroid still is one: it holds nothing
// itself, and hides nothing.
TEST(ContainingTriangleSearch, OneCornerThatIsNoNumberHidesNoOtherTriangle) {
    for (std::size_t spoiled = 0; spoiled < 32; ++spoiled) {
        for (std::size_t axis = 0; axis < 3; ++axis) {
            SCOPED_TRACE(::testing::Message() << "triangle " << spoiled << ", axis " << axis);
            Mesh mesh = flatGrid({4, 4});
            mesh[spoiled].vertices[0].position[axis] = std::numeric_limits<double>::quiet_NaN();
            quarn::detail::ContainingTriangleSearch search;
            search.build(mesh);
            for (std::size_t i = 0; i < mesh.size(); ++i)
                EXPECT_EQ(search.findContaining(mesh[i].centroid), i == spoiled ? nullptr : &mesh[i]) << i;
        }
    }
}

TEST(ContainingTriangleSearch, OfTrianglesThatShareACentroidTheWalkDecides) {
    Tally tally;
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh = flatGrid({2, rng.integer(1, 3)});
        duplicate(mesh, rng, 40);
        shuffle(mesh, i);
        compareAround(mesh, rng, 60, tally);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(tally.held, seedCount(5'000));
}

// Corners of a grid cell are equally far from the centroids of all cells around.
TEST(ContainingTriangleSearch, OfEquallyNearTrianglesTheWalkDecides) {
    const Mesh mesh = flatGrid({8, 8}, {8.0, 8.0});
    quarn::detail::ContainingTriangleSearch search;
    search.build(mesh);
    const ReferenceMesh plain(mesh);
    Tally tally;
    for (int x = -17; x <= 17; ++x)
        for (int z = -17; z <= 17; ++z) compareAt(search, plain, {0.25 * x, 0.0, 0.25 * z}, tally);
    EXPECT_GT(tally.held, 1000);
}

// Large enough for all levels of the indexes.
TEST(ContainingTriangleSearch, FindsTheTrianglesOfTheReferenceOnLargeMeshes) {
    Tally tally;
    for (int i = 0; i < seedCount(8); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh = i % 2 == 0 ? dome({50, 40}) : wave({60, 40});
        if (rng.coin()) shuffle(mesh, i);
        if (rng.coin()) duplicate(mesh, rng, 1000);
        compareAround(mesh, rng, 500, tally);
        if (HasFatalFailure()) return;
    }
    EXPECT_GT(tally.held, seedCount(1000));
    EXPECT_GT(tally.heldByNone, seedCount(1000));
}

TEST(ContainingTriangleSearch, SecondBuildForgetsTheFirst) {
    const Mesh large = flatGrid({6, 6});
    Mesh small = flatGrid({2, 1});
    scale(small, 0.1);
    quarn::detail::ContainingTriangleSearch search;
    search.build(large);
    search.build(small);
    Tally tally;
    Rng rng(0);
    const ReferenceMesh plain(small);
    for (int i = 0; i < 300; ++i) compareAt(search, plain, anyQuestion(large, rng), tally);
    search.build(Mesh());
    EXPECT_EQ(search.findContaining(small.front().centroid), nullptr);
}
