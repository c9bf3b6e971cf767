#include "Library/Shapes/Curved/CurvedCases.h"
#include "Support/ScientificText.h"
#include "Support/ScreenXml.h"

namespace quarn::test {
namespace {

// The numbers of a screen's record, in its order.
std::vector<double> numbersOf(const CylinderScreen& screen) {
    const CylinderScreenParams& p = screen.getParams();
    return {p.center[0], p.center[1], p.center[2], p.radius, p.minTheta, p.maxTheta, p.height};
}
std::vector<double> numbersOf(const SphericalScreen& screen) {
    const SphericalScreenParams& p = screen.getParams();
    return {p.center[0], p.center[1], p.center[2], p.radius, p.minTheta, p.maxTheta, p.minPhi, p.maxPhi};
}

CylinderScreen cylinder() {
    return {Point3(1, 2, 3), 4.0, 5.0, 6.0, 7.0};
}
SphericalScreen sphere() {
    return {Point3(1, 2, 3), 4.0, 5.0, 6.0, 7.0, 8.0};
}

template <class Screen>
std::vector<double> afterReading(Screen screen, const std::string& children) {
    readChildren(screen, children);
    return numbersOf(screen);
}

using Numbers = std::vector<double>;

TEST(CurvedXml, CylinderIsSevenLines) {
    CylinderScreen screen(Point3(0, 1, 2), 1.5, -0.25, 3.0, 4.0);
    EXPECT_EQ(xmlOf(screen, 1),
              L"    <ScreenGeometry ClassType=\"class CylinderScreen\">\n"
              L"        <Center_Point>0.000000000000000e+00, 1.000000000000000e+00, "
              L"2.000000000000000e+00</Center_Point>\n"
              L"        <Screen_Height>4.000000000000000e+00</Screen_Height>\n"
              L"        <Screen_Radius>1.500000000000000e+00</Screen_Radius>\n"
              L"        <Screen_MinTheta>-2.500000000000000e-01</Screen_MinTheta>\n"
              L"        <Screen_MaxTheta>3.000000000000000e+00</Screen_MaxTheta>\n"
              L"    </ScreenGeometry>\n");
}

TEST(CurvedXml, SphereIsEightLines) {
    SphericalScreen screen(Point3(0, 1, 2), 1.5, -0.25, 3.0, -1e-10, 1e100);
    EXPECT_EQ(xmlOf(screen, 0),
              L"<ScreenGeometry ClassType=\"class SphericalScreen\">\n"
              L"    <Center_Point>0.000000000000000e+00, 1.000000000000000e+00, "
              L"2.000000000000000e+00</Center_Point>\n"
              L"    <Screen_Radius>1.500000000000000e+00</Screen_Radius>\n"
              L"    <Screen_MinTheta>-2.500000000000000e-01</Screen_MinTheta>\n"
              L"    <Screen_MaxTheta>3.000000000000000e+00</Screen_MaxTheta>\n"
              L"    <Screen_MinPhi>-1.000000000000000e-10</Screen_MinPhi>\n"
              L"    <Screen_MaxPhi>1.000000000000000e+100</Screen_MaxPhi>\n"
              L"</ScreenGeometry>\n");
}

template <class Case>
class CurvedXmlTest : public ::testing::Test {};
TYPED_TEST_SUITE(CurvedXmlTest, CurvedShapes, CurvedNames);

TYPED_TEST(CurvedXmlTest, RandomScreensComeBackToSixteenDigits) {
    for (int i = 0; i < seedCount(3000); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        typename TypeParam::Reference reference;
        fillParameters(reference,
                       [&rng] { return rng.coin() ? rng.spread(-1060, 1022) : rng.uniform(-9, 9); });
        const auto screen = TypeParam::screenOf(reference);
        const Numbers before = numbersOf(screen);
        const auto reloaded = savedAndReloaded(screen);
        const Numbers after = numbersOf(reloaded);
        ASSERT_EQ(before.size(), TypeParam::kParameters);
        for (std::size_t k = 0; k < before.size(); ++k)
            ASSERT_TRUE(sameBits(after[k], nearestNumber(scientific16(before[k])))) << k;
        // What has 16 digits stays as it is from then on.
        auto again = savedAndReloaded(reloaded);
        auto once = reloaded;
        ASSERT_EQ(xmlOf(again, 0), xmlOf(once, 0));
    }
}

TEST(CurvedXml, MissingTagsKeepTheirFields) {
    EXPECT_EQ(afterReading(cylinder(), ""), (Numbers{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(afterReading(cylinder(), "<Screen_Radius>9</Screen_Radius>"), (Numbers{1, 2, 3, 9, 5, 6, 7}));
    EXPECT_EQ(afterReading(sphere(), "<Screen_MinPhi>9</Screen_MinPhi>"), (Numbers{1, 2, 3, 4, 5, 6, 9, 8}));
    EXPECT_EQ(afterReading(sphere(), "<Screen_MaxPhi>9</Screen_MaxPhi>"), (Numbers{1, 2, 3, 4, 5, 6, 7, 9}));
}

TEST(CurvedXml, OrderOfTagsDoesNotMatterAndARepeatedOneOverwrites) {
    EXPECT_EQ(afterReading(cylinder(),
                           "<Screen_MaxTheta>60</Screen_MaxTheta><Screen_MinTheta>50</Screen_MinTheta>"
                           "<Screen_Height>70</Screen_Height><Screen_Height>71</Screen_Height>"
                           "<Center_Point>10, 20, 30</Center_Point><Screen_Radius>40</Screen_Radius>"),
              (Numbers{10, 20, 30, 40, 50, 60, 71}));
    EXPECT_EQ(afterReading(sphere(),
                           "<Screen_MaxPhi>80</Screen_MaxPhi><Screen_MinPhi>70</Screen_MinPhi>"
                           "<Screen_MaxTheta>60</Screen_MaxTheta><Screen_MinTheta>50</Screen_MinTheta>"
                           "<Screen_Radius>40</Screen_Radius><Center_Point>1, 1, 1</Center_Point>"
                           "<Center_Point>10, 20, 30</Center_Point>"),
              (Numbers{10, 20, 30, 40, 50, 60, 70, 80}));
}

TEST(CurvedXml, UnknownTagsTextAndOtherShapesTagsAreSkipped) {
    EXPECT_EQ(
        afterReading(cylinder(),
                     "9<Screen_Width>9</Screen_Width><Screen_MinPhi>9</Screen_MinPhi><!-- Screen_Radius -->"
                     "<screen_radius>9</screen_radius><Screen_Radius2>9</Screen_Radius2>"
                     "<Nested><Screen_Radius>9</Screen_Radius></Nested>"),
        (Numbers{1, 2, 3, 4, 5, 6, 7}));
    EXPECT_EQ(afterReading(sphere(), "<Screen_Height>9</Screen_Height><Screen_Phi>9</Screen_Phi>"),
              (Numbers{1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST(CurvedXml, CentreReadsThreeNumbersWithAWordBetween) {
    const auto centreOf = [](const std::string& text) {
        Numbers numbers = afterReading(cylinder(), "<Center_Point>" + text + "</Center_Point>");
        numbers.resize(3);
        return numbers;
    };
    EXPECT_EQ(centreOf("1.5, -2.5, 3e1"), (Numbers{1.5, -2.5, 30}));
    EXPECT_EQ(centreOf("\n  1.5 ;\t-2.5 and 3 "), (Numbers{1.5, -2.5, 3}));
    EXPECT_EQ(centreOf("1.0 2.0 3.0"), (Numbers{1, 3, 0})) << "the word takes the second number";
    EXPECT_EQ(centreOf("1.5,2.5,3.5"), (Numbers{1.5, 0, 0})) << "the word takes the rest";
    EXPECT_EQ(centreOf("1.5, 2.5"), (Numbers{1.5, 2.5, 0}));
    EXPECT_EQ(centreOf(""), (Numbers{0, 0, 0}));
    EXPECT_EQ(centreOf("middle"), (Numbers{0, 0, 0}));
}

TEST(CurvedXml, TextThatIsNoNumberIsZero) {
    EXPECT_EQ(afterReading(cylinder(), "<Screen_Radius>wide</Screen_Radius><Screen_Height/>"),
              (Numbers{1, 2, 3, 0, 5, 6, 0}));
}

TEST(CurvedXml, DefaultScreensAreSavedAndStayUndefined) {
    EXPECT_FALSE(savedAndReloaded(CylinderScreen()).isValid());
    EXPECT_FALSE(savedAndReloaded(SphericalScreen()).isValid());
}

}  // namespace
}  // namespace quarn::test
