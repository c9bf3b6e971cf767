#include "Rows/ChannelPoints.h"

#include <gtest/gtest.h>

#include <QuarnScreen/FlatScreen.h>

#include "Support/Rng.h"

namespace quarn::test {
namespace {

using Ray = tool::ChannelPoints::Ray;
using Rays = IScreenGeometry::PointPairs;

// A wall that keeps rays of one side alone, as curved screens do.
class OneSidedWall : public FlatScreen {
public:
    using FlatScreen::FlatScreen;
    [[nodiscard]] IntersectionSet intersectExtrapolatedWithSpecifiedNormal(const Point<double, 3>& from,
                                                                           const Point<double, 3>& to,
                                                                           int normalSign) const override {
        IntersectionSet hits = FlatScreen::intersectExtrapolatedWithSpecifiedNormal(from, to, normalSign);
        if (hits.empty() || hits.first().normalSign != normalSign) return {};
        return hits;
    }
};

Rays randomRays(Rng& rng, int count) {
    Rays rays;
    for (int i = 0; i < count; ++i) {
        const Point<double, 3> from = rng.point(-3.0, 3.0);
        rays.emplace_back(from, rng.point(-3.0, 3.0));
    }
    return rays;
}

// The points of all rays one after the other, queried ray by ray.
std::vector<Point<double, 3>> pointsOneByOne(const IScreenGeometry& screen, const Rays& rays,
                                             const Rays& extra) {
    tool::ChannelPoints channel(screen);
    for (const Rays* list : {&rays, &extra})
        for (const Ray& ray : *list)
            if (!channel.hasSide() && channel.hits(ray)) channel.useSideOf(ray);
    std::vector<Point<double, 3>> points;
    for (const Ray& ray : rays)
        if (const auto point = channel.pointOf(ray)) points.push_back(*point);
    return points;
}

TEST(ChannelPoints, WithoutASideNoRayHasAPoint) {
    const FlatScreen wall(1.0, 1.0);
    tool::ChannelPoints channel(wall);
    EXPECT_FALSE(channel.hasSide());
    EXPECT_FALSE(channel.pointOf({{0, -1, 0}, {0, 0, 0}}));
}

TEST(ChannelPoints, ARayBeyondTheScreenGetsThePointOfTheContinuation) {
    const FlatScreen wall(1.0, 1.0);
    tool::ChannelPoints channel(wall);
    channel.useSideOf({{0, -1, 0}, {0, 0, 0}});
    EXPECT_EQ(channel.pointOf({{0, -1, 0}, {5, 0, 0}}), (Point<double, 3>(5, 0, 0)));
}

TEST(ChannelPoints, AreTogetherTheAnswerToTheWholeChannel) {
    int withSide = 0;
    int fromExtra = 0;
    for (int i = 0; i < seedCount(5000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const OneSidedWall wall(rng.uniform(0.1, 3.0), rng.uniform(0.1, 3.0));
        const Rays rays = randomRays(rng, rng.integer(0, 6));
        const Rays extra = randomRays(rng, rng.integer(0, 3));
        const auto whole = wall.intersectChannelBoundary(rays, extra);
        ASSERT_EQ(pointsOneByOne(wall, rays, extra), whole);
        if (!whole.empty()) ++withSide;
        if (!whole.empty() && wall.intersectChannelBoundary(rays, {}).empty()) ++fromExtra;
    }
    EXPECT_GT(withSide, seedCount(1000));
    EXPECT_GT(fromExtra, seedCount(100));
}

}  // namespace
}  // namespace quarn::test
