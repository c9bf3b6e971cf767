#include <QuarnKit/Formats/ScreenBuilder.h>

#include <gtest/gtest.h>

#include <Common/TextConversion.h>
#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/SphericalScreen.h>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Formats/ScreenReader.h>
#include <QuarnKit/Formats/ScreenWriter.h>
#include "Support/Bits.h"
#include "Support/Rng.h"
#include "Support/ScreenXml.h"
#include "Support/TemporaryFile.h"

namespace quarn::test {
namespace {

Observer ignored;  // of notices

constexpr std::uint64_t kEnoughMemory = 100U << 20U;

Screen readBack(const std::string& document) {
    const TemporaryFile file(document, "screen.xml");
    return readScreen(file.path(), kEnoughMemory, {}, ignored);
}

ScreenValues randomValues(Rng& rng) {
    ScreenValues values;
    for (const char* length : {"width", "height", "radius"})
        values.set(length, std::abs(rng.spread(-30, 30)));
    for (const char* low : {"minTheta", "minPhi"}) values.set(low, rng.uniform(-2, 0));
    for (const char* high : {"maxTheta", "maxPhi"}) values.set(high, rng.uniform(0.1, 2));
    values.setCenter(rng.spreadPoint(-30, 30));
    return values;
}

TEST(ScreenBuilder, WhatIsMadeReadsBackAndIsWrittenAgainAlike) {
    for (int i = 0; i < seedCount(300); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const ScreenValues values = randomValues(rng);
        for (const ScreenType& type : screenTypes()) {
            const std::string document = xmlTextOf(*buildScreen(type.name, values, ignored));
            const Screen screen = readBack(document);
            ASSERT_EQ(screen.geometry->getType(), type.name);
            ASSERT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + toUtf8(xmlOf(*screen.geometry, 0)),
                      document);
        }
    }
}

TEST(ScreenBuilder, NumbersOfFewDigitsKeepTheDigest) {
    ScreenValues values;
    for (const char* length : {"width", "height", "radius"}) values.set(length, 2.5);
    for (const char* low : {"minTheta", "minPhi"}) values.set(low, -1.25);
    for (const char* high : {"maxTheta", "maxPhi"}) values.set(high, 0.1);
    values.setCenter({1.5, -2.0, 0.1});
    const Point<double, 3> center(1.5, -2.0, 0.1);
    const auto digestOf = [&](const std::string& type) {
        return readBack(xmlTextOf(*buildScreen(type, values, ignored))).geometry->getUniqueDataHash();
    };
    EXPECT_EQ(digestOf(FlatScreen::type()), FlatScreen(2.5, 2.5).getUniqueDataHash());
    EXPECT_EQ(digestOf(CylinderScreen::type()),
              CylinderScreen(center, 2.5, -1.25, 0.1, 2.5).getUniqueDataHash());
    EXPECT_EQ(digestOf(SphericalScreen::type()),
              SphericalScreen(center, 2.5, -1.25, 0.1, -1.25, 0.1).getUniqueDataHash());
    EXPECT_EQ(digestOf(RuledSurfaceScreen::type()),
              RuledSurfaceScreen(2.5, 2.5, -1.25, 0.1, -1.25, 0.1).getUniqueDataHash());
}

TEST(ScreenBuilder, TheNumbersAreCheckedAsTheFileHoldsThem) {
    ScreenValues values;
    values.set("radius", 1.0);
    // The digits behind the 16th make it larger than the largest angle.
    values.set("maxTheta", std::nextafter(1000.0, 2000.0));
    EXPECT_NO_THROW(static_cast<void>(buildScreen(CylinderScreen::type(), values, ignored)));
    values.set("maxTheta", 1000.000000000001);
    EXPECT_THROW(static_cast<void>(buildScreen(CylinderScreen::type(), values, ignored)), Error);
}

// Collects the texts of warnings.
class WarningTexts : public Observer {
public:
    std::vector<std::string> texts;

    void notify(const Notice& notice) override {
        if (notice.level == NoticeLevel::Warning) texts.push_back(notice.text);
    }
};

std::vector<std::string> warningsOf(const std::string& type, double arc, double maxPhi) {
    ScreenValues values;
    values.set("radius", 3.0);
    values.set("height", 2.0);
    values.set("maxTheta", arc);
    values.set("maxPhi", maxPhi);
    WarningTexts warnings;
    (void)buildScreen(type, values, warnings);
    return warnings.texts;
}

TEST(ScreenBuilder, WarnsOfSectionsThatOverlapThemselves) {
    constexpr double kTurn = 6.283185307179586;
    EXPECT_TRUE(warningsOf(CylinderScreen::type(), kTurn, 0.0).empty());
    EXPECT_TRUE(warningsOf(SphericalScreen::type(), -kTurn, kTurn / 4).empty());
    ASSERT_EQ(warningsOf(CylinderScreen::type(), 6.3, 0.0).size(), 1U);
    EXPECT_EQ(
        warningsOf(CylinderScreen::type(), 6.3, 0.0).front(),
        "the range of theta is 360.9634 degrees, more than a full turn: the screen overlaps itself, and "
        "a position has several UVs");
    ASSERT_EQ(warningsOf(SphericalScreen::type(), 1.0, 1.6).size(), 1U);
    EXPECT_EQ(warningsOf(SphericalScreen::type(), 1.0, 1.6).front(),
              "the range of phi reaches 91.67325 degrees, beyond a pole at 90 degrees: UV of positions is "
              "wrong there");
}

}  // namespace
}  // namespace quarn::test
