#include "Rows/ResultRows.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace quarn::test {
namespace {

const std::vector<tool::Column> kColumns = {{"ray"}, {"status"}, {"t"}, {"id"}, {"note"}};

TEST(ResultRows, AnArrayHasANumberForEachCell) {
    tool::ResultRows rows(tool::ResultFormat::Npy, kColumns);
    rows.setPassedCells(std::array<std::string_view, 2>{"\"7\"", "left"});
    rows.add(std::array<tool::Cell, 3>{std::int64_t{3}, std::string_view("hit"), -0.0}, tool::HasResult::Yes);
    rows.setPassedCells(std::array<std::string_view, 2>{"", "-inf"});
    rows.add(std::array<tool::Cell, 3>{std::int64_t{4}, std::string_view("miss"), tool::Cell()},
             tool::HasResult::No);
    ASSERT_EQ(rows.numbers().size(), 10U);
    EXPECT_EQ(std::vector<double>(rows.numbers().begin(), rows.numbers().begin() + 4),
              (std::vector<double>{3.0, 1.0, -0.0, 7.0}));
    EXPECT_TRUE(std::signbit(rows.numbers()[2]));
    EXPECT_EQ(rows.numbers()[6], 0.0);
    for (const std::size_t missing : {4U, 7U, 8U})
        EXPECT_TRUE(std::isnan(rows.numbers()[missing])) << missing;
    EXPECT_TRUE(std::isinf(rows.numbers()[9]));
    EXPECT_EQ(rows.rowCount(), 2U);
    EXPECT_EQ(rows.missingResultCount(), 1U);
    rows.clear();
    EXPECT_TRUE(rows.numbers().empty());
}

}  // namespace
}  // namespace quarn::test
