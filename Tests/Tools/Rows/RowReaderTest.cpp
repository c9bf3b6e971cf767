#include "Rows/Input/RowReader.h"

#include <gmock/gmock.h>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/NumberText.h>
#include "Support/Rng.h"
#include "Support/TemporaryFile.h"

namespace quarn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Rows = std::vector<std::vector<double>>;

Rows rowsOf(const std::string& text) {
    const TemporaryFile file(text);
    tool::RowReader reader(InputStream(file.path(), "a CSV file"), tool::uvInput(), "m");
    Rows rows;
    while (reader.next()) rows.emplace_back(reader.numbers().begin(), reader.numbers().end());
    return rows;
}

ErrorDetails errorOf(const std::string& text) {
    try {
        static_cast<void>(rowsOf(text));
    } catch (const Error& error) {
        return error.details();
    }
    ADD_FAILURE() << "nothing was thrown for " << text;
    return {};
}

TEST(Csv, AnInputWithoutRowsIsAnError) {
    for (const char* text : {"", "\n", "u,v\n", "u,v", "\n\n# only a comment", "\xEF\xBB\xBF"}) {
        const ErrorDetails error = errorOf(text);
        EXPECT_EQ(error.found, "found no rows");
        EXPECT_EQ(error.expected, "rows of u,v");
        EXPECT_EQ(error.line, 0U);
    }
}

TEST(Csv, TheLastLineNeedsNoLineFeed) {
    EXPECT_THAT(rowsOf("1,2\n3,4"), ElementsAre(ElementsAre(1, 2), ElementsAre(3, 4)));
}

TEST(Csv, AFirstLineOfNamesIsAHeader) {
    EXPECT_THAT(rowsOf("u,v\n1,2\n"), ElementsAre(ElementsAre(1, 2)));
    EXPECT_THAT(rowsOf("# before\n\nv,u\n1,2\n"), ElementsAre(ElementsAre(2, 1)));
}

TEST(Csv, AFirstLineWithANumberIsARow) {
    EXPECT_EQ(errorOf("O.5,0.5\n0.5,0.5\n").found, "found \"O.5\"");
    EXPECT_EQ(errorOf("O.5,0.5\n0.5,0.5\n").expected, "a number for u (u,v)");
    EXPECT_EQ(errorOf("u,0.5\n").line, 1U);
    EXPECT_EQ(errorOf("# a\n0.5,v\n").line, 2U);
}

TEST(Csv, AHeaderWithoutTheKnownNamesIsAnError) {
    for (const char* header : {"a,b", "O.5,O.5", "u", "u,w,x", ",,", "\"u,v\""}) {
        const ErrorDetails error = errorOf("\n" + std::string(header) + "\n1,2\n");
        EXPECT_EQ(error.line, 2U);
        EXPECT_THAT(error.found, ::testing::StartsWith("found the columns \""));
        EXPECT_EQ(error.expected, "u,v, or rows of numbers");
    }
    EXPECT_EQ(errorOf("<!DOCTYPE html>\n<p>1,2\n").found, "found a web page or XML");
    EXPECT_EQ(errorOf("\xFF\xFEu\0,\0").found, "found UTF-16 text");
}

TEST(Csv, ASecondLineIsNoHeader) {
    EXPECT_EQ(errorOf("1,2\nu,v\n").line, 2U);
    EXPECT_EQ(errorOf("u,v\nu,v\n").line, 2U);
}

TEST(Csv, NaNAndInfinityInTheFirstCellMakeNoHeader) {
    EXPECT_EQ(rowsOf("nan,1\n").size(), 1U);
    EXPECT_EQ(rowsOf("-inf,1\n").size(), 1U);
}

TEST(Csv, CommentsAndBlankLinesAreSkippedAnywhere) {
    EXPECT_THAT(rowsOf("1,2\n\n  \n# 3,4\n  # 5,6\n7,8\n"),
                ElementsAre(ElementsAre(1, 2), ElementsAre(7, 8)));
}

TEST(Csv, ByteOrderMarkAndCarriageReturnsAreAccepted) {
    EXPECT_THAT(rowsOf("\xEF\xBB\xBF"
                       "1,2\r\n3,4\r\n"),
                ElementsAre(ElementsAre(1, 2), ElementsAre(3, 4)));
    EXPECT_THAT(rowsOf("\xEF\xBB\xBFu,v\r\n3,4\r\n"), ElementsAre(ElementsAre(3, 4)));
}

