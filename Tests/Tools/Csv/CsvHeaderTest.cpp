#include <gmock/gmock.h>

#include <QuarnKit/Base/Error.h>
#include "Rows/Input/RowReader.h"
#include "Support/Rng.h"
#include "Support/TemporaryFile.h"

namespace quarn::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using Numbers = std::vector<double>;
using Texts = std::vector<std::string>;

struct Contents {
    std::vector<Numbers> numbers;
    std::vector<Texts> passedCells;
    Texts passedNames;
};

Contents contentsOf(const std::string& text, const tool::InputColumns& columns,
                    const Texts& namesInUse = {}) {
    const TemporaryFile file(text);
    tool::RowReader reader(InputStream(file.path(), "a CSV file"), columns, "m");
    Contents contents;
    for (const tool::PassedColumn& column : reader.input().passColumns(namesInUse))
        contents.passedNames.push_back(column.name + (column.hasUnit ? "[]" : ""));
    while (reader.next()) {
        contents.numbers.emplace_back(reader.numbers().begin(), reader.numbers().end());
        contents.passedCells.emplace_back(reader.passedCells().begin(), reader.passedCells().end());
    }
    return contents;
}

Numbers numbersOf(const std::string& text, const tool::InputColumns& columns) {
    return contentsOf(text, columns).numbers.front();
}

ErrorDetails errorOf(const std::string& text, const tool::InputColumns& columns) {
    try {
        static_cast<void>(contentsOf(text, columns));
    } catch (const Error& error) {
        return error.details();
    }
    ADD_FAILURE() << "nothing was thrown for " << text;
    return {};
}

TEST(CsvHeader, ColumnsAreFoundByNameInAnyOrder) {
    EXPECT_THAT(numbersOf("v,u\n1,2", tool::uvInput()), ElementsAre(2, 1));
    EXPECT_THAT(numbersOf("z,y,x\n1,2,3", tool::positionInput()), ElementsAre(3, 2, 1));
    EXPECT_THAT(numbersOf("toX,toY,toZ,fromX,fromY,fromZ\n1,2,3,4,5,6", tool::rayInput()),
                ElementsAre(4, 5, 6, 1, 2, 3));
    EXPECT_THAT(numbersOf("dz,dy,dx,z,y,x\n1,2,3,4,5,6", tool::lineInput()), ElementsAre(6, 5, 4, 3, 2, 1));
}

TEST(CsvHeader, NamesMayDifferByCaseBlanksAndUnits) {
    EXPECT_THAT(numbersOf("V , U\n1,2", tool::uvInput()), ElementsAre(2, 1));
    EXPECT_THAT(numbersOf("Z[m],X (m),Y\n1,2,3", tool::positionInput()), ElementsAre(2, 3, 1));
    EXPECT_THAT(numbersOf("Pos_X;pos.y;pos z\n1;2;3", tool::positionInput()), ElementsAre(1, 2, 3));
}

