#include <gtest/gtest.h>

#include <array>
#include <barrier>
#include <functional>
#include <thread>
#include <vector>

#include <QuarnScreen/FlatScreen.h>

#include "Support/GeometryBits.h"
#include "Support/Rng.h"

using namespace quarn::test;

namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 2000;

// Runs the same work on all threads, which begin together.
void runTogether(const std::function<void(int)>& work) {
    std::barrier start(kThreads);
    std::vector<std::jthread> threads;
    for (int i = 0; i < kThreads; ++i) {
        threads.emplace_back([&, i] {
            start.arrive_and_wait();
            work(i);
        });
    }
}

void append(std::vector<Point3>& all, const std::vector<Point3>& some) {
    all.insert(all.end(), some.begin(), some.end());
}

// The answers of every const query for one round's random arguments, as one list.
std::vector<Point3> answersOf(const FlatScreen& screen, int round) {
    Rng rng(round);
    const Point3 from = rng.point(-4.0, 4.0);
    const Point3 to = rng.point(-4.0, 4.0);
    std::vector<Point3> answers;
    for (const IntersectionSet& hits :
         {screen.intersect(from, to), screen.intersectExtrapolatedWithSpecifiedNormal(from, to, 1)})
        for (const Intersection& hit : hits) answers.push_back(hit.point);
    append(answers, screen.intersectChannelBoundary({{from, to}}, {{to, Point3()}}));
    answers.push_back(screen.getScreenNormal(from));
    answers.push_back(screen.getClosestPoint(from));
    const Point2 uv = screen.mapInto2D(from, false);
    Point3 mapped;
    const bool isOnScreen = screen.mapInto3D(uv, mapped, false);
    answers.push_back(mapped);
    answers.emplace_back(uv[0], uv[1], isOnScreen ? 1.0 : 0.0);
    append(answers, screen.getDefaultCalibrationPoints(3, 4));

    Point3 min;
    Point3 max;
    Point3 centre;
    screen.getBounds(&min, &max);
    screen.getCentreFromScreenBounds(&centre);
    append(answers, {min, max, centre, screen.getEyepoint(), screen.getCenterOfScreenHeading()});
    answers.emplace_back(screen.getShortestDistance(from), screen.getMaxAngleFromHeading(),
                         screen.getUniqueDataHash()[0]);

    IScreenGeometry::GridSamples samples;
    screen.sampleHorizontally(0.5, -0.5, 1.5, 5, round, samples, round % 2 == 0);
    for (const auto& [key, point] : samples) answers.push_back(point);
    IScreenGeometry::Polylines lines;
    screen.sampleGrid(lines, 3);
    screen.sampleBoundary(lines);
    for (const auto& line : lines) append(answers, line);
    std::vector<int> indices;
    std::vector<Point3> vertices;
    std::vector<Point3> normals;
    screen.generateGeometry(mapped, indices, vertices, normals);
    append(answers, vertices);
    return answers;
}

}  // namespace

// Run by itself, as the runner of the test cases does, this is the process's first use of the name.
TEST(Threads, FirstUseOfTheTypeNameIsSafe) {
    std::array<const std::string*, kThreads> names{};
    runTogether([&](int i) { names[static_cast<std::size_t>(i)] = &FlatScreen::type(); });
    for (const std::string* name : names) {
        EXPECT_EQ(name, names[0]);
        EXPECT_EQ(*name, "class FlatScreen");
    }
}

TEST(Threads, QueriesSideBySideGiveTheAnswersOfOneThread) {
    const FlatScreen screen(4.0, 3.0);
    std::vector<std::vector<Point3>> expected;
    for (int round = 0; round < kRounds; ++round) expected.push_back(answersOf(screen, round));

    std::array<std::vector<std::vector<Point3>>, kThreads> answers;
    runTogether([&](int i) {
        for (int round = 0; round < kRounds; ++round)
            answers[static_cast<std::size_t>(i)].push_back(answersOf(screen, round));
    });
    for (const auto& ofOneThread : answers) EXPECT_TRUE(sameBits(ofOneThread, expected));
}

TEST(Threads, ClosestIntersectionOfOneScreenSideBySide) {
    FlatScreen screen(4.0, 3.0);
    const auto resultsOf = [&screen] {
        std::vector<Intersection> results(kRounds);
        for (int round = 0; round < seedCount(kRounds); ++round) {
            Rng rng(round);
            const Point3 from = rng.point(-4.0, 4.0);
            const Point3 direction = rng.point(-4.0, 4.0);
            Intersection& result = results[static_cast<std::size_t>(round)];
            ScreenGeometry::getClosestIntersection(from, direction, &screen, result, rng.coin());
        }
        return results;
    };
    const auto expected = resultsOf();
    std::array<std::vector<Intersection>, kThreads> results;
    runTogether([&](int i) { results[static_cast<std::size_t>(i)] = resultsOf(); });
    for (const auto& ofOneThread : results) EXPECT_TRUE(sameBits(ofOneThread, expected));
}
