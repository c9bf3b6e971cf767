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

}  // namespace
}  // namespace quarn::test
