#include "Rows/CsvReader.h"

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
    tool::CsvReader reader(InputStream(file.path(), "a CSV file"), {"u", "v"});
    Rows rows;
    std::vector<double> row;
    while (reader.next(row)) rows.push_back(row);
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

TEST(Csv, AnEmptyInputHasNoRows) {
    EXPECT_TRUE(rowsOf("").empty());
    EXPECT_TRUE(rowsOf("\n").empty());
    EXPECT_TRUE(rowsOf("u,v\n").empty());
    EXPECT_TRUE(rowsOf("\n\n# only a comment").empty());
}

TEST(Csv, TheLastLineNeedsNoLineFeed) {
    EXPECT_THAT(rowsOf("1,2\n3,4"), ElementsAre(ElementsAre(1, 2), ElementsAre(3, 4)));
}

TEST(Csv, AFirstLineWhoseFirstCellIsNoNumberIsAHeader) {
    EXPECT_THAT(rowsOf("u,v\n1,2\n"), ElementsAre(ElementsAre(1, 2)));
    EXPECT_THAT(rowsOf("# before\n\nname\n1,2\n"), ElementsAre(ElementsAre(1, 2)));
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

TEST(Csv, BlanksAroundNumbersAreAccepted) {
    EXPECT_THAT(rowsOf(" 1 ,\t2 \n"), ElementsAre(ElementsAre(1, 2)));
}

TEST(Csv, AWrongCountOfNumbersNamesTheLineAndTheColumns) {
    const ErrorDetails error = errorOf("u,v\n1,2\n\n3,4,5\n");
    EXPECT_EQ(error.line, 4U);
    EXPECT_EQ(error.found, "found 3 numbers");
    EXPECT_EQ(error.expected, "2 (u,v)");
    EXPECT_EQ(errorOf("1\n").found, "found 1 number");
    EXPECT_EQ(errorOf("1,2,\n").found, "found 3 numbers");
}

TEST(Csv, ACellThatIsNoNumberIsQuotedAndCut) {
    EXPECT_EQ(errorOf("1,x\n").found, "found \"x\"");
    EXPECT_EQ(errorOf("1,\n").found, "found \"\"");
    EXPECT_EQ(errorOf("1,2;3\n").expected, "a number for v (u,v)");
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
