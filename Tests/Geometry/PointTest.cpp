#include <gtest/gtest.h>

#include <limits>

#include <QuarnScreen/Point.h>

TEST(Point, IsZeroByDefault) { EXPECT_EQ((Point<double, 3>()), (Point<double, 3>(0.0, 0.0, 0.0))); }
