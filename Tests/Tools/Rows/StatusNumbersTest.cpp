#include "Rows/StatusNumbers.h"

#include <gtest/gtest.h>

#include <cmath>

#include "Rows/ResultRows.h"

namespace quarn::test {
namespace {

TEST(StatusNumbers, RowsWithAResultHaveNumbersAboveZero) {
    for (const char* status : {"hit", "found", "on_screen"}) EXPECT_EQ(tool::statusNumber(status), 1.0);
    EXPECT_EQ(tool::statusNumber("extrapolated"), 2.0);
    EXPECT_EQ(tool::statusNumber("boundary"), 3.0);
}

TEST(StatusNumbers, RowsWithoutResultHaveOtherNumbers) {
    for (const char* status : {"miss", "none", "outside"}) EXPECT_EQ(tool::statusNumber(status), 0.0);
    EXPECT_EQ(tool::statusNumber(tool::kEmptyRow), -1.0);
    EXPECT_TRUE(std::isnan(tool::statusNumber("other")));
}

}  // namespace
}  // namespace quarn::test
