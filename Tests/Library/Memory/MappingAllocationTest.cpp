#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include <QuarnScreen/FlatScreen.h>

#include "Library/Memory/CountedAllocations.h"
#include "Support/Rng.h"

using quarn::test::allocationCount;
using quarn::test::Rng;

namespace {

constexpr int kQueries = 1000;

std::vector<Point<double, 3>> makePositions() {
    std::vector<Point<double, 3>> positions;
    for (int i = 0; i < kQueries; ++i) {
        Rng rng(i);
        positions.push_back(rng.point(-5.0, 5.0));
    }
    return positions;
}

}  // namespace

TEST(CountedAllocations, SeeWhatIsAllocated) {
    const long before = allocationCount();
    const auto number = std::make_unique<int>(1);
    const std::vector<double> numbers(100);
    EXPECT_EQ(allocationCount(), before + 2) << *number << numbers[0];
}

TEST(FlatScreen, MapsPositionsToUVWithoutAllocating) {
    const FlatScreen wall(4.0, 3.0);
    const IScreenGeometry& screen = wall;
    const auto positions = makePositions();
    double sum = 0.0;
    const long before = allocationCount();
    for (const auto& position : positions)
        for (const bool extrapolate : {false, true}) sum += screen.mapInto2D(position, extrapolate)[0];
    EXPECT_EQ(allocationCount(), before) << sum;
}

TEST(FlatScreen, MapsUVToPositionsWithoutAllocating) {
    const FlatScreen wall(4.0, 3.0);
    const IScreenGeometry& screen = wall;
    const auto positions = makePositions();
    int onScreen = 0;
    const long before = allocationCount();
    for (const auto& position : positions) {
        Point<double, 3> result;
        for (const bool extrapolate : {false, true})
            onScreen += static_cast<int>(screen.mapInto3D({position[0], position[1]}, result, extrapolate));
    }
    EXPECT_EQ(allocationCount(), before) << onScreen;
}
