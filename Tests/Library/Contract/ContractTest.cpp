#include <gtest/gtest.h>

#include <type_traits>

#include <QuarnScreen/FlatScreen.h>

#include "Support/FixedConfig.h"
#include "Support/ScriptedScreen.h"

using namespace quarn::test;

namespace {

using Screen = IScreenGeometry;
using Hash = std::array<unsigned char, 20>;

template <class Expected, class Actual>
constexpr bool isSignature(Actual) {
    return std::is_same_v<Expected, Actual>;
}

static_assert(std::is_abstract_v<ITypeid> && std::has_virtual_destructor_v<ITypeid>);
static_assert(std::is_abstract_v<IXmlSerializable> && std::has_virtual_destructor_v<IXmlSerializable>);
static_assert(std::is_abstract_v<IScreenConfig> && std::has_virtual_destructor_v<IScreenConfig>);
static_assert(std::is_abstract_v<Screen> && std::has_virtual_destructor_v<Screen>);
static_assert(std::is_abstract_v<ScreenGeometry> && std::has_virtual_destructor_v<ScreenGeometry>);
static_assert(std::is_base_of_v<ScreenGeometry, FlatScreen>);
static_assert(std::is_copy_constructible_v<FlatScreen> && std::is_copy_assignable_v<FlatScreen>);
static_assert(std::is_constructible_v<FlatScreen, IScreenConfig*>);
static_assert(std::is_constructible_v<FlatScreen, double, double>);
static_assert(std::is_aggregate_v<FlatScreenParams>);

// The signatures are settled: which operations are const, what they take and what they answer.
static_assert(isSignature<void (IXmlSerializable::*)(std::wostream&, int)>(&Screen::serialize));
static_assert(isSignature<void (IXmlSerializable::*)(xercesc::DOMNode*)>(&Screen::deserialize));
static_assert(isSignature<const std::string& (ITypeid::*)() const>(&Screen::getType));
static_assert(isSignature<void (Screen::*)(IScreenConfig*)>(&Screen::updateGeometry));
static_assert(isSignature<void (Screen::*)(double, double, double, int, int, std::map<Point<int, 2>, Point3>&,
                                           bool) const>(&Screen::sampleHorizontally));
static_assert(
    isSignature<IntersectionSet (Screen::*)(const Point3&, const Point3&) const>(&Screen::intersect));
static_assert(isSignature<IntersectionSet (Screen::*)(const Point3&, const Point3&, int) const>(
    &Screen::intersectExtrapolatedWithSpecifiedNormal));
static_assert(isSignature<std::vector<Point3> (Screen::*)(const std::vector<std::pair<Point3, Point3>>&,
                                                          const std::vector<std::pair<Point3, Point3>>&)
                              const>(&Screen::intersectChannelBoundary));
static_assert(isSignature<bool (Screen::*)(const Point3&) const>(&Screen::isOnScreenSection));
static_assert(isSignature<Point3 (Screen::*)(const Point3&) const>(&Screen::getScreenNormal));
static_assert(isSignature<Point3 (Screen::*)(const Point3&) const>(&Screen::getClosestPoint));
static_assert(isSignature<Point2 (Screen::*)(const Point3&, bool) const>(&Screen::mapInto2D));
static_assert(isSignature<bool (Screen::*)(const Point2&, Point3&, bool) const>(&Screen::mapInto3D));
static_assert(
    isSignature<std::vector<Point3> (Screen::*)(int, int) const>(&Screen::getDefaultCalibrationPoints));
static_assert(isSignature<void (Screen::*)(Point3&, std::vector<int>&, std::vector<Point3>&,
                                           std::vector<Point3>&) const>(&Screen::generateGeometry));
static_assert(
    isSignature<void (Screen::*)(std::vector<std::vector<Point3>>&) const>(&Screen::sampleBoundary));
static_assert(isSignature<void (Screen::*)(std::vector<Point2>&) const>(&Screen::sampleBoundaryUV));
static_assert(
    isSignature<void (Screen::*)(std::vector<std::vector<Point3>>&, int) const>(&Screen::sampleGrid));
static_assert(isSignature<Point3 (Screen::*)() const>(&Screen::getEyepoint));
static_assert(isSignature<Point3 (Screen::*)() const>(&Screen::getCenterOfScreenHeading));
static_assert(isSignature<double (Screen::*)() const>(&Screen::getMaxAngleFromHeading));
static_assert(isSignature<bool (Screen::*)() const>(&Screen::isValid));
static_assert(isSignature<Hash (Screen::*)() const>(&Screen::getUniqueDataHash));
static_assert(isSignature<void (Screen::*)(std::vector<Triangle>&) const>(&Screen::getTesselation));
static_assert(isSignature<void (Screen::*)(Point3*, Point3*) const>(&Screen::getBounds));
static_assert(isSignature<double (Screen::*)(const Point3&) const>(&Screen::getShortestDistance));
static_assert(isSignature<bool (*)(const Point3&, const Point3&, Screen*, Intersection&, bool)>(
    &ScreenGeometry::getClosestIntersection));
static_assert(
    isSignature<void (ScreenGeometry::*)(Point3*) const>(&ScreenGeometry::getCentreFromScreenBounds));

// A config of a caller who knows the eight getters alone.
class LeastConfig : public IScreenConfig {
public:
    [[nodiscard]] Point3 getCenter() const override { return {}; }
    [[nodiscard]] double getWidth() const override { return 4.0; }
    [[nodiscard]] double getHeight() const override { return 3.0; }
    [[nodiscard]] double getRadius() const override { return 0.0; }
    [[nodiscard]] double getMinTheta() const override { return 0.0; }
    [[nodiscard]] double getMaxTheta() const override { return 0.0; }
    [[nodiscard]] double getMinPhi() const override { return 0.0; }
    [[nodiscard]] double getMaxPhi() const override { return 0.0; }
};

// Shows the logger, which only derived classes reach.
class LoggingScreen : public ScriptedScreen {
public:
    static const log4cxx::LoggerPtr& logger() { return log; }
};

}  // namespace

