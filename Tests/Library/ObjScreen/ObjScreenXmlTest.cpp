#include <gtest/gtest.h>

#include <limits>

#include <Common/ZelmoreException.h>

#include "Library/ObjScreen/ObjScreenCases.h"
#include "Support/Mesh/Meshes.h"
#include "Support/ScreenXml.h"

using namespace quarn::test;
using namespace std::string_literals;

namespace {

// base64 of "v 0 0 0\n"
const std::wstring kOneVertex = L"diAwIDAgMAo=";

std::string savedText(OBJScreen& screen, int indent = 0) {
    return toUtf8(xmlOf(screen, indent));
}

// Drops what stands between two tags.
std::string withoutBlanks(const std::string& xml) {
    std::string result;
    bool isBetween = true;
    for (const char c : xml) {
        if (isBetween && (c == ' ' || c == '\n')) continue;
        isBetween = c == '>';
        result += c;
    }
    return result;
}

void expectSameScreen(OBJScreen& screen, const std::string& xml) {
    OBJScreen reloaded(L"-Z", L"X", 77.0F);
    readXml(reloaded, xml);
    EXPECT_EQ(reloaded.getStatus(), screen.getStatus());
    EXPECT_EQ(reloaded.getUniqueDataHash(), screen.getUniqueDataHash());
    EXPECT_EQ(reloaded.getLoadedFileContents(), screen.getLoadedFileContents());
    std::vector<Triangle> triangles;
    std::vector<Triangle> reloadedTriangles;
    screen.getTesselation(triangles);
    reloaded.getTesselation(reloadedTriangles);
    EXPECT_TRUE(sameTriangles(reloadedTriangles, triangles));
    EXPECT_EQ(savedText(reloaded), savedText(screen));
}

}  // namespace

TEST(ObjScreenXml, IsSixLines) {
    OBJScreen screen(L"-X", L"Z", 2.5F);
    EXPECT_EQ(loadInto(screen, "v 0 0 0\n"), kNoNormals);
    EXPECT_EQ(xmlOf(screen, 1),
              L"    <ScreenGeometry ClassType=\"class OBJScreen\">\n"
              L"        <ScreenString>" +
                  kOneVertex +
                  L"</ScreenString>\n"
                  L"        <AxisForward>-X</AxisForward>\n"
                  L"        <AxisUpward>Z</AxisUpward>\n"
                  L"        <Scale>2.500000000000000e+00</Scale>\n"
                  L"    </ScreenGeometry>\n");
}

TEST(ObjScreenXml, NewScreenHasItsDefaultsAndNoText) {
    OBJScreen screen;
    EXPECT_EQ(xmlOf(screen, 0),
              L"<ScreenGeometry ClassType=\"class OBJScreen\">\n"
              L"    <ScreenString></ScreenString>\n"
              L"    <AxisForward>Y</AxisForward>\n"
              L"    <AxisUpward>Z</AxisUpward>\n"
              L"    <Scale>1.000000000000000e+00</Scale>\n"
              L"</ScreenGeometry>\n");
}

TEST(ObjScreenXml, AxesAreWrittenAsTheyStand) {
    OBJScreen screen(L"<&>", L"\"\n\U0001F5A5", 0.0F);
    const std::wstring xml = xmlOf(screen, 0);
    EXPECT_NE(xml.find(L"    <AxisForward><&></AxisForward>\n"), std::wstring::npos);
    EXPECT_NE(xml.find(L"    <AxisUpward>\"\n    \U0001F5A5</AxisUpward>\n"), std::wstring::npos);
}

// The float's value is written, and not the number it was made from.
TEST(ObjScreenXml, ScaleIsWidened) {
    const auto scaleOf = [](float scale) {
        OBJScreen screen(L"Y", L"Z", scale);
        const std::wstring xml = xmlOf(screen, 0);
        const std::size_t start = xml.find(L"<Scale>") + 7;
        return xml.substr(start, xml.find(L'<', start) - start);
    };
    EXPECT_EQ(scaleOf(0.1F), L"1.000000014901161e-01");
    EXPECT_EQ(scaleOf(-0.0F), L"-0.000000000000000e+00");
    EXPECT_EQ(scaleOf(std::numeric_limits<float>::max()), L"3.402823466385289e+38");
    EXPECT_EQ(scaleOf(std::numeric_limits<float>::infinity()), L"inf");
}