TEST(CsvHeader, ARayIsTwoPositionsOrAPositionAndADirection) {
    for (const char* names : {"dX,dY,dZ", "dirX,dirY,dirZ", "directionX,directionY,directionZ"})
        EXPECT_THAT(
            numbersOf("fromX,fromY,fromZ," + std::string(names) + "\n1,2,3,10,20,30", tool::rayInput()),
            ElementsAre(1, 2, 3, 11, 22, 33));
    EXPECT_THAT(numbersOf("x,y,z,toX,toY,toZ\n1,2,3,10,20,30", tool::lineInput()),
                ElementsAre(1, 2, 3, 9, 18, 27));
    EXPECT_THAT(numbersOf("originX,originY,originZ,targetX,targetY,targetZ\n1,2,3,4,5,6", tool::rayInput()),
                ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST(CsvHeader, TheNamesOfARayComeBeforeThoseOfItsHit) {
    EXPECT_THAT(numbersOf("x,y,z,fromX,fromY,fromZ,toX,toY,toZ\n7,8,9,1,2,3,4,5,6", tool::rayInput()),
                ElementsAre(1, 2, 3, 4, 5, 6));
}

TEST(CsvHeader, AnErrorListsTheKnownNames) {
    EXPECT_EQ(errorOf("a,b,c\n1,2,3", tool::positionInput()).expected,
              "x,y,z (or posX.., positionX..), or rows of numbers");
    const ErrorDetails error = errorOf("fromX,fromY,fromZ,toX,toY\n1,2,3,4,5", tool::rayInput());
    EXPECT_EQ(error.found, "found the columns \"fromX,fromY,fromZ,toX,toY\"");
    EXPECT_EQ(error.expected,
              "fromX,fromY,fromZ (or originX.., x.., posX.., positionX..) with toX,toY,toZ (or targetX..) or "
              "dX,dY,dZ (or dirX.., directionX..), or rows of numbers");
}

TEST(CsvHeader, AnotherUnitIsAnError) {
    const ErrorDetails error = errorOf("x[mm],y[mm],z[mm]\n1,2,3", tool::positionInput());
    EXPECT_EQ(error.found, "found the column \"x[mm]\"");
    EXPECT_EQ(error.expected, "lengths in m, or the option --unit mm");
    EXPECT_EQ(error.line, 1U);
}

TEST(CsvHeader, TwoColumnsOfOneNameAreAnError) {
    EXPECT_EQ(errorOf("u,v,U\n1,2,3", tool::uvInput()).found, "found two columns named \"u\"");
    EXPECT_EQ(errorOf("u,v,id,id\n1,2,3,4", tool::uvInput()).found, "found two columns named \"id\"");
    EXPECT_THAT(contentsOf("u,v,Id,id\n1,2,3,4", tool::uvInput()).passedCells, ElementsAre(SizeIs(4)));
}

TEST(CsvHeader, FurtherColumnsArePassedOn) {
    const Contents contents =
        contentsOf("id,v,note,u\ncam 1,1,,2\n\"a,\"\"b\"\"\",3,x,4\n", tool::uvInput(), {"u", "v"});
    EXPECT_THAT(contents.numbers, ElementsAre(ElementsAre(2, 1), ElementsAre(4, 3)));
    EXPECT_EQ(contents.passedNames, (Texts{"id", "note"}));
    EXPECT_THAT(contents.passedCells, ElementsAre(Texts{"cam 1", ""}, Texts{"\"a,\"\"b\"\"\"", "x"}));
}

TEST(CsvHeader, ColumnsWithoutANameAreNotPassedOn) {
    const Contents contents = contentsOf(",u,v,\n0,1,2,\n", tool::uvInput(), {"u", "v"});
    EXPECT_THAT(contents.numbers, ElementsAre(ElementsAre(1, 2)));
    EXPECT_THAT(contents.passedNames, IsEmpty());
}

TEST(CsvHeader, ColumnsOfTheResultAreNotPassedOn) {
    const Texts hit = {"ray", "status", "x", "y", "z", "t"};
    EXPECT_EQ(contentsOf("Ray,x[m],t (s),T,fromX[m],fromY,fromZ,toX,toY,toZ\n1,2,3,4,5,6,7,8,9,10",
                         tool::rayInput(), hit)
                  .passedNames,
              (Texts{"t (s)", "fromX[]", "fromY", "fromZ", "toX", "toY", "toZ"}));
}

TEST(CsvHeader, AnOriginWithTheNamesOfTheHitIsPassedOnUnderItsOwn) {
    const Contents contents =
        contentsOf("x,y,z,dx,dy,dz\n1,2,3,4,5,6", tool::lineInput(), {"line", "x", "y", "z"});
    EXPECT_EQ(contents.passedNames, (Texts{"fromX", "fromY", "fromZ", "dx", "dy", "dz"}));
    EXPECT_THAT(contents.passedCells, ElementsAre(Texts{"1", "2", "3", "4", "5", "6"}));
}

TEST(CsvHeader, WithoutAHeaderNothingIsPassedOn) {
    EXPECT_THAT(contentsOf("1,2\n", tool::uvInput()).passedCells, ElementsAre(IsEmpty()));
}

TEST(CsvHeader, ARowWhoseNumbersAreAllEmptyHasNone) {
    const Contents contents = contentsOf("u,v,id\n,,a\n1,2,b\n, \"\",c\n", tool::uvInput(), {"u", "v"});
    EXPECT_THAT(contents.numbers, ElementsAre(IsEmpty(), ElementsAre(1, 2), IsEmpty()));
    EXPECT_THAT(contents.passedCells, ElementsAre(Texts{"a"}, Texts{"b"}, Texts{"c"}));
    const ErrorDetails error = errorOf("u,v,id\n1,2,a\n1,,b\n", tool::uvInput());
    EXPECT_EQ(error.found, "found \"\"");
    EXPECT_EQ(error.expected, "a number for v (u,v,id)");
    EXPECT_EQ(error.line, 3U);
}

TEST(CsvHeader, RowsHaveAsManyCellsAsTheHeader) {
    const ErrorDetails error = errorOf("u,v,id\n1,2\n", tool::uvInput());
    EXPECT_EQ(error.found, "found 2 cells");
    EXPECT_EQ(error.expected, "3 (u,v,id)");
    EXPECT_EQ(errorOf("u,v,id\n1,2,a,b\n", tool::uvInput()).found, "found 4 cells");
}

TEST(CsvHeader, CellsInQuotesMayContainLineEnds) {
    const Contents contents =
        contentsOf("id,u,v\n\"a\nb\",1,2\n# a \"remark\nc,3,4\n\"d\r\n\n\",5,6", tool::uvInput());
    EXPECT_THAT(contents.numbers, ElementsAre(ElementsAre(1, 2), ElementsAre(3, 4), ElementsAre(5, 6)));
    EXPECT_EQ(contents.passedCells[0][0], "\"a\nb\"");
    EXPECT_EQ(contents.passedCells[2][0], "\"d\r\n\n\"");
    EXPECT_EQ(errorOf("id,u,v\n\"a\nb\",1,2\nc,x,4\n", tool::uvInput()).line, 4U);
}

TEST(CsvHeader, AQuoteThatDoesNotEndIsAnError) {
    const ErrorDetails error = errorOf("id,u,v\na,1,2\n\"b,3,4\nc,5,6\n", tool::uvInput());
    EXPECT_EQ(error.expected, "a quote at the end of the cell");
    EXPECT_EQ(error.line, 3U);
    EXPECT_EQ(errorOf("id,u,v\n\"a\"b,1,2\n", tool::uvInput()).expected, "nothing after the closing quote");
}

TEST(CsvHeader, QuotesOfAnySizeMeetTheEdgesOfTheReadBlocks) {
    for (int i = 0; i < seedCount(50); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::string text = "id,u,v\n";
        std::vector<Numbers> numbers;
        while (text.size() < 200000) {
            const int count = static_cast<int>(numbers.size());
            std::string id = "\"";
            for (int k = rng.integer(0, i % 2 == 0 ? 10 : 3000); k > 0; --k)
                id += k % 3 == 0 ? "\"\"" : k % 3 == 1 ? "\n" : ",";
            text +=
                (count % 5 == 0 ? std::string("plain") : id + "\"") + "," + std::to_string(count) + ",1\n";
            numbers.push_back({static_cast<double>(count), 1.0});
        }
        ASSERT_EQ(contentsOf(text, tool::uvInput()).numbers, numbers);
    }
}

}  // namespace
}  // namespace quarn::test
