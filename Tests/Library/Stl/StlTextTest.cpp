#include <gtest/gtest.h>

#include <sstream>

#include "Library/Stl/StlFiles.h"

using namespace quarn::test;

namespace {

constexpr const char* kLoopExpected = R"("loop")";
constexpr const char* kOuterExpected = R"("outer" or "endfacet")";
constexpr const char* kVertexExpected = R"("vertex" or "endloop")";
constexpr const char* kUnexpectedEnd = "Error: unexpected EOF\n";
constexpr const char* kNoVertices = "Error:  vertex count for triangle wasn't 3 (got 0)\n";

// A text gives no triangle, and is valid where nothing is said about it.
void expectMessage(const std::string& text, const std::string& message) {
    SCOPED_TRACE(text);
    OpenStlScreen screen;
    EXPECT_EQ(messagesOf(screen, text), message);
    EXPECT_EQ(screen.isValid(), message.empty());
    EXPECT_TRUE(screen.triangles.empty());
    EXPECT_FALSE(screen.hasTesselation());
}

void expectValid(const std::string& text) {
    expectMessage(text, "");
}

// The message about a token behind a text.
void expectRefused(const std::string& before, const std::string& token, const char* expected) {
    expectMessage(before + " " + token + " ", gotWhileExpecting(token, expected));
}

}  // namespace

TEST(StlText, WithoutFacetsIsValid) {
    expectValid("solid\nendsolid\n");
    expectValid("solid\nendsolid");
    expectValid("solid a name of words\nendsolid a name of words\n");
    expectValid(" \n\tsolid\r\n\r\n endsolid");
}

TEST(StlText, IsNotReadBeyondEndsolid) {
    expectValid("solid\nendsolid facet endfacet \x01\xFF");
    std::istringstream in("solid\nendsolid rest");
    STLScreen screen;
    EXPECT_EQ(messagesOf(screen, in), "");
    std::string rest;
    in >> rest;
    EXPECT_EQ(rest, "rest");
}

TEST(StlText, FirstLineIsNotLookedAt) {
    expectMessage("solid endsolid\n", gotWhileExpecting("", kFacetExpected));
    expectValid("solid facet outer\nendsolid");
}

TEST(StlText, WholeFacetIsAnError) {
    expectMessage(
        "solid a\nfacet normal 0 0 1\nouter loop\nvertex 0 0 0\nvertex 1 0 0\nvertex 0 1 "
        "0\nendloop\nendfacet\n"
        "endsolid a\n",
        kNoVertices);
    expectMessage("solid\nfacet normal 0 0 1 endfacet", kNoVertices);
    expectMessage("solid\nfacet normal 0 0 1 outer loop endloop outer loop vertex 1 2 3 endloop endfacet ",
                  kNoVertices);
}

TEST(StlText, TokenOutOfPlaceIsNamed) {
    for (const std::string token : {"solid", "normal", "outer", "Facet", "endfacet"})
        expectRefused("solid\n", token, kFacetExpected);
    for (const std::string token : {"facet", "loop", "vertex", "endsolid", "4"})
        expectRefused("solid\nfacet normal 1 2 3", token, kOuterExpected);
    for (const std::string token : {"outer", "Loop", "vertex"})
        expectRefused("solid\nfacet normal 1 2 3 outer", token, kLoopExpected);
    for (const std::string token : {"endfacet", "loop", "4"})
        expectRefused("solid\nfacet normal 1 2 3 outer loop vertex 1 2 3", token, kVertexExpected);
    expectRefused("solid\nfacet normal 1 2 3 outer loop endloop", "endloop", kOuterExpected);
}

TEST(StlText, NumberThatIsNoneLeavesAnEmptyToken) {
    expectMessage("solid\nfacet normal x 0 0 outer loop ", gotWhileExpecting("", kOuterExpected));
    expectMessage("solid\nfacet normal 0 0 outer loop ", gotWhileExpecting("", kOuterExpected));
    expectMessage("solid\nfacet normal 0 0 1 outer loop vertex 1 - 2 ",
                  gotWhileExpecting("", kVertexExpected));
}

