// Results of a screen after queries and changes.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

#include "Library/Mapping/MappingCases.h"
#include "Support/Mesh/MeshCases.h"

using namespace quarn::test;

namespace {

using Way = ReferenceMapping::Way;

// Meshes with ordinary corners, which stay so when they are moved and cut.
Mesh tameMesh(Rng& rng) {
    Mesh mesh = anyShape(rng);
    if (rng.integer(0, 3) == 0) spoilUVFields(mesh, rng, 0.3);
    return mesh;
}

// Changes the mesh as callers may. None of it empties the cache.
void change(TriangleScreen& screen, Rng& rng) {
    switch (rng.integer(0, 5)) {
        case 0:
            screen.load(tameMesh(rng));
            break;
        case 1:
            screen.reindex(rng.integer(0, 3) == 0 ? Mesh() : tameMesh(rng));
            break;
        case 2:
            screen.applyTransform(rng.point(-2.0, 2.0), rng.point(-180.0, 180.0), rng.uniform(0.5, 2.0));
            break;
        case 3:
            screen.applyParameterizationTransform(rng.coin(), rng.coin());
            break;
        case 4:
            screen.refine(rng.uniform(1.0, 3.0));
            break;
        default:
            screen.parameterized = !screen.parameterized;
            break;
    }
}

Point2 anyKey(const TriangleScreen& screen, const std::vector<Point2>& earlier, Rng& rng) {
    if (!earlier.empty() && rng.integer(0, 2) != 0) {
        const std::size_t back = static_cast<std::size_t>(rng.integer(1, 24));
        return earlier[earlier.size() - std::min(back, earlier.size())];
    }
    return screen.mesh().empty() ? Point2(rng.uniform(-1.0, 2.0), 0.5) : anyUV(screen.mesh(), rng);
}

using Tally = std::array<int, static_cast<std::size_t>(Way::Count)>;

void runSequence(Rng& rng, int steps, Tally& tally) {
    TriangleScreen screen;
    ReferenceMapping plain;
    std::vector<Point2> earlier;
    std::vector<LogLine> expectedLines;
    plain.log = &expectedLines;
    for (int step = 0; step < steps; ++step) {
        SCOPED_TRACE(::testing::Message() << "step " << step);
        if (step == 1 || rng.integer(0, 39) == 0) {
            change(screen, rng);
            plain.parameterized = screen.parameterized;
            plain.rebuild(screen.mesh());
        }
        const Point2 key = anyKey(screen, earlier, rng);
        earlier.push_back(key);
        const bool extrapolate = rng.coin();
        const Point3 before = rng.point(-9.0, 9.0);
        expectedLines.clear();
        const Mapped expected = map(plain, key, extrapolate, before);
        for (LogLine& line : expectedLines) line.second = withPlainNaN(line.second);
        const LogCapture capture(kScreenLogger);
        ASSERT_TRUE(sameBits(map(screen, key, extrapolate, before), expected));
        ASSERT_EQ(linesOf(capture), expectedLines);
        ++tally[static_cast<std::size_t>(plain.lastWay)];
    }
}

}  // namespace

TEST(MappingHistory, TransformLeavesOldAnswersAndMovesNewOnes) {
    TriangleScreen screen(flatGrid({4, 4}));
    const Point2 known(0.25, 0.25);
    const Mapped before = map(screen, known, false);
    screen.applyTransform({10.0, 20.0, 30.0}, {}, 1.0);
    EXPECT_TRUE(sameBits(map(screen, known, false), before));
    const Mapped fresh = map(screen, {0.5, 0.5}, false);
    EXPECT_TRUE(sameBits(fresh.point, Point3(10.0, 20.0, 30.0)));
}

TEST(MappingHistory, NoChangeOfTheMeshEmptiesTheCache) {
    TriangleScreen screen(flatGrid({4, 4}));
    const Mapped before = map(screen, {0.25, 0.25}, false);
    screen.applyParameterizationTransform(true, true);
    EXPECT_TRUE(sameBits(map(screen, {0.25, 0.25}, false), before));
    screen.refine(0.3);
    EXPECT_TRUE(sameBits(map(screen, {0.25, 0.25}, false), before));
    screen.load(dome({3, 3}));
    EXPECT_TRUE(sameBits(map(screen, {0.25, 0.25}, false), before));
    screen.load({});
    EXPECT_TRUE(sameBits(map(screen, {0.25, 0.25}, false), before));
    EXPECT_TRUE(wasCached(screen, {0.25, 0.25}));
}

TEST(MappingHistory, RefusalOutlivesAMeshThatWouldHoldTheUV) {
    TriangleScreen screen(gridWithHoles({9, 5}, 1));
    EXPECT_FALSE(map(screen, {0.5, 0.5}, false).isAnswer);
    screen.load(flatGrid({9, 5}));
    EXPECT_FALSE(map(screen, {0.5, 0.5}, false).isAnswer);
    EXPECT_TRUE(map(screen, {0.5, 0.5}, true).isAnswer);
    EXPECT_TRUE(map(screen, {0.51, 0.5}, false).isAnswer);
}

TEST(MappingHistory, TwentyFirstUVReplacesTheFirst) {
    const auto screenQueried = [](int count) {
        auto screen = std::make_unique<TriangleScreen>(flatGrid({4, 4}));
        for (int i = 0; i < count; ++i) (void)map(*screen, {0.03125 * i, 0.5}, false);
        return screen;
    };
    EXPECT_TRUE(wasCached(*screenQueried(20), {0.0, 0.5}));
    EXPECT_FALSE(wasCached(*screenQueried(21), {0.0, 0.5}));
    EXPECT_TRUE(wasCached(*screenQueried(21), {0.03125, 0.5}));
}

TEST(MappingHistory, UVBehindTheLastHitIsReplaced) {
    const auto screen = std::make_unique<TriangleScreen>(flatGrid({4, 4}));
    for (int i = 0; i < 20; ++i) (void)map(*screen, {0.03125 * i, 0.5}, false);
    EXPECT_TRUE(wasCached(*screen, {0.03125 * 7, 0.5}));
    (void)map(*screen, {0.99, 0.5}, false);
    EXPECT_TRUE(wasCached(*screen, {0.0, 0.5}));
    EXPECT_FALSE(wasCached(*screen, {0.03125 * 8, 0.5}));
}

TEST(MappingHistory, UVsThatDifferInTheLastBitAreTwo) {
    const TriangleScreen screen(flatGrid({4, 4}));
    (void)map(screen, {0.3, 0.5}, false);
    EXPECT_FALSE(wasCached(screen, {std::nextafter(0.3, 1.0), 0.5}));
    EXPECT_FALSE(wasCached(screen, {std::nextafter(0.3, 0.0), 0.5}));
    EXPECT_TRUE(wasCached(screen, {0.3, 0.5}));
}

TEST(MappingHistory, AnswersAndMessagesOfTheLiteralModelOverLongSequences) {
    Tally tally{};
    for (int i = 0; i < seedCount(60); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        runSequence(rng, 600, tally);
        if (HasFatalFailure()) return;
    }
    for (const int count : tally) EXPECT_GT(count, 500);
}
