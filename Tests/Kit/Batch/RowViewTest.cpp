#include <gtest/gtest.h>

#include <array>

#include <QuarnKit/Batch/RowView.h>

using quarn::RowView;

TEST(RowView, ContiguousRowsFollowEachOther) {
    std::array<double, 6> numbers = {1.0, 2.0, 3.0, 4.0, 5.0, 6.0};
    const RowView<double, 3> rows(numbers.data(), 2);
    EXPECT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows.row(1), (Point<double, 3>(4.0, 5.0, 6.0)));
    rows.set(0, {7.0, 8.0, 9.0});
    EXPECT_EQ(numbers, (std::array<double, 6>{7.0, 8.0, 9.0, 4.0, 5.0, 6.0}));
}

TEST(RowView, ColumnByColumn) {
    const std::array<double, 6> numbers = {1.0, 2.0, 3.0, 4.0, 5.0, 6.0};
    const RowView<const double, 2> rows(numbers.data(), 3, sizeof(double), 3 * sizeof(double));
    EXPECT_EQ(rows.row(0), (Point<double, 2>(1.0, 4.0)));
    EXPECT_EQ(rows.row(2), (Point<double, 2>(3.0, 6.0)));
}

TEST(RowView, BackwardsAndRepeated) {
    const std::array<double, 4> numbers = {1.0, 2.0, 3.0, 4.0};
    const std::ptrdiff_t value = sizeof(double);
    const RowView<const double, 2> backwards(numbers.data() + 2, 2, -2 * value, value);
    EXPECT_EQ(backwards.row(1), (Point<double, 2>(1.0, 2.0)));
    const RowView<const double, 2> repeated(numbers.data(), 1000, 0, value);
    EXPECT_EQ(repeated.row(999), (Point<double, 2>(1.0, 2.0)));
}

TEST(RowView, SingleValuesAreNoPoints) {
    std::array<int, 3> numbers = {1, 2, 3};
    const RowView<int, 1> rows(numbers.data(), 3);
    rows.set(2, rows.row(0) + 10);
    EXPECT_EQ(numbers[2], 11);
    EXPECT_TRUE((RowView<int, 1>()).empty());
}
