#include <QuarnScreen/FlatScreen.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "Support/Bits.h"
#include "Support/Rng.h"
#include "Support/ScientificText.h"
#include "Support/ScreenXml.h"
#include "Support/SpecialValues.h"

namespace quarn::test {
namespace {

// A screen of 7 by 9 that then reads the children of an element.
FlatScreen readInto7By9(const std::string& children) {
    FlatScreen screen(7.0, 9.0);
    readChildren(screen, children);
    return screen;
}

void expectSize(const FlatScreen& screen, double width, double height) {
    EXPECT_EQ(screen.getWidth(), width);
    EXPECT_EQ(screen.getHeight(), height);
    Point<double, 3> min;
    Point<double, 3> max;
    screen.getBounds(&min, &max);
    EXPECT_EQ(min, (Point<double, 3>(width * -0.5, 0.0, height * -0.5)))
        << "the corners were not computed again";
    EXPECT_EQ(max, (Point<double, 3>(width * 0.5, 0.0, height * 0.5)));
}

TEST(FlatScreenXml, IsFourLines) {
    FlatScreen screen(4.0, 3.0);
    EXPECT_EQ(xmlOf(screen, 1),
              L"    <ScreenGeometry ClassType=\"class FlatScreen\">\n"
              L"        <Screen_Width>4.000000000000000e+00</Screen_Width>\n"
              L"        <Screen_Height>3.000000000000000e+00</Screen_Height>\n"
              L"    </ScreenGeometry>\n");
    EXPECT_EQ(xmlOf(screen, 0),
              L"<ScreenGeometry ClassType=\"class FlatScreen\">\n"
              L"    <Screen_Width>4.000000000000000e+00</Screen_Width>\n"
              L"    <Screen_Height>3.000000000000000e+00</Screen_Height>\n"
              L"</ScreenGeometry>\n");
}

// The children stand one level deeper: at level 0 here.
TEST(FlatScreenXml, ANegativeIndentGivesNoBlanks) {
    FlatScreen screen(4.0, 3.0);
    EXPECT_EQ(xmlOf(screen, -1),
              L"<ScreenGeometry ClassType=\"class FlatScreen\">\n"
              L"<Screen_Width>4.000000000000000e+00</Screen_Width>\n"
              L"<Screen_Height>3.000000000000000e+00</Screen_Height>\n"
              L"</ScreenGeometry>\n");
}

TEST(FlatScreenXml, ADefaultScreenIsSavedWithItsNegativeSizes) {
    FlatScreen screen;
    EXPECT_NE(xmlOf(screen, 0).find(L"<Screen_Width>-1.000000000000000e+00</Screen_Width>"),
              std::wstring::npos);
    expectSize(savedAndReloaded(screen), -1.0, -1.0);
}

TEST(FlatScreenXml, RandomSizesComeBackToSixteenDigits) {
    for (int i = 0; i < seedCount(1500); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        const double width = rng.spread(-1060, 1022);
        const double height = rng.uniform(0.0, 100.0);
        FlatScreen screen(width, height);
        const FlatScreen reloaded = savedAndReloaded(screen);
        ASSERT_TRUE(sameBits(reloaded.getWidth(), nearestNumber(scientific16(width))));
        ASSERT_TRUE(sameBits(reloaded.getHeight(), nearestNumber(scientific16(height))));
    }
}

TEST(FlatScreenXml, AWidthOfSeventeenDigitsLosesItsLastBitsAndTheHash) {
    FlatScreen screen(0.1 + 0.2, 1.0);  // 0.30000000000000004
    const FlatScreen reloaded = savedAndReloaded(screen);
    EXPECT_EQ(reloaded.getWidth(), 0.3);
    EXPECT_NE(reloaded.getWidth(), screen.getWidth());
    EXPECT_NE(reloaded.getUniqueDataHash(), screen.getUniqueDataHash());
}

TEST(FlatScreenXml, AWidthOfFewDigitsKeepsTheHash) {
    FlatScreen screen(0.3, 2.25);
    EXPECT_EQ(savedAndReloaded(screen).getUniqueDataHash(), screen.getUniqueDataHash());
}

// Intended: "nan" and "inf" are no numbers to a stream.
TEST(FlatScreenXml, SizesThatAreNotFiniteComeBackAsZero) {
    for (const double value : kSpecialValues) {
        FlatScreen screen(value, 1.0);
        EXPECT_NE(xmlOf(screen, 0).find(L">" + scientific16(value) + L"<"), std::wstring::npos);
        if (std::isfinite(value)) continue;
        EXPECT_EQ(savedAndReloaded(screen).getWidth(), 0.0);
    }
}

// Sixteen digits round it up beyond the range, and the stream brings it back.
TEST(FlatScreenXml, TheGreatestNumberComesBack) {
    constexpr double kGreatest = std::numeric_limits<double>::max();
    FlatScreen screen(kGreatest, -kGreatest);
    EXPECT_EQ(savedAndReloaded(screen).getWidth(), kGreatest);
    EXPECT_EQ(savedAndReloaded(screen).getHeight(), -kGreatest);
}

TEST(FlatScreenXml, TheOrderOfTheTagsDoesNotMatter) {
    expectSize(readInto7By9("<Screen_Height>3</Screen_Height><Screen_Width>4</Screen_Width>"), 4.0, 3.0);
}

TEST(FlatScreenXml, ARepeatedTagOverwrites) {
    expectSize(readInto7By9("<Screen_Width>1</Screen_Width><Screen_Height>3</Screen_Height>"
                            "<Screen_Width>4</Screen_Width>"),
               4.0, 3.0);
    expectSize(readInto7By9("<Screen_Width>4</Screen_Width><Screen_Width/>"), 0.0, 9.0);
}

TEST(FlatScreenXml, AMissingTagLeavesTheFieldAsItWas) {
    expectSize(readInto7By9(""), 7.0, 9.0);
    expectSize(readInto7By9("<Screen_Width>4</Screen_Width>"), 4.0, 9.0);
    expectSize(readInto7By9("<Screen_Height>3</Screen_Height>"), 7.0, 3.0);
}

TEST(FlatScreenXml, UnknownTagsAndTextAreIgnored) {
    expectSize(
        readInto7By9("12 <Radius>1</Radius><!--Screen_Width--><![CDATA[5]]><Screen_Width>4</Screen_Width>\n"),
        4.0, 9.0);
    expectSize(readInto7By9("<Center_Point>1, 2, 3</Center_Point>"), 7.0, 9.0);
}

TEST(FlatScreenXml, TheNameMustMatchExactly) {
    for (const char* name :
         {"screen_width", "SCREEN_WIDTH", "Screen_Widt", "Screen_Width2", "Screen-Width", "x:Screen_Width"}) {
        const std::string tag = name;
        expectSize(readInto7By9("<" + tag + ">4</" + tag + ">"), 7.0, 9.0);
    }
}

TEST(FlatScreenXml, OnlyDirectChildrenCount) {
    expectSize(readInto7By9("<Other><Screen_Width>4</Screen_Width></Other>"), 7.0, 9.0);
}

TEST(FlatScreenXml, TextThatIsNoNumberIsZero) {
    expectSize(readInto7By9("<Screen_Width>wide</Screen_Width><Screen_Height></Screen_Height>"), 0.0, 0.0);
    expectSize(readInto7By9("<Screen_Width>4,5</Screen_Width><Screen_Height> 3.5 m</Screen_Height>"), 4.0,
               3.5);
}

TEST(FlatScreenXml, TheClassTypeOfTheElementIsNotLookedAt) {
    FlatScreen screen;
    readXml(screen, "<x ClassType=\"class OBJScreen\"><Screen_Width>4</Screen_Width></x>");
    expectSize(screen, 4.0, -1.0);
}

}  // namespace
}  // namespace quarn::test
