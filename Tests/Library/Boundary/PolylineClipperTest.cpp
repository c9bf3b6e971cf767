#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include <QuarnScreen/Detail/Boundary/PolylineClipper.h>

#include "Reference/Mesh/ReferenceGrid.h"
#include "Support/Mesh/BoundaryScreens.h"
#include "Support/WildNumbers.h"

using namespace quarn::test;

namespace {

std::vector<UVLine> clipped(const UVLine& outline, const UVLine& line) {
    std::vector<UVLine> pieces;
    quarn::detail::PolylineClipper(outline).clip(line, pieces);
    return pieces;
}

Point2 latticePoint(Rng& rng) {
    const double u = rng.integer(0, 8) / 8.0;
    return {u, rng.integer(0, 8) / 8.0};
}

// Points anywhere, on a lattice that the polygon's corners may share, or at a corner of the
// polygon, or next to it.
UVLine anyLine(const UVLine& outline, Rng& rng) {
    UVLine line;
    const int count = rng.integer(0, 12);
    for (int i = 0; i < count; ++i) {
        switch (rng.integer(0, 3)) {
            case 0:
                line.push_back(latticePoint(rng));
                break;
            case 1: {
                Point2 point = outline[static_cast<std::size_t>(rng.bits() % outline.size())];
                point[0] += rng.coin() ? 0.0 : rng.uniform(-2e-9, 2e-9);
                line.push_back(point);
                break;
            }
            default:
                const double u = rng.uniform(-0.2, 1.2);
                line.emplace_back(u, rng.uniform(-0.2, 1.2));
                break;
        }
    }
    return line;
}

}  // namespace

TEST(PolylineClipper, GivesOneEmptyPieceForAnEmptyLineAndKeepsEarlierPieces) {
    EXPECT_EQ(clipped(rectangleUV({0.0, 0.0}, {1.0, 1.0}), {}), std::vector<UVLine>(1));
    EXPECT_EQ(clipped({}, {{0.5, 0.5}, {0.6, 0.5}}), std::vector<UVLine>(1));

    std::vector<UVLine> pieces = {{{7.0, 7.0}}};
    quarn::detail::PolylineClipper(rectangleUV({0.0, 0.0}, {1.0, 1.0})).clip({{0.5, 0.5}}, pieces);
    EXPECT_EQ(pieces, (std::vector<UVLine>{{{7.0, 7.0}}, {{0.5, 0.5}}}));
}

TEST(PolylineClipper, TakesTheFirstSegmentThatIsCrossedNotTheNearest) {
    // Three walls are crossed on the way out; the first in the list is the farthest.
    const UVLine folded = {{0.7, 0.0}, {0.7, 1.0}, {0.65, 1.0}, {0.65, 0.0},
                           {0.6, 0.0}, {0.6, 1.0}, {0.0, 1.0},  {0.0, 0.0}};
    const auto pieces = clipped(folded, {{0.5, 0.5}, {0.9, 0.5}});
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_NEAR(pieces[0].back()[0], 0.7, 1e-15);
}

TEST(PolylineClipper, CutsAnyLineAsTheReferenceDoes) {
    std::size_t cuts = 0;
    for (int i = 0; i < seedCount(30000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const UVLine outline = anyOutline(rng);
        const UVLine line = anyLine(outline, rng);
        const auto pieces = clipped(outline, line);
        ASSERT_TRUE(sameBits(pieces, referenceClip(outline, line)));
        cuts += pieces.size() - 1;
    }
    EXPECT_GT(cuts, static_cast<std::size_t>(seedCount(10000)));
}

TEST(PolylineClipper, CutsLinesOfSpecialNumbersAsTheReferenceDoes) {
    for (int i = 0; i < seedCount(20000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        UVLine outline = anyOutline(rng);
        UVLine line = anyLine(outline, rng);
        for (int k = rng.integer(0, 3); k > 0 && !line.empty(); --k)
            line[static_cast<std::size_t>(rng.bits() % line.size())] = wildPoint<2>(rng);
        for (int k = rng.integer(0, 1); k > 0; --k)
            outline[static_cast<std::size_t>(rng.bits() % outline.size())] = wildPoint<2>(rng);
        ASSERT_TRUE(sameBits(clipped(outline, line), referenceClip(outline, line)));
    }
}

TEST(SegmentMeeting, IncludesTheEndsOfBothSegments) {
    const auto meeting = [](const Point2& c, const Point2& d) {
        return quarn::detail::intersectSegments({0.0, 0.0}, {1.0, 0.0}, c, d);
    };
    EXPECT_EQ(meeting({0.5, -1.0}, {0.5, 1.0}), Point2(0.5, 0.0));
    EXPECT_EQ(meeting({0.0, 0.0}, {0.0, 1.0}), Point2(0.0, 0.0));
    EXPECT_EQ(meeting({1.0, -1.0}, {1.0, 0.0}), Point2(1.0, 0.0));
    EXPECT_TRUE(sameBits(meeting({1.25, -1.0}, {1.25, 1.0}), Point2(std::nan(""), std::nan(""))));
    EXPECT_TRUE(sameBits(meeting({0.5, 0.25}, {0.5, 1.0}), Point2(std::nan(""), std::nan(""))));
    EXPECT_TRUE(sameBits(meeting({0.0, 1.0}, {1.0, 1.0}), Point2(std::nan(""), std::nan(""))));
    EXPECT_TRUE(sameBits(meeting({0.25, 0.0}, {0.75, 0.0}), Point2(std::nan(""), std::nan(""))));
}

TEST(SegmentMeeting, IsThatOfTheReferenceForAnyNumbers) {
    int meetings = 0;
    for (int i = 0; i < seedCount(100000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const auto any = [&] { return rng.integer(0, 9) == 0 ? wildPoint<2>(rng) : latticePoint(rng); };
        const Point2 a = any();
        const Point2 b = any();
        const Point2 c = any();
        const Point2 d = any();
        const Point2 meeting = quarn::detail::intersectSegments(a, b, c, d);
        ASSERT_TRUE(sameBits(meeting, referenceMeeting(a, b, c, d)));
        meetings += meeting == meeting ? 1 : 0;
    }
    EXPECT_GT(meetings, seedCount(10000));
}
