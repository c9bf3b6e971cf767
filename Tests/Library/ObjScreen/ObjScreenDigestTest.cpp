#include <gtest/gtest.h>

#include "Library/ObjScreen/ObjScreenCases.h"
#include "Support/HashText.h"

using namespace quarn::test;
using namespace std::string_literals;

namespace {

// The digest after a load that goes through.
std::string digestOf(const std::string& text, OBJScreen& screen) {
    EXPECT_EQ(loadInto(screen, text), kLoaded);
    return hexOf(screen.getUniqueDataHash());
}

std::string digestOf(const std::string& text) {
    OBJScreen screen;
    return digestOf(text, screen);
}

}  // namespace

// hashlib.sha1(text).hexdigest() in Python.
TEST(ObjScreenDigest, IsThatOfTheBytesOfTheText) {
    EXPECT_EQ(digestOf(kSquare), "c0bbd160743464ab2adf3c665fba239cd71056b6");
    EXPECT_EQ(digestOf("v 0 0 0\r\nvn 0 0 1\r\n"), "5d2f80f048231ebae9c4f3c0c3d9418dff3d991e");
    EXPECT_EQ(digestOf("v 0 0 0\nvn 0 0 1\n# \xFF\0\\"s), "78af45d6a63fe2105a65e7f1aa018b818b47704b");
}

TEST(ObjScreenDigest, IsThatOfTheJoinedLines) {
    EXPECT_EQ(digestOf("v 1 2\\\n3\nvn 0 0 1\n"), digestOf("v 1 2  3\nvn 0 0 1\n"));
    EXPECT_EQ(digestOf("v 1 2\\\n3\nvn 0 0 1\n"), "646fd3e00a5582940dade6254da2653f19a6ee87");
}

TEST(ObjScreenDigest, AxesAndScaleDoNotEnter) {
    OBJScreen turned(L"-X", L"-Z", 17.5F);
    EXPECT_EQ(digestOf(kSquare, turned), digestOf(kSquare));
}

TEST(ObjScreenDigest, EveryByteCounts) {
    EXPECT_NE(digestOf(kSquare), digestOf(kSquare + "#"));
    EXPECT_NE(digestOf(kSquare), digestOf(kSquare + "\n"));
}

TEST(ObjScreenDigest, AgreesWithTheDigestOfAnyText) {
    const std::string text = squareAt('7');
    OBJScreen screen;
    (void)loadInto(screen, text);
    EXPECT_EQ(screen.getUniqueDataHash(), ScreenGeometry::calculateHash(text));
    EXPECT_EQ(screen.getUniqueDataHash(), MeshScreen::calcUniqueDataHash(text));
}

TEST(ObjScreenDigest, IsZeroUntilALoadGoesThrough) {
    OBJScreen screen;
    for (const std::string& text :
         {""s, kNormal, kCorners, kSquare + "f 9/1/1 1/1/1 1/1/1\n", kSquare + "f 1"}) {
        (void)loadInto(screen, text);
        EXPECT_EQ(screen.getUniqueDataHash(), ScreenGeometry::DataHash{}) << text;
    }
}
