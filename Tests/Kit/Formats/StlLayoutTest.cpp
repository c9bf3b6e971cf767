#include <QuarnKit/Formats/Stl/StlLayout.h>

#include <gtest/gtest.h>

#include <sstream>

#include <QuarnScreen/STLScreen.h>

#include "Support/Rng.h"

namespace quarn::test {
namespace {

std::string binary(const std::string& header, std::int32_t count, std::size_t records) {
    std::string text = header;
    text.resize(StlLayout::kHeaderSize, '\0');
    text.append(reinterpret_cast<const char*>(&count), sizeof count);
    return text.append(records * StlLayout::kRecordSize, '\0');
}

TEST(StlLayout, AFileCountsTheRecordsThatItDeclaresAndContains) {
    EXPECT_FALSE(stlLayoutOf(std::string(83, 'x')));
    EXPECT_EQ(stlLayoutOf(binary("", 3, 5))->count(), 3U);
    EXPECT_EQ(stlLayoutOf(binary("", 5, 3))->count(), 3U);
    EXPECT_EQ(stlLayoutOf(binary("", -1, 3))->count(), 0U);
    EXPECT_EQ(stlLayoutOf(binary("", 3, 3) + std::string(49, 'x'))->recordCount, 3U);
}

TEST(StlLayout, TheWordSolidMayHaveCapitalsAndBlanksBeforeIt) {
    EXPECT_TRUE(beginsWithSolid("solid wall\nfacet"));
    EXPECT_TRUE(beginsWithSolid(" SOLID\n"));
    EXPECT_FALSE(beginsWithSolid("solids are made of\n"));
    EXPECT_FALSE(beginsWithSolid(""));
}

TEST(StlLayout, ATextMayContainAFewControlCharacters) {
    std::string text = "solid wall\n";
    for (int i = 0; i < 5; ++i) text += "facet normal 0 0 1\nouter loop\nvertex 0 0 0\n";
    text[90] = '\1';
    EXPECT_TRUE(isTextLike(text));
    EXPECT_FALSE(isBinaryStl(text));
    EXPECT_FALSE(isTextLike(binary("solid", 1, 1)));
}

TEST(StlLayout, ABinaryFileMayBeginWithSolid) {
    EXPECT_TRUE(isBinaryStl(binary("solid", 1, 1)));
    EXPECT_TRUE(isBinaryStl(binary("solid wall\n", 10, 10)));
    EXPECT_TRUE(isBinaryStl(binary("solid", 10, 3)));
    EXPECT_FALSE(isBinaryStl("solid wall\nendsolid\n" + std::string(200, ' ')));
}

// The text form without a facet loads, and a binary file that is empty: what differs is the word
// that is needed behind the first line.
TEST(StlLayout, TheLibraryTakesTheSameFilesForText) {
    for (int i = 0; i < seedCount(3000); ++i) {
        SCOPED_TRACE(i);
        Rng rng(i);
        constexpr std::string_view kLetters = "s \n\tx";
        std::string text = rng.coin() ? "solid" : rng.coin() ? " solid" : "solidx";
        const int length = rng.integer(0, 100);
        for (int k = 0; k < length; ++k)
            text += rng.integer(0, 30) == 0 ? kLetters[static_cast<std::size_t>(rng.integer(0, 4))] : 'a';
        STLScreen screen;
        std::istringstream stream(text);
        testing::internal::CaptureStderr();
        screen.deserialize(stream);
        const std::string message = testing::internal::GetCapturedStderr();
        const bool wasText =
            message.find("facet") != std::string::npos || message.find("EOF") != std::string::npos;
        EXPECT_EQ(isStlTextToLibrary(text), wasText) << text << message;
    }
}

}  // namespace
}  // namespace quarn::test
