#include <gtest/gtest.h>

#include "Library/Stl/StlFiles.h"

using namespace quarn::test;
using namespace std::string_literals;

namespace {

// Text that begins like a binary file's header: "solid", then a name of so many characters, its
// first a blank.
std::string solidLine(std::size_t nameSize) {
    return "solid " + std::string(nameSize - 1, 'x');
}

std::string limitMessage() {
    return "Error: solid name exceeded limit\n";
}

void expectTakenForText(const std::string& bytes) {
    OpenStlScreen screen;
    const std::string messages = messagesOf(screen, bytes);
    EXPECT_TRUE(messages.starts_with("Error: got \"")) << messages;
    EXPECT_TRUE(messages.ends_with("\" while expecting \"facet\" or \"endsolid\"\n")) << messages;
    EXPECT_FALSE(screen.isValid());
    EXPECT_TRUE(screen.triangles.empty());
}

void expectTakenForBinary(const std::string& bytes, const std::vector<Facet>& facets) {
    OpenStlScreen screen;
    EXPECT_EQ(messagesOf(screen, bytes), "");
    EXPECT_TRUE(screen.isValid());
    EXPECT_TRUE(sameTriangles(screen.triangles, trianglesOf(facets, facets.size())));
}

}  // namespace

TEST(StlHeader, ThatBeginsWithSolidIsBinaryWithoutALineFeed) {
    for (const int count : {1, 9, 11, 265, 267}) {
        SCOPED_TRACE(count);
        const std::vector<Facet> facets = rowOfFacets(count);
        for (const char fill : {' ', 'x'})
            expectTakenForBinary(binaryStl("solid "s + std::string(74, fill), count, facets), facets);
    }
}

TEST(StlHeader, ThatBeginsWithSolidAndEndsItsLineIsText) {
    const std::vector<Facet> facets = rowOfFacets(3);
    for (std::size_t size = 1; size <= 74; ++size) {
        SCOPED_TRACE(size);
        expectTakenForText(binaryStl(solidLine(size) + "\n", 3, facets));
    }
}

// The low byte of such a count is a line feed, and stands within reach.
TEST(StlHeader, ThatBeginsWithSolidIsTextWhereTheCountHoldsALineFeed) {
    for (const int count : {10, 266, 10 * 256}) {
        SCOPED_TRACE(count);
        expectTakenForText(binaryStl(solidLine(75), count, rowOfFacets(count)));
    }
}

// Bytes 84 and 85 of the file are the first two of the first normal.
TEST(StlHeader, LineFeedCountsUpToSeventyNineCharactersBehindSolid) {
    std::string bytes = binaryStl(solidLine(75), 1, rowOfFacets(1));
    bytes[84] = '\n';
    expectTakenForText(bytes);
    bytes[84] = 1;
    bytes[85] = '\n';
    OpenStlScreen screen;
    EXPECT_EQ(messagesOf(screen, bytes), "");
    EXPECT_EQ(screen.triangles.size(), 1U);
}

TEST(StlHeader, WhoseFirstTokenIsLongerThanSolidIsBinary) {
    const std::vector<Facet> facets = rowOfFacets(2);
    for (const std::string& header :
         {"solid"s, "solid\0 a\n"s, "solids\n"s, "Solid\n"s, "\xEF\xBB\xBFsolid\n"s})
        expectTakenForBinary(binaryStl(header, 2, facets), facets);
}

TEST(StlHeader, OfBlanksAloneIsBinary) {
    const std::vector<Facet> facets = rowOfFacets(2);
    expectTakenForBinary(binaryStl(std::string(80, ' '), 2, facets), facets);
}

TEST(StlHeader, ThatBeginsWithSolidAndCutRecordsExceedsTheLimit) {
    const std::vector<Facet> facets = rowOfFacets(3);
    const std::string bytes = binaryStl(solidLine(75), 3, facets);
    for (std::size_t size = 85; size < bytes.size(); ++size) {
        SCOPED_TRACE(size);
        OpenStlScreen screen;
        EXPECT_EQ(messagesOf(screen, bytes.substr(0, size)), limitMessage());
        EXPECT_FALSE(screen.isValid());
        EXPECT_TRUE(sameTriangles(screen.triangles, trianglesOf(facets, (size - 84) / 50)));
    }
}

TEST(StlHeader, ThatBeginsWithSolidAndIsCutEndsUnexpectedly) {
    const std::string bytes = binaryStl(solidLine(75), 3, rowOfFacets(3));
    for (std::size_t size = 6; size <= 84; ++size) {
        SCOPED_TRACE(size);
        STLScreen screen;
        EXPECT_EQ(messagesOf(screen, bytes.substr(0, size)), "Error: unexpected EOF\n");
        EXPECT_FALSE(screen.isValid());
    }
}

TEST(StlHeader, TextMayNameItsSolidWithSeventyNineCharacters) {
    for (const std::size_t size : {1U, 77U, 78U, 79U}) {
        SCOPED_TRACE(size);
        STLScreen screen;
        EXPECT_EQ(messagesOf(screen, solidLine(size) + "\nendsolid\n"), "");
        EXPECT_TRUE(screen.isValid());
    }
    for (const std::size_t size : {80U, 81U, 100U}) {
        SCOPED_TRACE(size);
        STLScreen screen;
        EXPECT_EQ(messagesOf(screen, solidLine(size) + "\nendsolid\n"), limitMessage());
        EXPECT_FALSE(screen.isValid());
    }
}

TEST(StlHeader, LongNameLeavesTheTextsOwnBytesAsTriangles) {
    const std::string text = solidLine(300) + "\nendsolid\n";
    OpenStlScreen screen;
    EXPECT_EQ(messagesOf(screen, text), limitMessage());
    EXPECT_EQ(screen.triangles.size(), (text.size() - 84) / 50);
}

TEST(StlHeader, TokenIsNamedWithItsZeroBytes) {
    STLScreen screen;
    EXPECT_EQ(messagesOf(screen, "solid\0\0 a"s), gotWhileExpecting("solid\0\0"s, kSolidExpected));
}
