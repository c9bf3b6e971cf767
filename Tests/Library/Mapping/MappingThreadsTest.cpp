// Mapping on many threads at once gives the answers of one.
#include <gtest/gtest.h>

#include <array>
#include <barrier>
#include <functional>
#include <thread>

#include <QuarnScreen/Detail/Mesh/MappingCache.h>

#include "Library/Mapping/MappingCases.h"
#include "Support/Mesh/MeshCases.h"

using namespace quarn::test;

namespace {

constexpr int kThreads = 16;
constexpr int kQuestions = 400;
constexpr int kRounds = 3;
const Point3 kBefore(1.0, 2.0, 3.0);

struct Question {
    Point2 uv;
    bool extrapolate = false;
};

// Some questions come again and again, so that the ring answers them. Each UV goes with one flag,
// so that no answer depends on earlier queries.
std::vector<Question> makeQuestions(const Mesh& mesh) {
    constexpr int kHot = 8;
    std::vector<Question> questions;
    for (int i = 0; i < seedCount(kQuestions); ++i) {
        Rng rng(i);
        if (i >= kHot && i % 3 == 0)
            questions.push_back(questions[static_cast<std::size_t>(rng.integer(0, kHot - 1))]);
        else if (i % 11 == 10)
            questions.push_back({anyOf(mesh, rng).vertices[0].uv, true});
        else
            questions.push_back({{rng.uniform(-0.5, 1.5), rng.uniform(-0.5, 1.5)}, rng.coin()});
    }
    return questions;
}

// Runs the same work on all threads, which begin together.
void runTogether(const std::function<void(std::size_t)>& work) {
    std::barrier start(kThreads);
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < kThreads; ++i)
        threads.emplace_back([&, i] {
            start.arrive_and_wait();
            work(i);
        });
}

// Half of the threads go side by side, the others from places of their own.
std::size_t placeOf(std::size_t step, std::size_t thread, std::size_t count) {
    return (step + (thread % 2 == 0 ? 0 : thread * 25)) % count;
}

}  // namespace

TEST(MappingThreads, PositionsAreThoseOfOneThreadThatRemembersNothing) {
    const TriangleScreen screen(wave({24, 20}));
    const std::vector<Question> questions = makeQuestions(screen.mesh());
    ReferenceMapping plain(screen.mesh());
    std::vector<Mapped> expected;
    for (const Question& question : questions) {
        plain.cache = {};
        expected.push_back(map(plain, question.uv, question.extrapolate, kBefore));
    }

    std::array<std::vector<Mapped>, kThreads> answers;
    runTogether([&](std::size_t thread) {
        for (int round = 0; round < kRounds; ++round) {
            std::vector<Mapped> mine(questions.size());
            for (std::size_t step = 0; step < questions.size(); ++step) {
                const std::size_t i = placeOf(step, thread, questions.size());
                mine[i] = map(screen, questions[i].uv, questions[i].extrapolate, kBefore);
            }
            answers[thread] = mine;
        }
    });
    for (const auto& ofOneThread : answers) EXPECT_TRUE(sameBits(ofOneThread, expected));
}

TEST(MappingThreads, UVsAreThoseOfTheReference) {
    const TriangleScreen screen(dome({12, 10}));
    const ReferenceMesh plain(screen.mesh(), screen.outline().uvPoints, screen.hasValidBoundary());
    std::vector<Point3> positions;
    std::vector<Point2> expected;
    for (int i = 0; i < seedCount(kQuestions); ++i) {
        Rng rng(i);
        positions.push_back(anyQuestion(screen.mesh(), rng));
        expected.push_back(referenceMapInto2D(plain, positions.back(), i % 2 == 0));
    }
    std::array<std::vector<Point2>, kThreads> answers;
    runTogether([&](std::size_t thread) {
        for (std::size_t i = 0; i < positions.size(); ++i)
            answers[thread].push_back(screen.mapInto2D(positions[i], i % 2 == 0));
    });
    for (const auto& ofOneThread : answers) EXPECT_TRUE(sameBits(ofOneThread, expected));
}

// With both flags for one UV the position of a refusal depends on who came first, but only on that.
TEST(MappingThreads, RefusalsGiveTheCallersOrTheExtrapolatedPosition) {
    const TriangleScreen screen(wave({8, 8}));
    ReferenceMapping plain(screen.mesh());
    std::array<int, kThreads> wrong{};
    runTogether([&](std::size_t thread) {
        for (int step = 0; step < 1500; ++step) {
            const Point2 uv(1.25 + 0.125 * (step % 24), 0.5);
            const bool extrapolate = (step / 24 + static_cast<int>(thread)) % 3 == 0;
            const Point3 continued = referenceExtrapolateUV(plain.uvTree, uv);
            const Mapped mapped = map(screen, uv, extrapolate, kBefore);
            const bool isContinued = sameBits(mapped.point, continued);
            const bool isUntouched = sameBits(mapped.point, kBefore);
            if (mapped.isAnswer != extrapolate || !(isContinued || (!extrapolate && isUntouched)))
                ++wrong[thread];
        }
    });
    for (const int count : wrong) EXPECT_EQ(count, 0);
}

TEST(MappingThreads, EntriesOfTheCacheAreNeverHalfWritten) {
    quarn::detail::MappingCache cache;
    std::array<int, kThreads> wrong{};
    std::array<int, kThreads> hits{};
    runTogether([&](std::size_t thread) {
        Rng rng(static_cast<int>(thread));
        for (int step = 0; step < 20000; ++step) {
            const double u = rng.integer(0, 29);
            const auto found = cache.find({u, -u});
            if (!found) {
                cache.add({{u, -u}, {u, u + 1.0, u + 2.0}, MeshScreen::MappingInto3D::Extrapolated});
                continue;
            }
            ++hits[thread];
            const bool isWhole = sameBits(found->uv, Point2(u, -u)) &&
                                 sameBits(found->point, Point3(u, u + 1.0, u + 2.0)) &&
                                 found->state == MeshScreen::MappingInto3D::Extrapolated;
            if (!isWhole) ++wrong[thread];
        }
    });
    for (std::size_t thread = 0; thread < kThreads; ++thread) {
        EXPECT_EQ(wrong[thread], 0);
        EXPECT_GT(hits[thread], 100);
    }
}
