#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

#include <Common/Detail/Assert.h>
#include <Common/XmlHelper.h>
#include <QuarnScreen/Detail/Boundary/BoundaryWalkLists.h>
#include <QuarnScreen/Detail/Boundary/BoundaryWalkMaps.h>
#include <QuarnScreen/Detail/Limits/TerminationChecks.h>
#include <QuarnScreen/Detail/Platform/PagePrefault.h>
#include <QuarnScreen/Detail/Search/TriangleContainment.h>
#include <QuarnScreen/Detail/Shapes/HitPair.h>
#include <QuarnScreen/QuarnScreen.h>

namespace {

constexpr const char* kAborts = "assertion failed: ";

template <class Screen>
class ScreenAssertionDeathTest : public testing::Test {};

using AnalyticScreens = testing::Types<FlatScreen, CylinderScreen, SphericalScreen, RuledSurfaceScreen>;
TYPED_TEST_SUITE(ScreenAssertionDeathTest, AnalyticScreens);

class AssertionDeathTest : public testing::Test {
protected:
    // Other tests of the program may have started threads.
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

}  // namespace

TYPED_TEST(ScreenAssertionDeathTest, NullConfigAborts) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    IScreenConfig* const none = nullptr;
    EXPECT_DEATH({ TypeParam screen(none); }, "assertion failed: config != nullptr");
    EXPECT_DEATH((void)TypeParam::calcUniqueDataHash(none), "assertion failed: config != nullptr");
}

TYPED_TEST(ScreenAssertionDeathTest, NullNodeAborts) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    TypeParam screen;
    EXPECT_DEATH(screen.deserialize(nullptr), "assertion failed: node != nullptr");
}

TEST_F(AssertionDeathTest, MessageStatesFileLineAndCondition) {
    const int two = 2;
    EXPECT_DEATH(QUARN_ASSERT(two == 3), "AssertionTest.cpp:[0-9]+: assertion failed: two == 3");
}

TEST_F(AssertionDeathTest, TrueConditionIsEvaluatedOnce) {
    int evaluations = 0;
    QUARN_ASSERT(++evaluations == 1);
    EXPECT_EQ(evaluations, 1);
}

TEST_F(AssertionDeathTest, NullNodeOfAValueAborts) {
    EXPECT_DEATH((void)XmlHelper::readDouble(nullptr, L""), kAborts);
    EXPECT_DEATH((void)XmlHelper::readPoint(nullptr, nullptr), kAborts);
    EXPECT_DEATH((void)ScreenGeometryXmlHelper::extractAndBase64DecodeDefinitionString(nullptr), kAborts);
}

TEST_F(AssertionDeathTest, NullScreenOfAClosestIntersectionAborts) {
    Intersection result;
    EXPECT_DEATH((void)ScreenGeometry::getClosestIntersection({}, {0.0, 1.0, 0.0}, nullptr, result, false),
                 "assertion failed: screen != nullptr");
}

TEST_F(AssertionDeathTest, NullResultOfBoundsAborts) {
    Point<double, 3> corner;
    const FlatScreen flat(4.0, 2.0);
    EXPECT_DEATH(flat.getBounds(nullptr, &corner), kAborts);
    EXPECT_DEATH(flat.getCentreFromScreenBounds(nullptr), kAborts);
    const SphericalScreen sphere;
    EXPECT_DEATH(sphere.getBounds(&corner, nullptr), kAborts);
}

TEST_F(AssertionDeathTest, InvalidIndexOfARegionMapAborts) {
    const std::vector<Triangle> triangles(3);
    RegionMap map;
    map.rebuild(triangles.data(), triangles.data() + triangles.size());
    ASSERT_EQ(map.nodes().size(), 1U);
    EXPECT_DEATH((void)map.nodes().back().triangle(-1), kAborts);
    EXPECT_DEATH((void)map.nodes().back().triangle(3), kAborts);
    std::optional<const Triangle*> result;
    EXPECT_DEATH(map.locate(-1, map.rootRect(), 0.0, 0.0, result), kAborts);
    EXPECT_DEATH(map.locate(1, map.rootRect(), 0.0, 0.0, result), kAborts);
}

TEST_F(AssertionDeathTest, ThirdHitAborts) {
    quarn::detail::HitPair hits;
    hits.add(Intersection());
    hits.add(Intersection());
    EXPECT_DEATH(hits.add(Intersection()), kAborts);
}

TEST_F(AssertionDeathTest, SecondRangeToPrefaultAborts) {
    constexpr std::size_t kSize = std::size_t{1} << 24U;
    const auto memory = std::make_unique_for_overwrite<char[]>(kSize);
    quarn::detail::PagePrefault pages;
    pages.setRange(memory.get(), kSize);
    EXPECT_DEATH(pages.setRange(memory.get(), kSize), kAborts);
}

TEST_F(AssertionDeathTest, FirstOfNoBoundaryEdgesAborts) {
    const std::vector<Triangle> none;
    quarn::detail::BoundaryWalkLists lists(none, std::vector<std::uint32_t>());
    EXPECT_DEATH((void)lists.takeFirst(), kAborts);
    quarn::detail::BoundaryWalkMaps maps(none);
    EXPECT_DEATH((void)maps.takeFirst(), kAborts);
}

TEST_F(AssertionDeathTest, ParametersInADegenerateTriangleAbort) {
    EXPECT_DEATH((void)quarn::detail::parametersOf(Triangle(), {0.0, 0.0}), kAborts);
}

TEST_F(AssertionDeathTest, CountOfAnEndlessRefinementAborts) {
    std::vector<Triangle> triangles(1);
    triangles[0].vertices[1].position = {1.0, 0.0, 0.0};
    EXPECT_DEATH((void)quarn::detail::countRefinedTriangles(triangles, 0.0, 10), kAborts);
    triangles[0].vertices[1].position[0] = std::numeric_limits<double>::quiet_NaN();
    EXPECT_DEATH((void)quarn::detail::countRefinedTriangles(triangles, 1.0, 10), kAborts);
}
