#include <gtest/gtest.h>

#include <limits>
#include <locale>
#include <sstream>
#include <type_traits>
#include <vector>

#include <Common/TextConversion.h>
#include <Common/ZelmoreException.h>

#include "Library/Stl/StlFiles.h"
#include "Support/HashText.h"
#include "Support/ScreenXml.h"
#include "Support/TemporaryFolder.h"

using namespace quarn::test;

namespace {

const std::string kText = "solid a\nendsolid\n";
const std::string kBroken = "solid a\nfacet normal 0 0 1 endfacet\n";

// Numbers as "1.234,5".
class CommaAndGrouping : public std::numpunct<char> {
    [[nodiscard]] char do_decimal_point() const override { return ','; }
    [[nodiscard]] char do_thousands_sep() const override { return '.'; }
    [[nodiscard]] std::string do_grouping() const override { return "\3"; }
};

// The global locale of streams while it lives.
class GlobalLocale {
public:
    explicit GlobalLocale(const std::locale& locale) : before(std::locale::global(locale)) {}
    GlobalLocale(const GlobalLocale&) = delete;
    GlobalLocale& operator=(const GlobalLocale&) = delete;
    ~GlobalLocale() { std::locale::global(before); }

private:
    std::locale before;
};

void expectWithoutParameterization(const STLScreen& screen) {
    EXPECT_FALSE(screen.hasParameterization());
    EXPECT_FALSE(screen.hasValidBoundary());
    EXPECT_FALSE(screen.isPlanar());
    EXPECT_TRUE(sameBits(screen.getEyepoint(), Point3()));
    Point3 point(7.0, 8.0, 9.0);
    for (const bool extrapolate : {false, true}) {
        EXPECT_TRUE(sameBits(screen.mapInto2D({0.5, 0.25, 0.0}, extrapolate), kNoUV));
        EXPECT_FALSE(screen.mapInto3D({0.5, 0.5}, point, extrapolate));
    }
    EXPECT_TRUE(sameBits(point, Point3(7.0, 8.0, 9.0)));
    for (const int count : {0, 1, 5}) EXPECT_TRUE(screen.getDefaultCalibrationPoints(count, count).empty());
}

}  // namespace

TEST(StlScreen, NewOneIsEmptyAndNotValid) {
    STLScreen screen;
    EXPECT_FALSE(screen.isValid());
    EXPECT_FALSE(screen.hasTesselation());
    EXPECT_EQ(hexOf(screen.getUniqueDataHash()), kZeroDigest);
    EXPECT_EQ(STLScreen::type(), "class STLScreen");
    EXPECT_EQ(screen.getType(), STLScreen::type());
    expectWithoutParameterization(screen);
    static_assert(std::is_base_of_v<MeshScreen, STLScreen> && std::has_virtual_destructor_v<STLScreen>);
}

TEST(StlScreen, HasNoParameterizationWhateverWasLoaded) {
    for (const std::string& bytes : {kText, kBroken, binaryStl(rowOfFacets(3)), std::string()}) {
        STLScreen screen;
        messagesOf(screen, bytes);
        expectWithoutParameterization(screen);
    }
}

TEST(StlScreen, SecondLoadAddsToTheFirst) {
    const std::vector<Facet> all = rowOfFacets(5);
    const std::vector<Facet> first(all.begin(), all.begin() + 2);
    const std::vector<Facet> second(all.begin() + 2, all.end());
    OpenStlScreen screen;
    messagesOf(screen, binaryStl(first));
    messagesOf(screen, kText);
    EXPECT_TRUE(sameTriangles(screen.triangles, trianglesOf(all, 2)));
    messagesOf(screen, binaryStl(second));
    EXPECT_TRUE(screen.isValid());
    EXPECT_TRUE(sameTriangles(screen.triangles, trianglesOf(all, 5)));
}

TEST(StlScreen, DigestIsZeroUntilALoadFailsAndThatOfNothingFromThenOn) {
    STLScreen screen;
    messagesOf(screen, binaryStl(rowOfFacets(1)));
    EXPECT_EQ(hexOf(screen.getUniqueDataHash()), kZeroDigest);
    messagesOf(screen, kText);
    EXPECT_EQ(hexOf(screen.getUniqueDataHash()), kZeroDigest);
    messagesOf(screen, kBroken);
    EXPECT_FALSE(screen.isValid());
    EXPECT_EQ(hexOf(screen.getUniqueDataHash()), kEmptyDigest);
    messagesOf(screen, kText);
    EXPECT_TRUE(screen.isValid());
    EXPECT_EQ(hexOf(screen.getUniqueDataHash()), kEmptyDigest);
}

