#include "Csv/RowCells.h"

#include <gmock/gmock.h>

#include <QuarnKit/Base/Error.h>

namespace quarn::test {
namespace {

using ::testing::ElementsAre;

TEST(RowCells, CellsAreSeparatedAndTrimmed) {
    EXPECT_THAT(tool::cellsOf("a, b ,,c", ','), ElementsAre("a", "b", "", "c"));
    EXPECT_THAT(tool::cellsOf("a;b,c;", ';'), ElementsAre("a", "b,c", ""));
    EXPECT_THAT(tool::cellsOf("a\t\tb c", '\t'), ElementsAre("a", "", "b c"));
    EXPECT_THAT(tool::cellsOf("a  b \t c", tool::kBlankSeparator), ElementsAre("a", "b", "c"));
    EXPECT_THAT(tool::cellsOf("a", ','), ElementsAre("a"));
}

TEST(RowCells, QuotesContainSeparatorsAndDoubledQuotes) {
    EXPECT_THAT(tool::cellsOf(R"("a,b", "c""d" ,e"f,"")", ','),
                ElementsAre(R"("a,b")", R"("c""d")", R"(e"f)", R"("")"));
    EXPECT_THAT(tool::cellsOf(R"("a b" c)", tool::kBlankSeparator), ElementsAre(R"("a b")", "c"));
    EXPECT_THROW(static_cast<void>(tool::cellsOf(R"("a""b)", ',')), Error);
    EXPECT_THROW(static_cast<void>(tool::cellsOf(R"(")", ',')), Error);
}

TEST(RowCells, TheTextOfACellHasNoQuotes) {
    EXPECT_EQ(tool::textOf(R"("c""d,""")"), R"(c"d,")");
    EXPECT_EQ(tool::textOf(R"(c"d)"), R"(c"d)");
    EXPECT_EQ(tool::textOf(R"("")"), "");
}

TEST(RowCells, ACellKeepsItsTextInARowWithCommas) {
    for (const auto& [cell, expected] : {std::pair("a b", "a b"),
                                         {"a,b", "\"a,b\""},
                                         {"\"a;b\"", "\"a;b\""},
                                         {"a\"b", "\"a\"\"b\""},
                                         {"", ""}}) {
        std::string row;
        tool::appendCommaCells(row, std::vector<std::string_view>{cell});
        EXPECT_EQ(row, "," + std::string(expected));
    }
}

TEST(RowCells, CellsOfARowKeepTheirTextInARowWithCommas) {
    const auto copyOf = [](std::string_view row, char separator) {
        std::string copy;
        tool::appendCommaCells(copy, tool::cellsOf(row, separator));
        return copy;
    };
    EXPECT_EQ(copyOf("1,2,\"a,b\",c\"d,,3", ','), ",1,2,\"a,b\",c\"d,,3");
    EXPECT_EQ(copyOf("1, 2 ,3", ','), ",1,2,3");
    EXPECT_EQ(copyOf("1,5;2;a b;\"c;d\"", ';'), ",\"1,5\",2,a b,\"c;d\"");
    std::string copy;
    const std::string_view row = "1,2,3,4";
    tool::appendCommaCells(copy, std::vector{row.substr(0, 1), row.substr(4, 1), row.substr(6, 1)});
    EXPECT_EQ(copy, ",1,3,4");
}

}  // namespace
}  // namespace quarn::test
