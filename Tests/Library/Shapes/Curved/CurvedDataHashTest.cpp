#include <cstddef>
#include <limits>

#include "Library/Shapes/Curved/CurvedCases.h"
#include "Support/FixedConfig.h"
#include "Support/HashText.h"
#include "Support/ScreenXml.h"

namespace quarn::test {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kDoublePi = 3.141592653589793;

template <class Params>
struct KnownHash {
    Params params;
    const char* hex;
};

// hashlib.sha1(struct.pack("<7d", ...)).hexdigest() in Python.
const KnownHash<CylinderScreenParams> kCylinderHashes[] = {
    {{Point3(0.0, 0.0, 0.0), 2.0, -1.0, 1.0, 3.0}, "0cdac90562033fd27788f98079b28f668aa9a560"},
    {{Point3(1.0, 2.0, 3.0), 4.0, 5.0, 6.0, 7.0}, "d284276b1d584d78f958149feb1dc5cab0ef950d"},
    {{Point3(-0.0, 0.0, 0.0), 2.0, -1.0, 1.0, 3.0}, "fa5be1bbe5fe82bf62f3136c6aea34ab4488cdc1"},
    {{Point3(0.1, 0.2, 0.3), 0.4, -0.5, 0.6, 0.7}, "e734a739d23b1d41db23b68abb9e26d7e7398b03"},
    {{Point3(kInfinity, -kInfinity, 5e-324), 1.7976931348623157e308, -kDoublePi, kDoublePi, 0.0},
     "59279b7e90a571151373bb8c25eccf7f96fa1b6c"},
};

// hashlib.sha1(struct.pack("<8d", ...)).hexdigest() in Python.
const KnownHash<SphericalScreenParams> kSphereHashes[] = {
    {{Point3(0.0, 0.0, 0.0), 2.0, -1.0, 1.0, -0.5, 0.5}, "5d136e9b1dcd9fc62148eef9471b24042ef0265c"},
    {{Point3(1.0, 2.0, 3.0), 4.0, 5.0, 6.0, 7.0, 8.0}, "826cf9d3a5d74bbe415e97d4cecf03f445f69225"},
    {{Point3(-0.0, 0.0, 0.0), 2.0, -1.0, 1.0, -0.5, 0.5}, "ff519de0070b61e1127880690d2873e0b26df18a"},
    {{Point3(0.1, 0.2, 0.3), 0.4, -0.5, 0.6, -0.7, 0.8}, "decdab0223d0082cf56c1c01883bfce78b515f84"},
    {{Point3(kInfinity, -kInfinity, 5e-324), 1.7976931348623157e308, -kDoublePi, kDoublePi, 0.0,
      1.5707963267948966},
     "1aa4ce43e1ad6c8725e164340a7d17e4008da127"},
};

CylinderScreen screenOf(const CylinderScreenParams& p) {
    return {p.center, p.radius, p.minTheta, p.maxTheta, p.height};
}
SphericalScreen screenOf(const SphericalScreenParams& p) {
    return {p.center, p.radius, p.minTheta, p.maxTheta, p.minPhi, p.maxPhi};
}

void setExtent(FixedConfig& config, const CylinderScreenParams& p) {
    config.height = p.height;
}
void setExtent(FixedConfig& config, const SphericalScreenParams& p) {
    config.minPhi = p.minPhi;
    config.maxPhi = p.maxPhi;
}

template <class Params>
FixedConfig configOf(const Params& p) {
    FixedConfig config(-77.0, -88.0);
    config.center = p.center;
    config.radius = p.radius;
    config.minTheta = p.minTheta;
    config.maxTheta = p.maxTheta;
    setExtent(config, p);
    return config;
}

template <class Screen, class Params>
void expectOnEveryRoad(const KnownHash<Params>& known) {
    SCOPED_TRACE(known.hex);
    FixedConfig config = configOf(known.params);
    Screen updated;
    updated.updateGeometry(&config);
    EXPECT_EQ(hexOf(screenOf(known.params).getUniqueDataHash()), known.hex);
    EXPECT_EQ(hexOf(Screen(&config).getUniqueDataHash()), known.hex);
    EXPECT_EQ(hexOf(updated.getUniqueDataHash()), known.hex);
    EXPECT_EQ(hexOf(Screen::calcUniqueDataHash(known.params)), known.hex);
    EXPECT_EQ(hexOf(Screen::calcUniqueDataHash(&config)), known.hex);
    const auto copy = screenOf(known.params);
    EXPECT_EQ(hexOf(Screen(copy).getUniqueDataHash()), known.hex);
}

TEST(CurvedDataHash, CylinderIsNamedByItsSevenNumbersOnEveryRoad) {
    for (const auto& known : kCylinderHashes) expectOnEveryRoad<CylinderScreen>(known);
}

TEST(CurvedDataHash, SphereIsNamedByItsEightNumbersOnEveryRoad) {
    for (const auto& known : kSphereHashes) expectOnEveryRoad<SphericalScreen>(known);
}

TEST(CurvedDataHash, RecordsHaveNoPadding) {
    EXPECT_EQ(sizeof(CylinderScreenParams), 56U);
    EXPECT_EQ(offsetof(CylinderScreenParams, radius), 24U);
    EXPECT_EQ(offsetof(CylinderScreenParams, height), 48U);
    EXPECT_EQ(sizeof(SphericalScreenParams), 64U);
    EXPECT_EQ(offsetof(SphericalScreenParams, radius), 24U);
    EXPECT_EQ(offsetof(SphericalScreenParams, maxPhi), 56U);
}

TEST(CurvedDataHash, EachParameterCounts) {
    const CylinderScreenParams cylinder{Point3(), 2.0, -1.0, 1.0, 3.0};
    for (std::size_t i = 0; i < 3; ++i) {
        CylinderScreenParams moved = cylinder;
        moved.center[i] = -0.0;
        EXPECT_NE(CylinderScreen::calcUniqueDataHash(moved), CylinderScreen::calcUniqueDataHash(cylinder));
    }
    const SphericalScreenParams sphere{Point3(), 2.0, -1.0, 1.0, -0.5, 0.5};
    SphericalScreenParams swapped = sphere;
    std::swap(swapped.minPhi, swapped.maxPhi);
    EXPECT_NE(SphericalScreen::calcUniqueDataHash(swapped), SphericalScreen::calcUniqueDataHash(sphere));
}

TEST(CurvedDataHash, ConfigIsReadInItsOrder) {
    FixedConfig config;
    using Calls = std::vector<std::string>;
    const auto callsOf = [&config](const auto& ask) {
        config.calls.clear();
        ask();
        return config.calls;
    };
    const Calls cylinder{"getCenter", "getRadius", "getMinTheta", "getMaxTheta", "getHeight"};
    EXPECT_EQ(callsOf([&] { const CylinderScreen screen(&config); }), cylinder);
    EXPECT_EQ(callsOf([&] { CylinderScreen().updateGeometry(&config); }), cylinder);
    EXPECT_EQ(callsOf([&] { (void)CylinderScreen::calcUniqueDataHash(&config); }),
              Calls(cylinder.rbegin(), cylinder.rend()));
    const Calls sphere{"getCenter", "getRadius", "getMinTheta", "getMaxTheta", "getMinPhi", "getMaxPhi"};
    EXPECT_EQ(callsOf([&] { const SphericalScreen screen(&config); }), sphere);
    EXPECT_EQ(callsOf([&] { SphericalScreen().updateGeometry(&config); }), sphere);
    EXPECT_EQ(callsOf([&] { (void)SphericalScreen::calcUniqueDataHash(&config); }),
              Calls(sphere.rbegin(), sphere.rend()));
}

TEST(CurvedDataHash, XmlKeepsTheDigestOfSixteenDigitsAlone) {
    const CylinderScreen short16(Point3(0.5, 0.25, 3.0), 2.5, -1.0, 0.3, 3.0);
    EXPECT_EQ(savedAndReloaded(short16).getUniqueDataHash(), short16.getUniqueDataHash());
    const CylinderScreen long17(Point3(), 0.1 + 0.2, -1.0, 1.0, 3.0);  // 0.30000000000000004
    EXPECT_NE(savedAndReloaded(long17).getUniqueDataHash(), long17.getUniqueDataHash());
    const SphericalScreen longPhi(Point3(), 1.0, -1.0, 1.0, 0.0, 0.1 + 0.2);
    EXPECT_NE(savedAndReloaded(longPhi).getUniqueDataHash(), longPhi.getUniqueDataHash());
}

}  // namespace
}  // namespace quarn::test