TEST(Csv, CarriageReturnsAloneEndLines) {
    EXPECT_THAT(rowsOf("u,v\r1,2\r\r# 5,6\r3,4"), ElementsAre(ElementsAre(1, 2), ElementsAre(3, 4)));
    EXPECT_THAT(rowsOf("1,2\r3,4\r"), ElementsAre(ElementsAre(1, 2), ElementsAre(3, 4)));
    EXPECT_EQ(errorOf("1,2\r\r3,x\r").line, 3U);
    EXPECT_EQ(errorOf("1,2\n3,4\r5,6\n").line, 2U);
}

TEST(Csv, SemicolonsTabsAndBlanksSeparateCells) {
    for (const char* text :
         {"1;2\n3;4\n", "v;u\n2;1\n4;3\n", "1\t2\n3\t4\n", "v\tu\n2\t1\n4\t3\n", "1 2\n3   4\n",
          " v u \n 2 1 \n4\t3\n", "1 ; 2\n3;\t4\n", "1 \t 2\n3\t 4\n", "1 ,\t2\n3,\t4\n"})
        EXPECT_THAT(rowsOf(text), ElementsAre(ElementsAre(1, 2), ElementsAre(3, 4))) << text;
    EXPECT_EQ(errorOf("1;2\n3,4;5;6\n").line, 2U);
}

TEST(Csv, DecimalCommasAreNamedWithTheirRemedy) {
    for (const char* text : {"0,5;0,5\n", "u;v\n0,5;0,5\n", "0,5\t0,5\n", "0,5 0,5\n", "1;2\n1;0,5\n",
                             "u\tv\n1\t-0,5e3\n", "0.5;0,5\n", "u;v\n1;\"0,5\"\n"}) {
        const ErrorDetails error = errorOf(text);
        EXPECT_THAT(error.found, ::testing::StartsWith("found decimal commas in \"")) << text;
        EXPECT_EQ(error.expected, "decimal points (the command tr , . converts them)");
    }
    EXPECT_EQ(errorOf("0,5,0,5\n").found, "found 4 numbers");
}

TEST(Csv, NumbersMayBeInQuotes) {
    EXPECT_THAT(rowsOf("\"u\",\"v\"\n\"1\", \" 2 \"\n3,\"4\"\n"),
                ElementsAre(ElementsAre(1, 2), ElementsAre(3, 4)));
    EXPECT_THAT(rowsOf("\"1\",\"2\"\n"), ElementsAre(ElementsAre(1, 2)));
}

TEST(Csv, BlanksAroundNumbersAreAccepted) {
    EXPECT_THAT(rowsOf(" 1 ,\t2 \n"), ElementsAre(ElementsAre(1, 2)));
}

TEST(Csv, AWrongCountOfNumbersNamesTheLineAndTheColumns) {
    const ErrorDetails error = errorOf("u,v\n1,2\n\n3,4,5\n");
    EXPECT_EQ(error.line, 4U);
    EXPECT_EQ(error.found, "found 3 cells");
    EXPECT_EQ(error.expected, "2 (u,v)");
    EXPECT_EQ(errorOf("1,2\n3,4,5\n").found, "found 3 numbers");
    EXPECT_EQ(errorOf("1\n").found, "found 1 number");
    EXPECT_EQ(errorOf("1,2,\n").found, "found 3 numbers");
}

TEST(Csv, ACellThatIsNoNumberIsQuotedAndCut) {
    EXPECT_EQ(errorOf("1,x\n").found, "found \"x\"");
    EXPECT_EQ(errorOf("1,\n").found, "found \"\"");
    EXPECT_THAT(errorOf("1," + std::string(100000, 'x')).found, ::testing::SizeIs(::testing::Lt(60U)));
}

TEST(Csv, AnEndlessLineIsRefused) {
    EXPECT_THAT(errorOf("1,2\n" + std::string(1100000, '1')).found, HasSubstr("a line of more than"));
    EXPECT_EQ(errorOf("1,2\n" + std::string(1100000, '1')).line, 2U);
}

TEST(Csv, LinesOfAnyLengthMeetTheEdgesOfTheReadBlocks) {
    for (int i = 0; i < seedCount(200); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::string text;
        Rows expected;
        while (text.size() < 70000) {
            const double number = rng.spread();
            text += std::string(static_cast<std::size_t>(rng.integer(0, 3000)), ' ') + numberText(number) +
                    ",1\n";
            expected.push_back({number, 1.0});
        }
        ASSERT_EQ(rowsOf(text), expected);
    }
}

}  // namespace
}  // namespace quarn::test