TEST(Contract, XmlStandsFirstAndTheTypeNameSecond) {
    const FlatScreen screen(4.0, 3.0);
    const auto* contract = static_cast<const IScreenGeometry*>(&screen);
    const auto addressOf = [](const auto* base) { return reinterpret_cast<const char*>(base); };
    EXPECT_EQ(addressOf(static_cast<const IXmlSerializable*>(contract)), addressOf(contract));
    EXPECT_EQ(addressOf(static_cast<const ITypeid*>(contract)) - addressOf(contract),
              static_cast<std::ptrdiff_t>(sizeof(void*)));
}

TEST(Contract, BaseOfAllShapesHoldsNoData) {
    EXPECT_EQ(sizeof(ScreenGeometry), 2 * sizeof(void*));
}

TEST(Contract, NoExtrapolationIsFalseAndHasAnAddress) {
    const bool* name = &IScreenGeometry::kNoExtrapolation;
    EXPECT_FALSE(*name);
}

TEST(Contract, TypeNameIsTheOneInFiles) {
    const FlatScreen screen;
    const IScreenGeometry& contract = screen;
    EXPECT_EQ(FlatScreen::type(), "class FlatScreen");
    EXPECT_EQ(&contract.getType(), &FlatScreen::type());
}

TEST(Contract, BaseAnswersForShapesThatDoNot) {
    ScriptedScreen scripted;
    const IScreenGeometry& screen = scripted;
    EXPECT_TRUE(screen.isValid());
    EXPECT_FALSE(screen.hasTesselation());
    std::vector<Triangle> triangles(3);
    screen.getTesselation(triangles);
    EXPECT_EQ(triangles.size(), 3U);
    std::vector<Point2> outline{Point2(1, 2)};
    screen.sampleBoundaryUV(outline);
    EXPECT_TRUE(sameBits(outline, std::vector{Point2(1, 2)}));
    EXPECT_TRUE(scripted.calls.empty());
}

TEST(Contract, ConfigNeedsTheEightGettersAlone) {
    LeastConfig config;
    config.firstReserved();
    config.secondReserved();
    const FlatScreen screen(&config);
    EXPECT_EQ(screen.getWidth(), 4.0);
    EXPECT_EQ(screen.getHeight(), 3.0);
}

TEST(Contract, ReservedOperationsOfAConfigAreNeverCalled) {
    FixedConfig config(4.0, 3.0);
    FlatScreen screen(&config);
    screen.updateGeometry(&config);
    EXPECT_EQ(FlatScreen::calcUniqueDataHash(&config), screen.getUniqueDataHash());
    for (const std::string& call : config.calls)
        EXPECT_TRUE(call == "getWidth" || call == "getHeight") << call;
}

TEST(Contract, DerivedClassesReachTheSharedLogger) {
    ASSERT_NE(LoggingScreen::logger(), nullptr);
    EXPECT_EQ(LoggingScreen::logger()->getName(), "Quarn.QuarnScreen.ScreenGeometry");
}

TEST(Contract, ScreenIsDestroyedThroughAnyOfItsInterfaces) {
    delete static_cast<ITypeid*>(new FlatScreen(4.0, 3.0));
    delete static_cast<IXmlSerializable*>(new FlatScreen(4.0, 3.0));
    delete static_cast<IScreenGeometry*>(new FlatScreen(4.0, 3.0));
    delete static_cast<IScreenConfig*>(new FixedConfig());
}