TEST(StlScreen, RaysHitWhatWasLoadedAlsoBeforeAnError) {
    for (const float z : {0.0F, 1.0F, -1.0F}) {
        for (const std::int32_t count : {1, 2}) {
            SCOPED_TRACE(::testing::Message() << z << " " << count);
            STLScreen screen;
            messagesOf(screen, binaryStl("bin ", count, {facetWithNormal(0.0F, 0.0F, z)}));
            EXPECT_EQ(screen.isValid(), count == 1);
            const IntersectionSet hits = screen.intersect({0.5, 0.25, 4.0}, {0.5, 0.25, 0.0});
            ASSERT_EQ(hits.count(), 1);
            EXPECT_EQ(hits.get(0).point, (Point3{0.5, 0.25, 0.0}));
            EXPECT_EQ(screen.intersect({1.5, 1.25, 4.0}, {1.5, 1.25, 0.0}).count(), 0);
            Point3 min;
            Point3 max;
            screen.getBounds(&min, &max);
            EXPECT_EQ(min, Point3());
            EXPECT_EQ(max, (Point3{2.0, 2.0, 0.0}));
        }
    }
}

TEST(StlScreen, PositionsLieOnlyOnTrianglesWhoseNormalIsComputed) {
    STLScreen computed;
    messagesOf(computed, binaryStl({facetWithNormal(0.0F, 0.0F, 0.0F)}));
    EXPECT_EQ(computed.getScreenNormal({0.5, 0.25, 0.0}), (Point3{0.0, 0.0, 1.0}));
    EXPECT_EQ(computed.getClosestPoint({0.5, 0.25, 3.0}), (Point3{0.5, 0.25, 0.0}));
    STLScreen given;
    messagesOf(given, binaryStl({facetWithNormal(0.0F, 0.0F, 1.0F)}));
    EXPECT_EQ(given.getScreenNormal({0.5, 0.25, 0.0}), Point3());
    EXPECT_EQ(given.getClosestPoint({0.5, 0.25, 3.0}), Point3());
}

TEST(StlScreen, FileIsReadByItsBytes) {
    const TemporaryFolder folder;
    const std::vector<Facet> facets = rowOfFacets(3);
    OpenStlScreen screen;
    screen.deserializeFromFile(fromUtf8(folder.write("\xC3\xA4.stl", binaryStl("\r\n\x1A", 3, facets))));
    EXPECT_TRUE(screen.isValid());
    EXPECT_TRUE(sameTriangles(screen.triangles, trianglesOf(facets, 3)));
}

TEST(StlScreen, FileWithACornerOfNaNLoads) {
    Facet flat;
    flat.numbers = {0, 0, 0, 2, 0, 1, 1, 0, 1, 0, 0, 0};
    Facet broken;
    broken.numbers = {0, 0, 0, 2, 0, 1, 1, std::numeric_limits<float>::quiet_NaN(), 0, 0, 0, 1};
    const TemporaryFolder folder;
    const std::string path = folder.write("nan.stl", binaryStl({flat, broken}));
    ASSERT_EQ(bytesOf(path).size(), 184U);
    OpenStlScreen screen;
    screen.deserializeFromFile(fromUtf8(path));
    EXPECT_TRUE(screen.isValid());
    EXPECT_FALSE(screen.hasValidBoundary());
    EXPECT_EQ(screen.boundary.points,
              (std::vector<Point3>{{0.0, 0.0, 0.0}, {1.0, 0.0, 1.0}, {2.0, 0.0, 1.0}, {0.0, 0.0, 0.0}}));
}

TEST(StlScreen, NumbersOfAFileAndOfXmlDoNotDependOnTheGlobalLocale) {
    const std::string text = "solid a\nfacet normal 0.5 1.5 0\nouter loop\nvertex 1 0 0\nendloop\nendfacet\n";
    const std::string complete = "Error:  vertex count for triangle wasn't 3 (got 0)\n";
    const TemporaryFolder folder;
    const std::wstring path = fromUtf8(folder.write("a.stl", text));
    const GlobalLocale locale(std::locale(std::locale::classic(), new CommaAndGrouping));

    STLScreen screen;
    ::testing::internal::CaptureStderr();
    screen.deserializeFromFile(path);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), complete);

    ::testing::internal::CaptureStderr();
    readXml(screen,
            "<ScreenGeometry>c29saWQgYQpmYWNldCBub3JtYWwgMC41IDEuNSAwCm91dGVyIGxvb3AKdmVydGV4IDEgMCAwCmVu"
            "ZGxvb3AKZW5kZmFjZXQK</ScreenGeometry>");
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), complete);

    // A stream of the caller keeps its own locale.
    EXPECT_EQ(messagesOf(screen, text), gotWhileExpecting("", "\"outer\" or \"endfacet\""));
}

