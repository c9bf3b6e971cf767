#include <gtest/gtest.h>

#include <map>

#include "Reference/Shapes/ReferenceContract.h"
#include "Support/ScriptedScreen.h"
#include "Support/WildNumbers.h"

using namespace quarn::test;

namespace {

constexpr int kCases = 20000;

// Hits whose positions come from a small lattice, so that ties and default hits happen, or are of
// any kind.
Intersection randomHit(Rng& rng) {
    Intersection hit;
    if (rng.integer(0, 3) == 0) {
        hit.point = wildPoint<3>(rng);
    } else {
        for (std::size_t axis = 0; axis < 3; ++axis) hit.point[axis] = rng.integer(-1, 1);
    }
    hit.hasUV = rng.integer(0, 3) == 0;
    if (hit.hasUV) hit.uv = wildPoint<2>(rng);
    hit.triangleIndex = rng.integer(-1, 1);
    hit.normalSign = rng.integer(-1, 1);
    return hit;
}

std::vector<Intersection> randomHits(Rng& rng) {
    std::vector<Intersection> hits(static_cast<std::size_t>(rng.integer(0, 4)));
    for (Intersection& hit : hits) hit = randomHit(rng);
    return hits;
}

int signByComparison(double number) {
    if (number > 0.0) return 1;
    if (number < 0.0) return -1;
    return 0;
}

// What a screen answers for one ray of a channel.
struct ScriptedRay {
    std::vector<Intersection> hits;
    Point3 normal;
    std::map<int, std::vector<Intersection>> extrapolated;
};

}  // namespace

TEST(SharedProperty, ClosestIntersectionEqualsTheReference) {
    int found = 0;
    int refused = 0;
    for (int i = 0; i < seedCount(kCases); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        ClosestQuery query;
        query.from = rng.integer(0, 3) == 0 ? wildPoint<3>(rng) : rng.point(-1.5, 1.5);
        query.forward = randomHits(rng);
        query.backward = randomHits(rng);
        query.closestPoint = rng.integer(0, 3) == 0 ? wildPoint<3>(rng) : rng.point(-1.5, 1.5);
        query.mappedUV = wildPoint<2>(rng);
        const bool extrapolate = rng.coin();

        ScriptedScreen screen;
        bool isFirstCall = true;
        const auto answer = [&] {
            const auto& hits = isFirstCall ? query.forward : query.backward;
            isFirstCall = false;
            return makeHits(hits);
        };
        screen.onIntersect = [&](const Point3&, const Point3&) {
            EXPECT_FALSE(extrapolate);
            return answer();
        };
        screen.onExtrapolated = [&](const Point3&, const Point3&, int) {
            EXPECT_TRUE(extrapolate);
            return answer();
        };
        screen.onClosestPoint = [&](const Point3&) { return query.closestPoint; };
        screen.onMapInto2D = [&](const Point3&, bool flag) {
            EXPECT_EQ(flag, extrapolate);
            return query.mappedUV;
        };

        const auto expected = closestHit(query);
        const Intersection before = randomHit(rng);
        Intersection result = before;
        EXPECT_EQ(ScreenGeometry::getClosestIntersection(query.from, rng.point(-1, 1), &screen, result,
                                                         extrapolate),
                  expected.has_value());
        EXPECT_TRUE(sameBits(result, expected.value_or(before)));
        ++(expected ? found : refused);
        if (::testing::Test::HasFailure()) return;
    }
    EXPECT_GT(found, kCases / 10);
    EXPECT_GT(refused, seedCount(kCases / 10));
}

