#include <gtest/gtest.h>

#include <QuarnScreen/Detail/Obj/ObjParser.h>

#include <array>
#include <string>

using namespace quarn;

namespace {

using Vertex = std::array<float, 3>;
using TextureCoordinate = std::array<float, 2>;

detail::ObjVertexData dataOf(const std::string& text) {
    detail::ObjVertexData data;
    detail::scanVertexData(text, data);
    return data;
}

}  // namespace

TEST(ObjVertexScan, LinesGoToTheListOfTheirKeyword) {
    const detail::ObjVertexData data =
        dataOf("v 1 2 3\nvt 0.25 0.5\nvn 0 0 1\nv 4 5 6\nvn 1 0 0\nvn 0 1 0\n");
    EXPECT_EQ(data.vertices, (std::vector<Vertex>{{1, 2, 3}, {4, 5, 6}}));
    EXPECT_EQ(data.textureCoordinates, (std::vector<TextureCoordinate>{{0.25F, 0.5F}}));
    EXPECT_EQ(data.normalCount, 3U);
}

TEST(ObjVertexScan, MissingValuesAreZero) {
    EXPECT_EQ(dataOf("v 1 2\nv 1\nv \n").vertices, (std::vector<Vertex>{{1, 2, 0}, {1, 0, 0}, {0, 0, 0}}));
    EXPECT_EQ(dataOf("vt 1\nvt\n").textureCoordinates, (std::vector<TextureCoordinate>{{1, 0}, {0, 0}}));
    EXPECT_EQ(dataOf("vn\n").normalCount, 1U);
}

TEST(ObjVertexScan, FurtherValuesAreIgnored) {
    EXPECT_EQ(dataOf("v 1 2 3 0.5 0.5 0.5\n").vertices, (std::vector<Vertex>{{1, 2, 3}}));
    EXPECT_EQ(dataOf("vt 0.5 1 0\n").textureCoordinates, (std::vector<TextureCoordinate>{{0.5F, 1}}));
}

TEST(ObjVertexScan, TabBehindTheKeywordLosesTheVertex) {
    EXPECT_TRUE(dataOf("v\t1 2 3\n").vertices.empty());
    // Behind "vt" it does not, but it is no blank: the first value is part of the keyword.
    EXPECT_EQ(dataOf("vt\t1 2 3\n").textureCoordinates, (std::vector<TextureCoordinate>{{2, 3}}));
}

TEST(ObjVertexScan, TabBetweenValuesIsNoSeparator) {
    EXPECT_EQ(dataOf("v 1\t2 3 4\n").vertices, (std::vector<Vertex>{{1, 3, 4}}));
}

TEST(ObjVertexScan, KeywordMayBeLonger) {
    EXPECT_EQ(dataOf("vtx 1 2\n").textureCoordinates, (std::vector<TextureCoordinate>{{1, 2}}));
    EXPECT_EQ(dataOf("vnormal\n").normalCount, 1U);
}

TEST(ObjVertexScan, OtherLinesAreSkipped) {
    const detail::ObjVertexData data =
        dataOf("vp 1 2 3\nvx 1 2 3\nv1 2 3\nV 1 2 3\n# v 1 2 3\n$v 1\nf v 1\n\tv 1 2 3\nv\n");
    EXPECT_TRUE(data.vertices.empty());
    EXPECT_TRUE(data.textureCoordinates.empty());
    EXPECT_EQ(data.normalCount, 0U);
}

TEST(ObjVertexScan, BlanksMayStandBeforeAndBetween) {
    EXPECT_EQ(dataOf("   v   1   2   3   \n").vertices, (std::vector<Vertex>{{1, 2, 3}}));
}

TEST(ObjVertexScan, CarriageReturnEndsTheLastValue) {
    EXPECT_EQ(dataOf("v 1 2 3\r\nv 4 5 6 \r\n").vertices, (std::vector<Vertex>{{1, 2, 3}, {4, 5, 6}}));
}

TEST(ObjVertexScan, LastLineNeedsNoLineFeed) {
    EXPECT_EQ(dataOf("v 1 2 3").vertices, (std::vector<Vertex>{{1, 2, 3}}));
    EXPECT_EQ(dataOf("v 1 ").vertices, (std::vector<Vertex>{{1, 0, 0}}));
    EXPECT_TRUE(dataOf("v").vertices.empty());
    EXPECT_EQ(dataOf("vn").normalCount, 1U);
}

TEST(ObjVertexScan, NulEndsALine) {
    using namespace std::string_literals;
    EXPECT_EQ(dataOf("v 1 2\0v 4 5 6\n"s).vertices, (std::vector<Vertex>{{1, 2, 0}, {4, 5, 6}}));
}

TEST(ObjVertexScan, BlanksOfAContinuationSeparateValues) {
    EXPECT_EQ(dataOf("v 1 2   3\n").vertices, (std::vector<Vertex>{{1, 2, 3}}));
}
