#include <QuarnKit/Formats/Obj/Parts/ObjCompaction.h>

#include <gtest/gtest.h>

#include "Kit/Formats/ObjRepairCases.h"
#include "Support/Rng.h"

namespace quarn::test {
namespace {

ObjSource compacted(const std::string& text) {
    ObjSource source{.file = "a.obj", .name = "a.obj", .text = text, .frame = {}};
    removeUnusedObjData(source);
    return source;
}

TEST(ObjCompaction, UnusedDataAndLinesWithoutEffectAreRemoved) {
    EXPECT_EQ(compacted("\xEF\xBB\xBF# made\nmtllib a.mtl\n\nv 9 9 9\nv 0.50 0 0 1 1 1\nv 1 0 0\nv 0 0 1\n"
                        "vt 9 9\nvt 0 0\nvn 9 9 9\nvn 0 -1 0\no A\ns off\no B\nusemtl C:\\\n"
                        "   \nf 2/2/2 3//2 4/7/2\nl 1 2\no C\n")
                  .text,
              "mtllib a.mtl\nv 0.50 0 0 1 1 1\nv 1 0 0\nv 0 0 1\nvt 0 0\nvn 0 -1 0\ns off\no B\n"
              "usemtl C:\\ \nf 1/1/1 2//1 3//1\n");
}

TEST(ObjCompaction, LinesNameThoseOfTheFile) {
    const ObjSource source =
        compacted("v 9 9 9\nv 0 0 0\nv 1 0 0\n\nv 0 0 1\nvn 0 -1 0\n\nf 2//1 3//1 4//1\n");
    EXPECT_EQ(source.lineMap.originalOf(1), 2U);
    EXPECT_EQ(source.lineMap.originalOf(3), 5U);
    EXPECT_EQ(source.lineMap.originalOf(5), 8U);
}

TEST(ObjCompaction, TheMeshStays) {
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const auto number = [&] { return std::to_string(rng.integer(-5, 5)); };
        std::string text;
        for (int line = 0; line < 12; ++line) {
            text += "v " + number() + " " + number() + " " + number() + "\n";
            text += "vt " + number() + " " + number() + "\nvn " + number() + " 0 1\n";
        }
        const auto index = [&] { return std::to_string(rng.integer(1, 12)); };
        for (int face = 0; face < 4; ++face) {
            text += "f";
            for (int corner = 0; corner < 3 + face % 2; ++corner)
                text += " " + index() + "/" + (rng.integer(0, 3) == 0 ? "" : index()) + "/" + index();
            text += "\n";
        }
        OBJScreen whole;
        OBJScreen compact;
        const auto expected = loadTriangles(whole, text);
        const auto triangles = loadTriangles(compact, compacted(text).text);
        ASSERT_EQ(triangles.size(), expected.size());
        for (std::size_t t = 0; t < expected.size(); ++t)
            for (std::size_t corner = 0; corner < 3; ++corner) {
                ASSERT_EQ(triangles[t].vertices.at(corner).position,
                          expected[t].vertices.at(corner).position);
                ASSERT_EQ(triangles[t].vertices.at(corner).uv, expected[t].vertices.at(corner).uv);
            }
    }
}

}  // namespace
}  // namespace quarn::test