TEST(ObjScreenXml, SavedScreenComesBackWithItsDigest) {
    const std::string texts[] = {kSquare, objTextOf(wave({4, 3})), "v 1 2\\\n3\nvn 0 0 1\n",
                                 kSquare +
                                     "# Gr\xC3\xB6\xC3\x9F"
                                     "e \xF0\x9F\x96\xA5 \\\r\n\x01\x7F"};
    for (const std::string& text : texts) {
        SCOPED_TRACE(text);
        OBJScreen screen(L"X", L"-Y", 0.1F);
        EXPECT_EQ(loadInto(screen, text), kLoaded);
        for (const int indent : {-1, 0, 1, 5}) expectSameScreen(screen, savedText(screen, indent));
        expectSameScreen(screen, withoutBlanks(savedText(screen)));
        // Indentation is nine text nodes; without it there are four children.
        EXPECT_EQ(withoutBlanks(savedText(screen)).find('\n'), std::string::npos);
    }
}

TEST(ObjScreenXml, EveryScaleComesBack) {
    for (int i = 0; i < seedCount(300); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        const auto scale = static_cast<float>(rng.spread(-149, 127));
        OBJScreen screen(L"Y", L"Z", scale);
        OBJScreen reloaded;
        EXPECT_EQ(loadInto(screen, "# no scale matters\n"), kNoVertices);
        EXPECT_EQ(endOf([&] { readXml(reloaded, savedText(screen)); }), kNoVertices);
        ASSERT_EQ(savedText(reloaded), savedText(screen));
    }
}

TEST(ObjScreenXml, TextOfAFailedLoadIsSavedAndFailsAgain) {
    for (const auto& [text, end] : {std::pair{kCorners, kNoNormals},
                                    {kSquare + "f 9/1/1 1/1/1 1/1/1\n", kBadVertex},
                                    {kSquare + "f 1", kOutOfMemory}}) {
        OBJScreen screen;
        EXPECT_EQ(loadInto(screen, text), end);
        OBJScreen reloaded;
        EXPECT_EQ(endOf([&] { readXml(reloaded, savedText(screen)); }), end);
        EXPECT_EQ(reloaded.getLoadedFileContents(), text);
        EXPECT_EQ(reloaded.getStatus(), screen.getStatus());
    }
}

TEST(ObjScreenXml, NulsOfTheTextStay) {
    const std::string text = kSquare + "# a\0b\0"s;
    OBJScreen screen;
    EXPECT_EQ(loadInto(screen, text), kLoaded);
    expectSameScreen(screen, savedText(screen));
}

// Each byte that is no part of UTF-8 is saved as a replacement, and the digest goes with it.
TEST(ObjScreenXml, BytesThatAreNoUtf8AreReplaced) {
    OBJScreen screen;
    EXPECT_EQ(loadInto(screen, kSquare + "# Gr\xF6\xDF"
                                         "e\n"),
              kLoaded);
    OBJScreen reloaded;
    readXml(reloaded, savedText(screen));
    const std::string replaced = kSquare +
                                 "# Gr\xEF\xBF\xBD\xEF\xBF\xBD"
                                 "e\n";
    EXPECT_EQ(reloaded.getLoadedFileContents(), replaced);
    EXPECT_EQ(reloaded.getUniqueDataHash(), ScreenGeometry::calculateHash(replaced));
    expectSameScreen(reloaded, savedText(reloaded));
}

TEST(ObjScreenXml, NewScreenSavedCannotBeReadBack) {
    OBJScreen screen;
    OBJScreen reloaded;
    EXPECT_THROW(readXml(reloaded, savedText(screen)), ZelmoreParseException);
}
