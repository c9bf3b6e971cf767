#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <vector>

#include "Support/Mesh/MeshCases.h"
#include "Support/Mesh/TriangleScreen.h"
#include "Support/RunTogether.h"

using namespace quarn::test;

namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 300;

void append(std::vector<Point3>& answers, const std::vector<Point2>& some) {
    for (const Point2& uv : some) answers.emplace_back(uv[0], uv[1], 0.0);
}

void append(std::vector<Point3>& answers, const std::vector<Point3>& some) {
    answers.insert(answers.end(), some.begin(), some.end());
}

// Results that map between positions and UV, or go past the edge. All queries extrapolate: a result
// without extrapolation may come from the cache and so depend on earlier queries.
void appendMappings(const TriangleScreen& screen, Rng& rng, const Point3& from, const Point3& at,
                    std::vector<Point3>& answers) {
    append(answers, {screen.mapInto2D(at, false), screen.mapInto2D(at, true)});
    const double u = rng.uniform(-0.1, 1.1);
    const double v = rng.uniform(-0.1, 1.1);
    Point3 point;
    answers.emplace_back(screen.mapInto3D({u, v}, point, true), 0.0, 0.0);
    answers.push_back(point);
    IScreenGeometry::GridSamples row;
    screen.sampleHorizontally(v, -0.1, 1.1, 4, 0, row, true);
    for (const auto& [key, sample] : row) answers.push_back(sample);
    for (const int side : {-1, 0, 1}) {
        for (const Intersection& hit : screen.intersectExtrapolatedWithSpecifiedNormal(from, at, side))
            answers.push_back(hit.point);
    }
    answers.push_back(screen.getPointOnMeshEdge(at));
    answers.emplace_back(screen.getShortestDistance(at), 0.0, 0.0);
    append(answers, screen.intersectChannelBoundary({{from, at}}, {}));
}

// What a caller shows of the whole mesh. The grid has one density, so that it is made once.
void appendViews(const TriangleScreen& screen, std::vector<Point3>& answers) {
    IScreenGeometry::Polylines lines;
    screen.sampleBoundary(lines);
    for (const auto& line : lines) append(answers, line);
    screen.sampleGrid(lines, 5);
    for (const auto& line : lines) append(answers, line);
    Point3 viewPoint;
    std::vector<int> indices;
    screen.generateGeometry(viewPoint, indices, answers, answers);
    append(answers, screen.getDefaultCalibrationPoints(4, 3));
    answers.push_back(screen.getCenterOfScreenHeading());
    answers.emplace_back(screen.getMaxAngleFromHeading(), 0.0, 0.0);
}

// The answers of every const query for one round's random arguments, as one list.
std::vector<Point3> answersOf(const TriangleScreen& screen, int round) {
    Rng rng(round);
    const Point3 from = rng.point(-1.0, 1.0);
    const Point3 at = anyQuestion(screen.mesh(), rng);
    std::vector<Point3> answers;
    for (const Intersection& hit : screen.intersect(from, at)) {
        answers.push_back(hit.point);
        answers.emplace_back(hit.uv[0], hit.uv[1], hit.triangleIndex);
    }
    answers.push_back(screen.getScreenNormal(at));
    answers.push_back(screen.getClosestPoint(at));
    answers.push_back(screen.getClosestPoint(from));
    answers.emplace_back(screen.isOnScreenSection(at), screen.hasValidBoundary(), screen.hasTesselation());
    answers.push_back(screen.getCentroid());
    answers.push_back(screen.getEyepoint());
    Point3 min;
    Point3 max;
    screen.getBounds(&min, &max);
    answers.push_back(min);
    answers.push_back(max);
    answers.emplace_back(screen.isPlanar(), screen.hasParameterization(), screen.getUniqueDataHash()[0]);
    appendMappings(screen, rng, from, at, answers);
    if (round % 16 != 0) return answers;
    appendViews(screen, answers);

    std::vector<Point2> outline;
    screen.sampleBoundaryUV(outline);
    append(answers, outline);
    Mesh copy;
    screen.getTesselation(copy);
    for (const Triangle& triangle : copy) answers.push_back(triangle.centroid);
    return answers;
}

