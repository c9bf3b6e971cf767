#include <gtest/gtest.h>

#include "Library/Shapes/Ruled/RuledScreens.h"
#include "Support/FixedConfig.h"

using namespace quarn::test;

namespace {

std::string hex(const ScreenGeometry::DataHash& hash) {
    std::string text;
    for (const unsigned char byte : hash) {
        text += "0123456789abcdef"[byte >> 4U];
        text += "0123456789abcdef"[byte & 15U];
    }
    return text;
}

FixedConfig configOf(double width, double height) {
    FixedConfig config(width, height);
    config.minTheta = -0.5;
    config.maxTheta = 0.5;
    config.minPhi = -0.25;
    config.maxPhi = 0.75;
    // What is no part of the digest.
    config.center = Point3(1, 2, 3);
    config.radius = 4.0;
    return config;
}

OpenRuledScreen screenOf(double width, double height) {
    return {width, height, -0.5, 0.5, -0.25, 0.75};
}

// SHA-1 of the little-endian doubles 2, 3, -0.5, 0.5, -0.25, 0.75.
constexpr const char* kTwoThree = "57be0355b90348fd49075aec96135c41d5185e16";
// The same with 3, 2 and with 2, 2 in front.
constexpr const char* kThreeTwo = "7348b14ae56e49ac6c0af2fc545b80c39c573263";
constexpr const char* kTwoTwo = "8a569f1d39c72b0631a76dcd7afcf24c764cafc3";

}  // namespace

TEST(RuledScreenHash, ScreenPutsTheWidthFirst) {
    EXPECT_EQ(hex(screenOf(2.0, 3.0).getUniqueDataHash()), kTwoThree);
    EXPECT_EQ(hex(screenOf(3.0, 2.0).getUniqueDataHash()), kThreeTwo);
}

TEST(RuledScreenHash, ConfigPutsTheHeightFirst) {
    FixedConfig config = configOf(2.0, 3.0);
    EXPECT_EQ(hex(RuledSurfaceScreen::calcUniqueDataHash(&config)), kThreeTwo);
    config = configOf(3.0, 2.0);
    EXPECT_EQ(hex(RuledSurfaceScreen::calcUniqueDataHash(&config)), kTwoThree);
}

TEST(RuledScreenHash, BothRoadsMeetOnlyWhereWidthEqualsHeight) {
    FixedConfig oblong = configOf(2.0, 3.0);
    EXPECT_NE(RuledSurfaceScreen(&oblong).getUniqueDataHash(),
              RuledSurfaceScreen::calcUniqueDataHash(&oblong));
    FixedConfig square = configOf(2.0, 2.0);
    EXPECT_EQ(hex(RuledSurfaceScreen(&square).getUniqueDataHash()), kTwoTwo);
    EXPECT_EQ(hex(RuledSurfaceScreen::calcUniqueDataHash(&square)), kTwoTwo);
}

TEST(RuledScreenHash, RecordIsDigestedAsItStands) {
    EXPECT_EQ(hex(RuledSurfaceScreen::calcUniqueDataHash({2.0, 3.0, -0.5, 0.5, -0.25, 0.75})), kTwoThree);
    EXPECT_EQ(hex(RuledSurfaceScreen::calcUniqueDataHash({3.0, 2.0, -0.5, 0.5, -0.25, 0.75})), kThreeTwo);
}

TEST(RuledScreenHash, ConfigIsReadInItsOwnOrder) {
    FixedConfig config = configOf(2.0, 3.0);
    (void)RuledSurfaceScreen::calcUniqueDataHash(&config);
    EXPECT_EQ(config.calls, (std::vector<std::string>{"getMaxPhi", "getMinPhi", "getMaxTheta", "getMinTheta",
                                                      "getWidth", "getHeight"}));
}

TEST(RuledScreenHash, EveryParameterCountsAndSoDoesTheSignOfZero) {
    const auto hashOf = [](const RuledSurfaceScreenParams& params) {
        return OpenRuledScreen(params).getUniqueDataHash();
    };
    const auto usual = hashOf({2, 3, 0.0, 0.5, -0.25, 0.75});
    EXPECT_EQ(hex(usual), "fdc4767e576c1713fde3be85f7d679e3ea9f4cc7");
    EXPECT_EQ(hex(hashOf({2, 3, -0.0, 0.5, -0.25, 0.75})), "964b4e6d90aef6439f5ccf0b48378055ce7c3993");
    EXPECT_NE(hashOf({2, 3, 0.0, 0.6, -0.25, 0.75}), usual);
    EXPECT_NE(hashOf({2, 3, 0.0, 0.5, -0.35, 0.75}), usual);
    EXPECT_NE(hashOf({2, 3, 0.0, 0.5, -0.25, 0.85}), usual);
    EXPECT_EQ(hashOf({2, 3, 0.0, 0.5, -0.25, 0.75}), usual);
}

TEST(RuledScreenHash, ScreenWithoutParametersHasTheDigestOfItsDefaults) {
    // SHA-1 of the doubles -1, 0, 0, 0, 0, 0.
    EXPECT_EQ(hex(RuledSurfaceScreen().getUniqueDataHash()), "acce7884fa7bfe42c93048d045aa7dcb74969a6f");
}
