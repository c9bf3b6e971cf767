#include <gmock/gmock.h>

#include <cmath>

#include <QuarnKit/Plot/Page/SvgWriter.h>
#include "Support/Rng.h"

namespace quarn::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

TEST(SvgNumber, HasOneDecimalAtMost) {
    EXPECT_EQ(svgNumber(0.0), "0");
    EXPECT_EQ(svgNumber(12.0), "12");
    EXPECT_EQ(svgNumber(12.3), "12.3");
    EXPECT_EQ(svgNumber(12.34), "12.3");
    EXPECT_EQ(svgNumber(12.96), "13");
    EXPECT_EQ(svgNumber(-12.3), "-12.3");
    EXPECT_EQ(svgNumber(123456.7), "123456.7");
}

TEST(SvgNumber, ZeroHasNoSign) {
    EXPECT_EQ(svgNumber(-0.0), "0");
    EXPECT_EQ(svgNumber(-0.04), "0");
    EXPECT_EQ(svgNumber(-0.06), "-0.1");
}

TEST(SvgNumber, LastBitsDoNotDecideATie) {
    for (int i = -1000; i < 1000; ++i) {
        const double tie = i * 0.1 + 0.05;
        SCOPED_TRACE(tie);
        EXPECT_EQ(svgNumber(std::nextafter(tie, -1e9)), svgNumber(std::nextafter(tie, 1e9)));
        EXPECT_EQ(svgNumber(tie - 1e-10), svgNumber(tie + 1e-10));
        EXPECT_EQ(svgNumber(tie), svgNumber((i + 1) * 0.1)) << "a tie rounds up";
    }
}

TEST(SvgText, MarkupIsEscaped) {
    EXPECT_EQ(svgText("a<b>&\"c\""), "a&lt;b&gt;&amp;&quot;c&quot;");
    EXPECT_EQ(svgText("]]>"), "]]&gt;");
}

TEST(SvgText, WhatNoReaderAcceptsIsReplaced) {
    EXPECT_EQ(svgText(std::string("\0\t\n\x1b", 4)), R"(\x00\x09\x0a\x1b)");
    EXPECT_EQ(svgText("\xff"), "\xEF\xBF\xBD");
    EXPECT_EQ(svgText("\xEF\xBF\xBE"), "\xEF\xBF\xBD");  // U+FFFE
    EXPECT_EQ(svgText("\xE2\x80\xAE"), R"(\u202e)");     // turns the direction of what follows
    EXPECT_EQ(svgText("Kuppel äöü 穹"), "Kuppel äöü 穹");
}

// What stands in the text is no markup, no control character, and an ampersand only of the four
// escapes.
TEST(SvgText, AnyBytesAreSafe) {
    for (int i = 0; i < seedCount(10000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::string bytes;
        for (int count = rng.integer(0, 40); count > 0; --count)
            bytes += static_cast<char>(rng.coin() ? rng.integer(0, 255) : "<>&\"'"[rng.integer(0, 4)]);
        const std::string text = svgText(bytes);
        ASSERT_EQ(text.find_first_of("<>\""), std::string::npos);
        for (std::size_t at = 0; at < text.size(); ++at) {
            ASSERT_GE(static_cast<unsigned char>(text[at]), 0x20);
            if (text[at] != '&') continue;
            const std::string escape = text.substr(at, text.find(';', at) - at + 1);
            ASSERT_THAT(escape, ::testing::AnyOf("&lt;", "&gt;", "&amp;", "&quot;"));
        }
    }
}

TEST(SvgWriter, DocumentHasItsSizeItsTitleAndItsStyle) {
    SvgWriter svg(200.0, 100.5, "a & b", ".x{fill:red}\n");
    const std::string document = svg.finish();
    EXPECT_THAT(document, StartsWith("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns="));
    EXPECT_THAT(document, HasSubstr(R"(width="200" height="100.5" viewBox="0 0 200 100.5")"));
    EXPECT_THAT(document, HasSubstr("<title>a &amp; b</title>\n<style>\n.x{fill:red}\n</style>\n"));
    EXPECT_THAT(document, EndsWith("</svg>\n"));
}

TEST(SvgWriter, ShapesOfOneClassThatFollowEachOtherShareAnElement) {
    SvgWriter svg(10.0, 10.0, "", "");
    svg.area("a", {{0.0, 0.0}, {1.0, 0.0}, {0.0, 1.0}});
    svg.area("a", {{2.0, 2.0}, {3.0, 2.5}, {2.0, 3.0}});
    svg.line("b", {{0.0, 0.0}, {9.0, 9.0}});
    svg.area("a", {});
    svg.line("b", {{1.0, 1.0}, {9.0, 0.0}});
    const std::string document = svg.finish();
    EXPECT_THAT(document, HasSubstr(R"(<path class="a" d="M0 0 1 0 0 1zM2 2 3 2.5 2 3z"/>)"));
    EXPECT_THAT(document, HasSubstr(R"(<path class="b" d="M0 0 9 9M1 1 9 0"/>)"));
}

TEST(SvgWriter, ShapeComesBeforeWhatIsDrawnAfterIt) {
    SvgWriter svg(10.0, 10.0, "", "");
    svg.line("a", {{0.0, 0.0}, {1.0, 1.0}});
    svg.circle("dot", {1.0, 2.0}, 3.0);
    svg.line("a", {{5.0, 5.0}, {6.0, 6.0}});
    svg.rectangle("box", {1.0, 2.0}, 3.0, 4.0);
    EXPECT_THAT(svg.finish(), HasSubstr("<path class=\"a\" d=\"M0 0 1 1\"/>\n"
                                        "<circle class=\"dot\" cx=\"1\" cy=\"2\" r=\"3\"/>\n"
                                        "<path class=\"a\" d=\"M5 5 6 6\"/>\n"
                                        "<rect class=\"box\" x=\"1\" y=\"2\" width=\"3\" height=\"4\"/>\n"));
}

TEST(SvgWriter, TextIsAnchoredRotatedAndEscaped) {
    SvgWriter svg(10.0, 10.0, "", "");
    svg.text("t", {1.0, 2.0}, "<u>");
    svg.text("t", {1.0, 2.0}, "end", TextAnchor::End);
    svg.text("t", {1.0, 2.0}, "up", TextAnchor::Middle, -90.0);
    const std::string document = svg.finish();
    EXPECT_THAT(document, HasSubstr("<text class=\"t\" x=\"1\" y=\"2\">&lt;u&gt;</text>\n"));
    EXPECT_THAT(document, HasSubstr(R"(y="2" text-anchor="end">end</text>)"));
    EXPECT_THAT(document, HasSubstr(R"_(text-anchor="middle" transform="rotate(-90 1 2)">up</text>)_"));
    EXPECT_THAT(document, Not(HasSubstr("<u>")));
}

}  // namespace
}  // namespace quarn::test