std::vector<std::vector<Point3>> allAnswersOf(const TriangleScreen& screen) {
    std::vector<std::vector<Point3>> answers;
    answers.reserve(kRounds);
    for (int round = 0; round < kRounds; ++round) answers.push_back(answersOf(screen, round));
    return answers;
}

// Also a mesh without a valid boundary, and one on which a search tests the boundary.
std::vector<Mesh> someMeshes() {
    Mesh folded = dome({12, 10});
    foldUV(folded);
    return {dome({12, 10}), gridWithHoles({9, 7}, 2), folded};
}

}  // namespace

TEST(MeshScreenThreads, QueriesSideBySideGiveTheAnswersOfOneThread) {
    for (const Mesh& mesh : someMeshes()) {
        const TriangleScreen screen(mesh);
        const auto expected = allAnswersOf(screen);
        std::vector<std::vector<std::vector<Point3>>> answers(kThreads);
        runTogether(kThreads, [&](int i) { answers[static_cast<std::size_t>(i)] = allAnswersOf(screen); });
        for (const auto& ofOneThread : answers) EXPECT_TRUE(sameBits(ofOneThread, expected));
    }
}

TEST(MeshScreenThreads, ScreensComeAndGoWhileAnotherIsQueried) {
    constexpr int kBuilders = 3;
    const TriangleScreen screen(dome({12, 10}));
    const auto expected = allAnswersOf(screen);
    std::vector<std::vector<std::vector<Point3>>> answers(kThreads);
    std::atomic<int> asking = kThreads;
    std::atomic<int> built = 0;
    runTogether(kThreads + kBuilders, [&](int i) {
        if (i < kThreads) {
            answers[static_cast<std::size_t>(i)] = allAnswersOf(screen);
            --asking;
            return;
        }
        do {
            Rng rng(++built);
            TriangleScreen other(anyShape(rng));
            other.load(anyShape(rng));
            (void)other.intersect({0.0, 0.0, 0.0}, {0.0, 1.0, 0.0});
        } while (asking > 0);
    });
    for (const auto& ofOneThread : answers) EXPECT_TRUE(sameBits(ofOneThread, expected));
    EXPECT_GE(built, kBuilders);
}

// No screen outlives a round, so that the tracer is opened and closed again and again, by any
// thread.
TEST(MeshScreenThreads, TracerIsOpenedAndClosedByAnyThread) {
    std::atomic<int> wrong = 0;
    for (int round = 0; round < 20; ++round) {
        runTogether(kThreads, [&](int thread) {
            for (int i = 0; i < 5; ++i) {
                Rng rng(thread * 100 + i);
                auto screen = std::make_unique<TriangleScreen>();
                if (rng.coin()) screen->load(flatGrid({2, 2}));
                if (rng.coin()) screen = std::make_unique<TriangleScreen>(flatGrid({3, 3}));
                const int expected = screen->hasTesselation() ? 1 : 0;
                if (screen->intersect({0.1, -1.0, 0.2}, {0.1, 1.0, 0.2}).count() != expected) ++wrong;
            }
        });
    }
    EXPECT_EQ(wrong, 0);
}

TEST(MeshScreenThreads, ScreenMadeOnOneThreadIsQueriedAndDestroyedOnOthers) {
    std::vector<std::unique_ptr<TriangleScreen>> screens(kThreads);
    runTogether(kThreads, [&](int i) {
        screens[static_cast<std::size_t>(i)] = std::make_unique<TriangleScreen>(wave({4 + i, 4}));
    });
    std::vector<int> hits(kThreads);
    runTogether(kThreads, [&](int i) {
        auto& screen = screens[static_cast<std::size_t>((i + 3) % kThreads)];
        hits[static_cast<std::size_t>(i)] = screen->intersect({0.1, -2.0, 0.2}, {0.1, 2.0, 0.2}).count();
        screen.reset();
    });
    EXPECT_EQ(hits, std::vector<int>(kThreads, 1));
}
