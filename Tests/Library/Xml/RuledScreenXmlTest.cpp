#include <gtest/gtest.h>

#include "Library/Shapes/Ruled/RuledScreens.h"
#include "Support/ScreenXml.h"

using namespace quarn::test;

namespace {

RuledSurfaceScreenParams loaded(const std::string& children,
                                RuledSurfaceScreenParams before = {1, 2, 3, 4, 5, 6}) {
    OpenRuledScreen screen(before);
    readChildren(screen, children);
    return screen.getParams();
}

void expectParams(const RuledSurfaceScreenParams& p, const RuledSurfaceScreenParams& expected) {
    EXPECT_TRUE(sameBits(p.width, expected.width));
    EXPECT_TRUE(sameBits(p.height, expected.height));
    EXPECT_TRUE(sameBits(p.minTheta, expected.minTheta));
    EXPECT_TRUE(sameBits(p.maxTheta, expected.maxTheta));
    EXPECT_TRUE(sameBits(p.minPhi, expected.minPhi));
    EXPECT_TRUE(sameBits(p.maxPhi, expected.maxPhi));
}

}  // namespace

TEST(RuledScreenXml, WritesSixNumbersInOrder) {
    OpenRuledScreen written(2.0, 3.0, -0.5, 0.5, -0.25, 0.75);
    EXPECT_EQ(xmlOf(written, 1),
              L"    <ScreenGeometry ClassType=\"class RuledSurfaceScreen\">\n"
              L"        <Screen_Width>2.000000000000000e+00</Screen_Width>\n"
              L"        <Screen_Height>3.000000000000000e+00</Screen_Height>\n"
              L"        <Screen_MinTheta>-5.000000000000000e-01</Screen_MinTheta>\n"
              L"        <Screen_MaxTheta>5.000000000000000e-01</Screen_MaxTheta>\n"
              L"        <Screen_MinPhi>-2.500000000000000e-01</Screen_MinPhi>\n"
              L"        <Screen_MaxPhi>7.500000000000000e-01</Screen_MaxPhi>\n"
              L"    </ScreenGeometry>\n");
}

TEST(RuledScreenXml, IndentOfZeroOrLessIndentsTheChildrenByOneMoreLevel) {
    OpenRuledScreen screen(kQuarters);
    EXPECT_EQ(xmlOf(screen, 0).substr(0, 16), L"<ScreenGeometry ");
    EXPECT_NE(xmlOf(screen, 0).find(L"\n    <Screen_Width>"), std::wstring::npos);
    EXPECT_NE(xmlOf(screen, -1).find(L"\n<Screen_Width>"), std::wstring::npos);
}

TEST(RuledScreenXml, ASavedScreenLoadsWithTheSameSixteenDigits) {
    for (int i = 0; i < seedCount(1000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const auto number = [&] { return rng.coin() ? rng.uniform(-10, 10) : rng.spread(); };
        OpenRuledScreen screen(number(), number(), number(), number(), number(), number());
        const std::wstring xml = xmlOf(screen, 0);
        const DocumentPtr document = parseDocument(std::string(xml.begin(), xml.end()));
        RuledSurfaceScreen again;
        again.deserialize(document->getDocumentElement());
        EXPECT_EQ(xmlOf(again, 0), xml);
    }
}

TEST(RuledScreenXml, DerivedFieldsFollow) {
    OpenRuledScreen screen(9.0, 9.0, -1.0, 1.0, -1.0, 1.0);
    readChildren(screen,
                 "<Screen_Width>2</Screen_Width><Screen_Height>3</Screen_Height><Screen_MinTheta>-0.5</"
                 "Screen_MinTheta>"
                 "<Screen_MaxTheta>0.5</Screen_MaxTheta><Screen_MinPhi>-0.25</Screen_MinPhi>"
                 "<Screen_MaxPhi>0.75</Screen_MaxPhi>");
    const OpenRuledScreen expected(2.0, 3.0, -0.5, 0.5, -0.25, 0.75);
    expectParams(screen.getParams(), expected.getParams());
    const Point3 from(0.3, -4, 0.2);
    const Point3 to(0.3, 4, 0.4);
    EXPECT_TRUE(sameBits(screen.getEyepoint(), expected.getEyepoint()));
    EXPECT_TRUE(sameBits(screen.intersect(from, to), expected.intersect(from, to)));
    EXPECT_EQ(screen.intersect(from, to).count(), 1);
}

TEST(RuledScreenXml, AMissingTagKeepsTheField) {
    expectParams(loaded(""), {1, 2, 3, 4, 5, 6});
    expectParams(loaded("<Screen_Height>9</Screen_Height>"), {1, 9, 3, 4, 5, 6});
    expectParams(loaded("<Screen_MinTheta>9</Screen_MinTheta>"), {1, 2, 9, 4, 5, 6});
    expectParams(loaded("<Screen_MaxTheta>9</Screen_MaxTheta>"), {1, 2, 3, 9, 5, 6});
    expectParams(loaded("<Screen_MinPhi>9</Screen_MinPhi>"), {1, 2, 3, 4, 9, 6});
    expectParams(loaded("<Screen_MaxPhi>9</Screen_MaxPhi>"), {1, 2, 3, 4, 5, 9});
    RuledSurfaceScreen fresh;
    readChildren(fresh, "<Screen_Height>9</Screen_Height>");
    EXPECT_FALSE(fresh.isValid());
}

TEST(RuledScreenXml, UnknownChildrenAreSkipped) {
    expectParams(loaded("text <Center_Point>7, 7, 7</Center_Point><screen_width>7</screen_width>"
                        "<Screen_Width2>7</Screen_Width2><Screen_Widt>7</Screen_Widt><!--Screen_Width 7-->"
                        "<Outer><Screen_Width>7</Screen_Width></Outer><Screen_Radius>7</Screen_Radius>"),
                 {1, 2, 3, 4, 5, 6});
}

TEST(RuledScreenXml, ARepeatedTagOverwritesInAnyOrder) {
    expectParams(loaded("<Screen_MaxPhi>8</Screen_MaxPhi><Screen_Width>7</Screen_Width>"
                        "<Screen_MaxPhi>9</Screen_MaxPhi>"),
                 {7, 2, 3, 4, 5, 9});
}

TEST(RuledScreenXml, TextThatIsNoNumberGivesZero) {
    expectParams(loaded("<Screen_Width>wide</Screen_Width><Screen_Height/>"), {0, 0, 3, 4, 5, 6});
    expectParams(loaded("<Screen_Width> 2.5 meters</Screen_Width><Screen_Height>2,5</Screen_Height>"),
                 {2.5, 2, 3, 4, 5, 6});
}

TEST(RuledScreenXml, AWidthOfSeventeenDigitsLosesItsLastBits) {
    const double width = std::nextafter(0.1, 1.0);
    OpenRuledScreen screen(width, 2.0, -0.5, 0.5, -0.5, 0.5);
    const std::wstring xml = xmlOf(screen, 0);
    const DocumentPtr document = parseDocument(std::string(xml.begin(), xml.end()));
    RuledSurfaceScreen again;
    again.deserialize(document->getDocumentElement());
    EXPECT_EQ(again.getParams().width, 0.1);
    EXPECT_NE(again.getUniqueDataHash(), screen.getUniqueDataHash());
}