TEST(StlScreen, FileThatDoesNotOpenMakesItInvalidAndSaysNothing) {
    const TemporaryFolder folder;
    OpenStlScreen screen;
    messagesOf(screen, kText);
    const std::wstring before = xmlOf(screen, 0);
    for (const std::string name : {"missing.stl", ""}) {
        ::testing::internal::CaptureStderr();
        EXPECT_NO_THROW(screen.deserializeFromFile(fromUtf8(folder.path(name))));
        EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
        EXPECT_FALSE(screen.isValid());
        EXPECT_EQ(hexOf(screen.getUniqueDataHash()), kZeroDigest);
        EXPECT_EQ(xmlOf(screen, 0), before);
    }
}

TEST(StlScreen, XmlHoldsTheTextInBase64) {
    STLScreen screen;
    messagesOf(screen, kText);
    EXPECT_EQ(
        xmlOf(screen, 1),
        L"    <ScreenGeometry ClassType=\"class STLScreen\">c29saWQgYQplbmRzb2xpZAo=</ScreenGeometry>\n");
    STLScreen reloaded;
    readXml(reloaded, toUtf8(xmlOf(screen, 0)));
    EXPECT_TRUE(reloaded.isValid());
    EXPECT_EQ(xmlOf(reloaded, 0), xmlOf(screen, 0));
}

TEST(StlScreen, XmlOfBytesThatAreNoUtf8DoesNotBringThemBack) {
    Facet facet = facetWithNormal(0.0F, 0.0F, 2.0F);
    OpenStlScreen plain;
    messagesOf(plain, binaryStl({facet}));
    OpenStlScreen reloaded;
    readXml(reloaded, toUtf8(xmlOf(plain, 0)));
    EXPECT_TRUE(sameTriangles(reloaded.triangles, plain.triangles));

    facet.numbers[3] = 1.0F;  // Its third byte is 0x80.
    OpenStlScreen screen;
    messagesOf(screen, binaryStl({facet}));
    EXPECT_TRUE(screen.isValid());
    OpenStlScreen changed;
    ::testing::internal::CaptureStderr();
    readXml(changed, toUtf8(xmlOf(screen, 0)));
    ::testing::internal::GetCapturedStderr();
    EXPECT_FALSE(sameTriangles(changed.triangles, screen.triangles));
}

TEST(StlScreen, XmlIsEmptyOnceALoadHasFailed) {
    STLScreen screen;
    messagesOf(screen, kText);
    messagesOf(screen, kBroken);
    EXPECT_EQ(xmlOf(screen, 0), L"<ScreenGeometry ClassType=\"class STLScreen\"></ScreenGeometry>\n");
    STLScreen reloaded;
    EXPECT_THROW(readXml(reloaded, toUtf8(xmlOf(screen, 0))), ZelmoreParseException);
}

TEST(StlScreen, XmlHoldsTheBytesFromWhereTheStreamStood) {
    std::istringstream in("junk " + kText);
    in.seekg(5);
    STLScreen screen;
    STLScreen whole;
    messagesOf(screen, in);
    messagesOf(whole, kText);
    EXPECT_EQ(xmlOf(screen, 0), xmlOf(whole, 0));
}

// A leg of 2 becomes one of 1, and the rectangle behind adds two triangles.
TEST(StlScreen, ScalesToTheUnitRectangle) {
    OpenStlScreen screen;
    messagesOf(screen, binaryStl({facetWithNormal(0.0F, 0.0F, 1.0F)}));
    ::testing::internal::CaptureStdout();
    screen.scaleToUnitRectangle();
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), "...\n");
    ASSERT_EQ(screen.triangles.size(), 3U);
    const auto& corners = screen.triangles[0].vertices;
    EXPECT_EQ(corners[0].position, (Point3{-0.5, -0.5, 0.0}));
    EXPECT_EQ(corners[1].position, (Point3{0.5, -0.5, 0.0}));
    EXPECT_EQ(corners[2].position, (Point3{-0.5, 0.5, 0.0}));
}

TEST(StlScreen, ConfigurationDoesNotMoveIt) {
    OpenStlScreen screen;
    messagesOf(screen, binaryStl(rowOfFacets(2)));
    const std::vector<Triangle> before = screen.triangles;
    screen.updateGeometry(nullptr);
    EXPECT_TRUE(sameTriangles(screen.triangles, before));
}