TEST(SharedProperty, ChannelBoundaryEqualsTheReference) {
    int answered = 0;
    for (int i = 0; i < kCases / 2; ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const int rays = rng.integer(0, 5);
        const int extraRays = rng.integer(0, 3);
        std::vector<ScriptedRay> scripts(static_cast<std::size_t>(rays + extraRays));
        IScreenGeometry::PointPairs pairs;
        for (std::size_t k = 0; k < scripts.size(); ++k) {
            if (rng.integer(0, 2) == 0) scripts[k].hits = randomHits(rng);
            scripts[k].normal = rng.coin() ? wildPoint<3>(rng) : rng.point(-1, 1);
            for (const int side : {-1, 0, 1}) scripts[k].extrapolated[side] = randomHits(rng);
            // The first coordinate of a ray's start is its number, by which the screen knows it.
            Point3 from = rng.point(-1, 1);
            from[0] = static_cast<double>(k);
            pairs.emplace_back(from, rng.coin() ? wildPoint<3>(rng) : rng.point(-1, 1));
        }

        ScriptedScreen screen;
        const ScriptedRay* last = nullptr;
        const auto scriptOf = [&](const Point3& from) -> const ScriptedRay& {
            return scripts[static_cast<std::size_t>(from[0])];
        };
        screen.onIntersect = [&](const Point3& from, const Point3& to) {
            last = &scriptOf(from);
            EXPECT_TRUE(sameBits(to, pairs[static_cast<std::size_t>(from[0])].second));
            return makeHits(last->hits);
        };
        screen.onNormal = [&](const Point3& point) {
            EXPECT_TRUE(sameBits(point, last->hits.front().point));
            return last->normal;
        };
        screen.onExtrapolated = [&](const Point3& from, const Point3&, int side) {
            return makeHits(scriptOf(from).extrapolated.at(side));
        };

        std::vector<Point3> expected;
        for (std::size_t k = 0; k < scripts.size(); ++k) {
            if (scripts[k].hits.empty()) continue;
            const auto& [from, to] = pairs[k];
            const Point3& normal = scripts[k].normal;
            const int side = signByComparison((to[0] - from[0]) * normal[0] + (to[1] - from[1]) * normal[1] +
                                              (to[2] - from[2]) * normal[2]);
            for (std::size_t ray = 0; ray < static_cast<std::size_t>(rays); ++ray)
                if (const auto& hits = scripts[ray].extrapolated.at(side); !hits.empty())
                    expected.push_back(hits.front().point);
            break;
        }
        const auto border = pairs.begin() + rays;
        EXPECT_TRUE(sameBits(screen.intersectChannelBoundary({pairs.begin(), border}, {border, pairs.end()}),
                             expected));
        answered += expected.empty() ? 0 : 1;
        if (::testing::Test::HasFailure()) return;
    }
    EXPECT_GT(answered, kCases / 20);
}

TEST(SharedProperty, GridAndOutlineKeepWhatTheScreenMaps) {
    for (int i = 0; i < seedCount(500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const int density = rng.integer(-3, 30);
        // Every answer is drawn by its number, so that both ways of walking see the same one.
        std::vector<Point3> answers(2000);
        std::vector<bool> accepted(answers.size());
        for (std::size_t k = 0; k < answers.size(); ++k) {
            answers[k] = wildPoint<3>(rng);
            accepted[k] = rng.coin();
        }
        std::size_t next = 0;
        ScriptedScreen screen;
        screen.onMapInto3D = [&](const Point2&, Point3& point, bool) {
            point = answers.at(next);
            return static_cast<bool>(accepted.at(next++));
        };
        const auto keptOf = [&](std::size_t first, std::size_t count) {
            std::vector<Point3> kept;
            for (std::size_t k = first; k < first + count; ++k)
                if (accepted[k]) kept.push_back(answers[k]);
            return kept;
        };
        IScreenGeometry::Polylines grid;
        screen.sampleGrid(grid, density);
        EXPECT_TRUE(sameBits(grid, IScreenGeometry::Polylines{keptOf(0, gridPath(density).size())}));

        next = 0;
        IScreenGeometry::Polylines boundary;
        screen.sampleBoundary(boundary);
        EXPECT_TRUE(
            sameBits(boundary, std::vector{keptOf(0, 20), keptOf(20, 20), keptOf(40, 20), keptOf(60, 20)}));
    }
}
