#include <gtest/gtest.h>

#include <limits>
#include <sstream>

#include "Library/Stl/StlFiles.h"
#include "Support/Rng.h"

using namespace quarn::test;

namespace {

const std::string kNotSolid = gotWhileExpecting("bin", kSolidExpected);

// Loads the file's first bytes and returns whether the result is as expected: whole records stay,
// and only a file that contains all that it announces is valid.
void expectLoaded(const std::string& bytes, const std::vector<Facet>& facets, std::size_t kept,
                  bool isValid) {
    OpenStlScreen screen;
    EXPECT_EQ(messagesOf(screen, bytes), isValid ? "" : kNotSolid);
    EXPECT_EQ(screen.isValid(), isValid);
    EXPECT_TRUE(sameTriangles(screen.triangles, trianglesOf(facets, kept)));
    EXPECT_EQ(screen.hasTesselation(), kept > 0);
}

}  // namespace

TEST(StlBinary, OfNothingButItsHeaderIsValidAndEmpty) {
    const std::string bytes = binaryStl({});
    ASSERT_EQ(bytes.size(), 84U);
    expectLoaded(bytes, {}, 0, true);
}

TEST(StlBinary, CountBelowOneIsValidAndEmpty) {
    const std::vector<Facet> facets = rowOfFacets(2);
    for (const std::int32_t count : {0, -1, -2, std::numeric_limits<std::int32_t>::min()}) {
        SCOPED_TRACE(count);
        expectLoaded(binaryStl("bin ", count, facets), facets, 0, true);
    }
}

TEST(StlBinary, CountBelowTheRecordsLeavesTheRestUnread) {
    const std::vector<Facet> facets = rowOfFacets(5);
    expectLoaded(binaryStl("bin ", 4, facets), facets, 4, true);
    expectLoaded(binaryStl("bin ", 5, facets), facets, 5, true);
}

TEST(StlBinary, CountAboveTheRecordsIsAnErrorThatKeepsThem) {
    const std::vector<Facet> facets = rowOfFacets(5);
    for (const std::int32_t count : {6, 1000, 0x7F000000, std::numeric_limits<std::int32_t>::max()}) {
        SCOPED_TRACE(count);
        expectLoaded(binaryStl("bin ", count, facets), facets, 5, false);
    }
}

TEST(StlBinary, CountIsNotTrustedWithMemory) {
    OpenStlScreen screen;
    messagesOf(screen, binaryStl("bin ", std::numeric_limits<std::int32_t>::max(), rowOfFacets(5)));
    EXPECT_LE(screen.triangles.capacity(), 100U);
}

TEST(StlBinary, TruncatedAnywhereKeepsItsWholeRecords) {
    const std::vector<Facet> facets = rowOfFacets(2);
    const std::string bytes = binaryStl(facets);
    for (std::size_t size = 3; size <= bytes.size(); ++size) {
        SCOPED_TRACE(size);
        expectLoaded(bytes.substr(0, size), facets, size < 84 ? 0 : (size - 84) / 50, size == bytes.size());
    }
}

TEST(StlBinary, TruncatedWithinItsFirstTokenNamesWhatIsLeftOfIt) {
    for (const std::string token : {"", "b", "bi"}) {
        STLScreen screen;
        EXPECT_EQ(messagesOf(screen, token), gotWhileExpecting(token, kSolidExpected));
        EXPECT_FALSE(screen.isValid());
    }
}

TEST(StlBinary, LongFilesAreReadAndCutLikeShortOnes) {
    for (const int count : {1023, 1024, 1025, 2048, 2100}) {
        SCOPED_TRACE(count);
        const std::vector<Facet> facets = rowOfFacets(count);
        const std::string bytes = binaryStl(facets);
        const auto all = static_cast<std::size_t>(count);
        expectLoaded(bytes, facets, all, true);
        expectLoaded(bytes.substr(0, bytes.size() - 1), facets, all - 1, false);
        expectLoaded(bytes.substr(0, bytes.size() - 50), facets, all - 1, false);
        expectLoaded(bytes.substr(0, bytes.size() - 51), facets, all - 2, false);
    }
}

TEST(StlBinary, FieldsAreTheFloatsOfTheRecord) {
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::vector<Facet> facets(static_cast<std::size_t>(1 + i % 4));
        for (Facet& facet : facets) {
            for (float& number : facet.numbers) number = static_cast<float>(rng.uniform(-100.0, 100.0));
            facet.numbers[static_cast<std::size_t>(i % 12)] = i % 2 == 0 ? -0.0F : 1e-42F;
            facet.attribute = static_cast<std::uint16_t>(i * 331);
        }
        OpenStlScreen screen;
        messagesOf(screen, binaryStl(facets));
        EXPECT_TRUE(screen.isValid());
        EXPECT_TRUE(sameTriangles(screen.triangles, trianglesOf(facets, facets.size())));
    }
}

TEST(StlBinary, AttributeWordMeansNothing) {
    std::vector<Facet> facets = rowOfFacets(3);
    std::uint16_t colour = 0x7FFF;
    for (Facet& facet : facets) facet.attribute = colour = static_cast<std::uint16_t>(colour * 2U + 0x0A0AU);
    expectLoaded(binaryStl(facets), rowOfFacets(3), 3, true);
}

TEST(StlBinary, IsReadFromTheStartWhereverTheStreamStands) {
    const std::vector<Facet> facets = rowOfFacets(3);
    for (const int position : {1, 3, 80, 84, 100, 234}) {
        SCOPED_TRACE(position);
        std::istringstream in(binaryStl(facets));
        in.seekg(position);
        OpenStlScreen screen;
        EXPECT_EQ(messagesOf(screen, in), "");
        EXPECT_TRUE(screen.isValid());
        EXPECT_TRUE(sameTriangles(screen.triangles, trianglesOf(facets, 3)));
    }
}

TEST(StlBinary, IsReadFromAStreamThatWasReadToItsEnd) {
    const std::vector<Facet> facets = rowOfFacets(3);
    std::istringstream in(binaryStl(facets));
    in.ignore(std::numeric_limits<std::streamsize>::max());
    ASSERT_TRUE(in.eof());
    OpenStlScreen screen;
    EXPECT_EQ(messagesOf(screen, in), "");
    EXPECT_TRUE(screen.isValid());
    EXPECT_TRUE(sameTriangles(screen.triangles, trianglesOf(facets, 3)));
}

TEST(StlBinary, StreamStandsBehindTheLastRecordThatWasRead) {
    std::istringstream in(binaryStl("bin ", 2, rowOfFacets(3)));
    STLScreen screen;
    EXPECT_EQ(messagesOf(screen, in), "");
    EXPECT_EQ(in.tellg(), std::streampos(84 + 2 * 50));
}

TEST(StlBinary, RecordsBeforeAnErrorStayOnAStreamThatThrows) {
    const std::vector<Facet> facets = rowOfFacets(3);
    std::istringstream in(binaryStl("bin ", 5, facets));
    in.exceptions(std::ios::failbit);
    OpenStlScreen screen;
    EXPECT_EQ(messagesOf(screen, in), "Error: unknown exception...\n");
    EXPECT_FALSE(screen.isValid());
    EXPECT_TRUE(sameTriangles(screen.triangles, trianglesOf(facets, 3)));
}
