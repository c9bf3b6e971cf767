#include <QuarnKit/Formats/Obj/ObjLogicalLines.h>

#include <gmock/gmock.h>

namespace quarn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// A record whose views are copied.
struct Copy {
    std::uint64_t line;
    std::string text;
    std::string lineEnd;
    std::vector<std::string> words;
    std::string comment;
};

std::vector<Copy> recordsOf(std::string_view text) {
    std::vector<Copy> copies;
    ObjLogicalLines records(text);
    for (ObjLogicalLine record; records.next(record);)
        copies.push_back({record.line,
                          std::string(record.text),
                          std::string(record.lineEnd),
                          {record.words.begin(), record.words.end()},
                          std::string(record.comment)});
    return copies;
}

std::vector<std::string> wordsOf(std::string_view line) {
    return recordsOf(line).at(0).words;
}

TEST(ObjLogicalLines, AnEmptyTextHasNone) {
    EXPECT_THAT(recordsOf(""), IsEmpty());
}

TEST(ObjLogicalLines, EveryLineEndEndsALine) {
    const auto records = recordsOf("a\nb\r\nc\rd\r\r\n\n\ne");
    std::vector<std::string> texts;
    std::vector<std::string> ends;
    std::vector<std::uint64_t> lines;
    for (const Copy& record : records) {
        texts.push_back(record.text);
        ends.push_back(record.lineEnd);
        lines.push_back(record.line);
    }
    EXPECT_THAT(texts, ElementsAre("a", "b", "c", "d", "", "", "e"));
    EXPECT_THAT(ends, ElementsAre("\n", "\r\n", "\r", "\r\r\n", "\n", "\n", ""));
    EXPECT_THAT(lines, ElementsAre(1, 2, 3, 4, 5, 6, 7));
}

TEST(ObjLogicalLines, TextsAndLineEndsTogetherAreTheWholeText) {
    const std::string text = "v 1 \\\r\n2\n# a\\\nf 1 \\\n\\\n2\r\rg x\\\rf 1 2 3 \\\n";
    std::string together;
    for (const Copy& record : recordsOf(text)) together += record.text + record.lineEnd;
    EXPECT_EQ(together, text);
}

TEST(ObjLogicalLines, AnyWhiteSpaceSeparatesWords) {
    using namespace std::string_literals;
    EXPECT_THAT(wordsOf(" \tv\t1\v2\f3\0\x1A"s), ElementsAre("v", "1", "2", "3"));
}

TEST(ObjLogicalLines, ACommentIsNoWord) {
    const auto records = recordsOf("f 1 2 # 3 4\n#all\nf 1 2#3\nusemtl#1 a\n");
    EXPECT_THAT(records.at(0).words, ElementsAre("f", "1", "2"));
    EXPECT_EQ(records.at(0).comment, "# 3 4");
    EXPECT_THAT(records.at(1).words, IsEmpty());
    EXPECT_EQ(records.at(1).comment, "#all");
    EXPECT_THAT(records.at(2).words, ElementsAre("f", "1", "2"));
    EXPECT_EQ(records.at(2).comment, "#3");
    EXPECT_THAT(records.at(3).words, ElementsAre("usemtl#1", "a"));
}

TEST(ObjLogicalLines, ABackslashJoinsLinesOfData) {
    const auto records = recordsOf("v 1\\\n2\\\r\n\\\r3\nvt 0 0\n");
    EXPECT_THAT(records.at(0).words, ElementsAre("v", "1", "2", "3"));
    EXPECT_EQ(records.at(0).lineEnd, "\n");
    EXPECT_EQ(records.at(0).line, 1U);
    EXPECT_EQ(records.at(1).line, 5U);
}

TEST(ObjLogicalLines, ABackslashBehindANameOrCommentJoinsNothing) {
    const auto records = recordsOf("mtllib C:\\dir\\\n# C:\\\nv 1 2 3\n");
    EXPECT_THAT(records.at(0).words, ElementsAre("mtllib", "C:\\dir\\"));
    EXPECT_THAT(records.at(2).words, ElementsAre("v", "1", "2", "3"));
}

TEST(ObjLogicalLines, ABackslashThatEndsTheTextIsNoWord) {
    for (const char* end : {"\\", "\\\n", "\\\r\n", "\\\n\\"}) {
        SCOPED_TRACE(end);
        const auto records = recordsOf(std::string("f 1 2 3") + end);
        ASSERT_EQ(records.size(), 1U);
        EXPECT_THAT(records.front().words, ElementsAre("f", "1", "2", "3"));
        EXPECT_EQ(records.front().lineEnd, "");
    }
}

}  // namespace
}  // namespace quarn::test
