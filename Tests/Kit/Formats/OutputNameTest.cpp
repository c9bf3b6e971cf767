#include <QuarnKit/Formats/OutputName.h>

#include <gtest/gtest.h>

#include <QuarnKit/Base/Error.h>

namespace quarn::test {
namespace {

TEST(OutputName, TheExtensionFollowsTheLastDotOfTheName) {
    EXPECT_EQ(extensionOf("a/b.c/wall.OBJ"), "obj");
    EXPECT_EQ(extensionOf("wall.tar.gz"), "gz");
    EXPECT_EQ(extensionOf(".obj"), "obj");
    for (const char* path : {"", "-", "wall", "a.b/wall", "wall.", "obj"}) EXPECT_EQ(extensionOf(path), "");
}

TEST(OutputName, NamesOfTheFormatAndUnknownOnesAreValid) {
    for (const char* path :
         {"-", "wall", "wall.svg", "WALL.SVG", "wall.picture", "/dev/stdout", "x.xml/wall", ""})
        EXPECT_NO_THROW(requireOutputName(path, {"svg"})) << path;
    EXPECT_NO_THROW(requireOutputName("wall.xml", {"obj", "xml"}));
}

TEST(OutputName, NamesOfOtherFormatsAreErrors) {
    for (const char* path : {"wall.png", "a/wall.PNG", "wall.stl", "wall.obj", "wall.csv"}) {
        try {
            requireOutputName(path, {"svg"}, ", or nothing");
            ADD_FAILURE() << path;
        } catch (const Error& error) {
            EXPECT_EQ(error.details().found, "found the output \"" + std::string(path) + "\"");
            EXPECT_EQ(error.details().expected, "a name that ends with .svg, or nothing");
        }
    }
    EXPECT_THROW(requireOutputName("wall.stl", {"obj", "xml"}), Error);
}

}  // namespace
}  // namespace quarn::test
