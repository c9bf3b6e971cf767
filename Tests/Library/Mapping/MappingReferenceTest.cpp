// Mapping to positions against the reference implementation, bit for bit.
#include <gtest/gtest.h>

#include <array>

#include "Library/Mapping/MappingCases.h"
#include "Support/Mesh/MeshCases.h"

using namespace quarn::test;

namespace {

using Way = ReferenceMapping::Way;
using Tally = std::array<int, static_cast<std::size_t>(Way::Count)>;

void compareAt(const TriangleScreen& screen, ReferenceMapping& plain, const Point2& uv, bool extrapolate,
               Tally& tally) {
    SCOPED_TRACE(::testing::Message() << std::hexfloat << uv[0] << ", " << uv[1] << ", " << extrapolate);
    const Point3 before(1.0, 2.0, 3.0);
    EXPECT_TRUE(sameBits(map(screen, uv, extrapolate, before), map(plain, uv, extrapolate, before)));
    ++tally[static_cast<std::size_t>(plain.lastWay)];
}

void compareOn(const Mesh& mesh, Rng& rng, int questions, Tally& tally) {
    const TriangleScreen screen(mesh);
    ReferenceMapping plain(screen.mesh());
    for (int k = 0; k < questions; ++k)
        compareAt(screen, plain, anyUV(screen.mesh(), rng), rng.integer(0, 2) != 0, tally);
}

int countOf(const Tally& tally, Way way) {
    return tally[static_cast<std::size_t>(way)];
}

}  // namespace

TEST(MappingReference, MeshesOfAnyShape) {
    Tally tally{};
    for (int i = 0; i < seedCount(400); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        compareOn(anyShape(rng), rng, 100, tally);
        if (HasFailure()) return;
    }
    EXPECT_GT(countOf(tally, Way::OnMesh), seedCount(10'000));
    EXPECT_GT(countOf(tally, Way::Continued), seedCount(4'000));
    EXPECT_GT(countOf(tally, Way::OutOfBounds), seedCount(3'000));
}

TEST(MappingReference, MeshesWithSpoiledFieldsAndUVs) {
    Tally tally{};
    for (int i = 0; i < seedCount(1500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        compareOn(anyUVMesh(rng), rng, 60, tally);
        if (HasFailure()) return;
    }
    EXPECT_GT(countOf(tally, Way::OnMesh), seedCount(15'000));
    EXPECT_GT(countOf(tally, Way::Continued), seedCount(15'000));
    EXPECT_GT(countOf(tally, Way::OutOfBounds), seedCount(5'000));
}

TEST(MappingReference, MeshesOfNoOneOrTwoTriangles) {
    Tally tally{};
    for (int i = 0; i < seedCount(600); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh = soup(rng, 1 + i % 2);
        if (rng.coin()) spoilUVFields(mesh, rng, 0.5);
        compareOn(mesh, rng, 30, tally);
        if (HasFailure()) return;
    }
    EXPECT_GT(countOf(tally, Way::OnMesh), 1'000);
    EXPECT_GT(countOf(tally, Way::Continued), seedCount(5'000));
}

TEST(MappingReference, ManyTrianglesOverTheSameUV) {
    Tally tally{};
    for (int i = 0; i < seedCount(40); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Mesh mesh = soup(rng, 100, 0.5);
        if (rng.coin()) foldUV(mesh);
        compareOn(mesh, rng, 300, tally);
        if (HasFailure()) return;
    }
    EXPECT_GT(countOf(tally, Way::OnMesh), seedCount(5'000));
}

// The tree has 17 levels, so that the cap of 15 on the continuations that are kept takes effect.
TEST(MappingReference, LargeMesh) {
    const TriangleScreen screen(wave({300, 250}));
    ReferenceMapping plain(screen.mesh());
    ASSERT_GT(plain.uvTree.depth, 15);
    Tally tally{};
    for (int i = 0; i < seedCount(3000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        compareAt(screen, plain, anyUV(screen.mesh(), rng), rng.integer(0, 2) != 0, tally);
        if (HasFailure()) return;
    }
    EXPECT_GT(countOf(tally, Way::Continued), seedCount(200));
}

// The greatest depth, old nodes and the cache stay: all of it shows in later answers.
TEST(MappingReference, ReloadedScreens) {
    Tally tally{};
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        TriangleScreen screen;
        ReferenceMapping plain;
        for (int reload = 0; reload < 4; ++reload) {
            screen.reindex(anyUVMesh(rng));
            plain.rebuild(screen.mesh());
            for (int k = 0; k < 40; ++k)
                compareAt(screen, plain, anyUV(screen.mesh(), rng), rng.integer(0, 2) != 0, tally);
        }
        if (HasFailure()) return;
    }
    EXPECT_GT(countOf(tally, Way::Continued), seedCount(5'000));
}
