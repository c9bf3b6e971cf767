#include <QuarnKit/Formats/Obj/Repair/ObjLogicalLines.h>

#include <gmock/gmock.h>

namespace quarn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A logicalLine whose views are copied.
struct Copy {
    std::uint64_t line;
    std::string text;
    std::string lineEnd;
    std::vector<std::string> words;
    std::string comment;
};

std::vector<Copy> logicalLinesOf(std::string_view text) {
    std::vector<Copy> copies;
    ObjLogicalLines logicalLines(text);
    for (ObjLogicalLine logicalLine; logicalLines.next(logicalLine);)
        copies.push_back({logicalLine.line,
                          std::string(logicalLine.text),
                          std::string(logicalLine.lineEnd),
                          {logicalLine.words.begin(), logicalLine.words.end()},
                          std::string(logicalLine.comment)});
    return copies;
}

std::vector<std::string> wordsOf(std::string_view line) {
    return logicalLinesOf(line).at(0).words;
}

TEST(ObjLogicalLines, AnEmptyTextHasNone) {
    EXPECT_THAT(logicalLinesOf(""), IsEmpty());
}

TEST(ObjLogicalLines, EveryLineEndEndsALine) {
    const auto logicalLines = logicalLinesOf("a\nb\r\nc\rd\r\r\n\n\ne");
    std::vector<std::string> texts;
    std::vector<std::string> ends;
    std::vector<std::uint64_t> lines;
    for (const Copy& logicalLine : logicalLines) {
        texts.push_back(logicalLine.text);
        ends.push_back(logicalLine.lineEnd);
        lines.push_back(logicalLine.line);
    }
    EXPECT_THAT(texts, ElementsAre("a", "b", "c", "d", "", "", "e"));
    EXPECT_THAT(ends, ElementsAre("\n", "\r\n", "\r", "\r\r\n", "\n", "\n", ""));
    EXPECT_THAT(lines, ElementsAre(1, 2, 3, 4, 5, 6, 7));
}

TEST(ObjLogicalLines, TextsAndLineEndsTogetherAreTheWholeText) {
    const std::string text = "v 1 \\\r\n2\n# a\\\nf 1 \\\n\\\n2\r\rg x\\\rf 1 2 3 \\\n";
    std::string together;
    for (const Copy& logicalLine : logicalLinesOf(text)) together += logicalLine.text + logicalLine.lineEnd;
    EXPECT_EQ(together, text);
}

TEST(ObjLogicalLines, AnyWhiteSpaceSeparatesWords) {
    using namespace std::string_literals;
    EXPECT_THAT(wordsOf(" \tv\t1\v2\f3\0\x1A"s), ElementsAre("v", "1", "2", "3"));
}

TEST(ObjLogicalLines, ACommentIsNoWord) {
    const auto logicalLines = logicalLinesOf("f 1 2 # 3 4\n#all\nf 1 2#3\nusemtl#1 a\n");
    EXPECT_THAT(logicalLines.at(0).words, ElementsAre("f", "1", "2"));
    EXPECT_EQ(logicalLines.at(0).comment, "# 3 4");
    EXPECT_THAT(logicalLines.at(1).words, IsEmpty());
    EXPECT_EQ(logicalLines.at(1).comment, "#all");
    EXPECT_THAT(logicalLines.at(2).words, ElementsAre("f", "1", "2"));
    EXPECT_EQ(logicalLines.at(2).comment, "#3");
    EXPECT_THAT(logicalLines.at(3).words, ElementsAre("usemtl#1", "a"));
}

TEST(ObjLogicalLines, ABackslashJoinsLinesOfData) {
    const auto logicalLines = logicalLinesOf("v 1\\\n2\\\r\n\\\r3\nvt 0 0\n");
    EXPECT_THAT(logicalLines.at(0).words, ElementsAre("v", "1", "2", "3"));
    EXPECT_EQ(logicalLines.at(0).lineEnd, "\n");
    EXPECT_EQ(logicalLines.at(0).line, 1U);
    EXPECT_EQ(logicalLines.at(1).line, 5U);
}

TEST(ObjLogicalLines, ABackslashBehindANameOrCommentJoinsNothing) {
    const auto logicalLines = logicalLinesOf("mtllib C:\\dir\\\n# C:\\\nv 1 2 3\n");
    EXPECT_THAT(logicalLines.at(0).words, ElementsAre("mtllib", "C:\\dir\\"));
    EXPECT_THAT(logicalLines.at(2).words, ElementsAre("v", "1", "2", "3"));
}

TEST(ObjLogicalLines, ABackslashThatEndsTheTextIsNoWord) {
    for (const char* end : {"\\", "\\\n", "\\\r\n", "\\\n\\"}) {
        SCOPED_TRACE(end);
        const auto logicalLines = logicalLinesOf(std::string("f 1 2 3") + end);
        ASSERT_EQ(logicalLines.size(), 1U);
        EXPECT_THAT(logicalLines.front().words, ElementsAre("f", "1", "2", "3"));
        EXPECT_EQ(logicalLines.front().lineEnd, "");
    }
}

// A search of the whole rest of the text for each line would take minutes.
TEST(ObjLogicalLines, ManyLinesWithoutLineFeedTakeLinearTime) {
    constexpr std::uint64_t kLines = 500'000;
    std::string text;
    for (std::uint64_t i = 0; i < kLines; ++i) text += "v 1 2 3\r";
    ObjLogicalLines lines(text);
    ObjLogicalLine line;
    std::uint64_t count = 0;
    while (lines.next(line)) ++count;
    EXPECT_EQ(count, kLines);
    EXPECT_EQ(line.line, kLines);
}

}  // namespace
}  // namespace quarn::test
