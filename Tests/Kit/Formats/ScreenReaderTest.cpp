#include <QuarnKit/Formats/ScreenReader.h>

#include <gtest/gtest.h>

#include <sstream>

#include <Common/TextConversion.h>
#include <QuarnScreen/FlatScreen.h>

#include <QuarnKit/Base/NumberText.h>
#include "Support/Bits.h"
#include "Support/Rng.h"
#include "Support/TemporaryFile.h"

namespace quarn::test {
namespace {

constexpr std::uint64_t kEnoughMemory = 100U << 20U;

Screen read(const std::string& xml) {
    const TemporaryFile file(xml, "screen.xml");
    Observer ignored;
    return readScreen(file.path(), kEnoughMemory, {}, ignored);
}

std::wstring xmlOf(IScreenGeometry& screen) {
    std::wostringstream out;
    screen.serialize(out, 1);
    return out.str();
}

std::string flatXml(const std::string& width, const std::string& height) {
    return "<ScreenGeometry ClassType='class FlatScreen'><Screen_Width>" + width +
           "</Screen_Width><Screen_Height>" + height + "</Screen_Height></ScreenGeometry>";
}

TEST(ScreenReader, WhatTheLibraryWritesIsReadBack) {
    for (int i = 0; i < seedCount(500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        FlatScreen saved(std::abs(rng.spread(-300, 300)), std::abs(rng.spread(-300, 300)));
        const std::wstring xml = xmlOf(saved);
        ASSERT_EQ(xmlOf(*read(toUtf8(xml)).geometry), xml);
    }
}

TEST(ScreenReader, TheScreenHoldsTheCheckedNumbers) {
    for (int i = 0; i < seedCount(500); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        const double width = std::abs(rng.spread(-400, 400));
        const Screen screen = read(flatXml(" " + numberText(width) + "\n", "+3.0"));
        const auto& wall = dynamic_cast<const FlatScreen&>(*screen.geometry);
        ASSERT_TRUE(sameBits(wall.getWidth(), width));
        ASSERT_TRUE(sameBits(wall.getHeight(), 3.0));
        ASSERT_TRUE(sameBits(screen.parameters.at(0).value, width));
    }
}

TEST(ScreenReader, TheLastOfRepeatedTagsHolds) {
    const Screen screen = read(
        "<ScreenGeometry ClassType='class "
        "FlatScreen'><Screen_Width>1</Screen_Width><Screen_Height>3</Screen_Height>"
        "<Screen_Width>2</Screen_Width></ScreenGeometry>");
    EXPECT_EQ(screen.parameters.at(0).value, 2.0);
    EXPECT_EQ(dynamic_cast<const FlatScreen&>(*screen.geometry).getWidth(), 2.0);
}

TEST(ScreenReader, TextMayBeSplitByCommentsAndCData) {
    const Screen screen = read(flatXml("4<!-- and -->.5", "<![CDATA[3]]>&#46;25"));
    const auto& wall = dynamic_cast<const FlatScreen&>(*screen.geometry);
    EXPECT_EQ(wall.getWidth(), 4.5);
    EXPECT_EQ(wall.getHeight(), 3.25);
}

}  // namespace
}  // namespace quarn::test