TEST(StlText, EndBehindALineFeedLeavesAnEmptyToken) {
    expectMessage("solid\n", gotWhileExpecting("", kFacetExpected));
    expectMessage("solid\nfacet normal 0 0 1\n", gotWhileExpecting("", kOuterExpected));
    expectMessage("solid\nfacet normal 0 0 1\nouter\n", gotWhileExpecting("", kLoopExpected));
    expectMessage("solid\nfacet normal 0 0 1\nouter loop\n", gotWhileExpecting("", kVertexExpected));
}

TEST(StlText, EndBehindAnAcceptedWordIsUnexpected) {
    expectMessage("solid name", kUnexpectedEnd);
    expectMessage("solid ", kUnexpectedEnd);
    expectMessage("solid\nfacet", kUnexpectedEnd);
    expectMessage("solid\nfacet ", kUnexpectedEnd);
    expectMessage("solid\nfacet normal", kUnexpectedEnd);
    expectMessage("solid\nfacet normal 0 0", kUnexpectedEnd);
    expectMessage("solid\nfacet normal 0 0 1", kUnexpectedEnd);
    expectMessage("solid\nfacet normal 0 0 1 outer loop", kUnexpectedEnd);
    expectMessage("solid\nfacet normal 0 0 1 outer loop vertex 0 0 1", kUnexpectedEnd);
    expectMessage("solid\nfacet normal 0 0 1 outer loop endloop", kUnexpectedEnd);
}

TEST(StlText, EndBehindOuterLeavesAnEmptyToken) {
    expectMessage("solid\nfacet normal 0 0 1 outer", gotWhileExpecting("", kLoopExpected));
}

TEST(StlText, OfTheWordSolidAloneExceedsTheLimitOfItsName) {
    expectMessage("solid", "Error: solid name exceeded limit\n");
}

TEST(StlText, FacetWithoutNormalBeginsAnew) {
    expectValid("solid\nfacet x solid again\nendsolid");
    expectValid("solid\nfacet facet solid\nfacet endfacet solid\nendsolid");
    expectMessage("solid\nfacet x endsolid ", gotWhileExpecting("endsolid", kSolidExpected));
    expectMessage("solid\nfacet x solid again\nfacet normal 0 0 1 endfacet", kNoVertices);
}

// The file's start lies where its text is, so that the bytes of the text make up the header.
TEST(StlText, FacetWithoutNormalMayTurnOutToBeBinary) {
    const std::vector<Facet> facets = rowOfFacets(2);
    OpenStlScreen screen;
    EXPECT_EQ(messagesOf(screen, binaryStl("solid\nfacet x binary ", 2, facets)), "");
    EXPECT_TRUE(screen.isValid());
    EXPECT_TRUE(sameTriangles(screen.triangles, trianglesOf(facets, 2)));
}

TEST(StlText, ThatBeginsOtherwiseIsNamedByItsFirstWord) {
    expectMessage("", gotWhileExpecting("", kSolidExpected));
    expectMessage(" \n ", gotWhileExpecting("", kSolidExpected));
    expectMessage("facet normal 0 0 1", gotWhileExpecting("facet", kSolidExpected));
    expectMessage("\"SOLID\"\nendsolid", gotWhileExpecting("\"SOLID\"", kSolidExpected));
}

TEST(StlText, IsReadFromWhereTheStreamStands) {
    const std::string text = "junk solid\nendsolid";
    expectMessage(text, gotWhileExpecting("junk", kSolidExpected));
    std::istringstream in(text);
    in.seekg(4);
    STLScreen screen;
    EXPECT_EQ(messagesOf(screen, in), "");
    EXPECT_TRUE(screen.isValid());
}

TEST(StlText, OnAStreamThatThrowsEndsWithAMessage) {
    std::istringstream in("solid\nfacet normal x");
    in.exceptions(std::ios::failbit);
    STLScreen screen;
    EXPECT_EQ(messagesOf(screen, in), "Error: unknown exception...\n");
    EXPECT_FALSE(screen.isValid());
}
