#include <QuarnKit/Plot/Mesh/PlotRegions.h>

#include <gmock/gmock.h>

#include <cmath>
#include <map>
#include <set>

#include "Support/Rng.h"

namespace quarn::test {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

using ClassOf = std::function<std::string(int, int)>;

std::vector<Shape> areasOf(int columns, int rows, const ClassOf& classOf) {
    return regionAreas(buildClassRaster(columns, rows, classOf), [](const ViewPoint& at) { return at; });
}

double areaOf(const std::vector<ViewPoint>& ring) {
    double sum = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        const ViewPoint& next = ring[(i + 1) % ring.size()];
        sum += ring[i][0] * next[1] - ring[i][1] * next[0];
    }
    return std::abs(sum) / 2;
}

// The parts of the areas of a class that contain a point.
int countAt(const std::vector<Shape>& areas, const ViewPoint& point) {
    int count = 0;
    for (const Shape& area : areas) {
        bool isIn = isInside(area.points, point);
        for (const auto& hole : area.holes) isIn = isIn && !isInside(hole, point);
        count += isIn ? 1 : 0;
    }
    return count;
}

TEST(PlotRegions, EvenSquareIsOneArea) {
    const auto areas = areasOf(50, 40, [](int /*column*/, int /*row*/) { return std::string("f3"); });
    ASSERT_THAT(areas, SizeIs(1));
    EXPECT_EQ(areas[0].styleClass, "f3");
    EXPECT_TRUE(areas[0].isArea);
    EXPECT_THAT(areas[0].holes, IsEmpty());
    // The four corners of the square are cut by half of a cell.
    EXPECT_NEAR(areaOf(areas[0].points), 2000.0, 4 * 0.125 + 1e-9);
    EXPECT_LE(areas[0].points.size(), 8U);
    EXPECT_THAT(areasOf(0, 0, [](int /*column*/, int /*row*/) { return std::string("f3"); }), IsEmpty());
    EXPECT_THAT(areasOf(9, 9, [](int /*column*/, int /*row*/) { return std::string(); }), IsEmpty());
}

TEST(PlotRegions, SideOfADiskIsSmooth) {
    const double radius = 190.0;
    const ViewPoint middle(200.0, 200.0);
    const auto areas = areasOf(400, 400, [&](int column, int row) {
        return std::string(length(ViewPoint(column + 0.5, row + 0.5) - middle) < radius ? "f" : "");
    });
    ASSERT_THAT(areas, SizeIs(1));
    const std::vector<ViewPoint>& ring = areas[0].points;
    EXPECT_LT(ring.size(), 350U) << "of 1520 steps";
    for (std::size_t i = 0; i < ring.size(); ++i) {
        ASSERT_NEAR(length(ring[i] - middle), radius, 1.0);
        // No step: a right angle between two sides would have the cosine 0.
        const ViewPoint before = normalized(ring[i] - ring[(i + ring.size() - 1) % ring.size()]);
        const ViewPoint after = normalized(ring[(i + 1) % ring.size()] - ring[i]);
        ASSERT_GT(dot(before, after), 0.6);
    }
}

TEST(PlotRegions, HoleOfARegionIsFree) {
    const auto areas = areasOf(30, 30, [](int column, int row) {
        return std::string(column > 10 && column < 20 && row > 10 && row < 20 ? "" : "f");
    });
    ASSERT_THAT(areas, SizeIs(1));
    ASSERT_THAT(areas[0].holes, SizeIs(1));
    // Each side may be off by half of a cell at one end.
    EXPECT_NEAR(areaOf(areas[0].holes[0]), 81.0, 4 * 9 * 0.25);
}

TEST(PlotRegions, LinesThatAreOneCellWideAreKept) {
    const auto areas =
        areasOf(40, 5, [](int /*column*/, int row) { return std::string(row == 2 ? "f" : ""); });
    ASSERT_THAT(areas, SizeIs(1));
    EXPECT_NEAR(areaOf(areas[0].points), 39.5, 0.6);
    EXPECT_THAT(
        areasOf(3, 3, [](int column, int row) { return std::string(column == 1 && row == 1 ? "f" : ""); }),
        SizeIs(1));
}

// Blocks of 8 by 8 cells: the middle of each is in one area of its class, and in no other one.
TEST(PlotRegions, AreasCoverEachBlockOnceInItsClass) {
    for (int i = 0; i < seedCount(100); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        std::map<std::pair<int, int>, std::string> blocks;
        for (int row = 0; row < 6; ++row)
            for (int column = 0; column < 5; ++column)
                blocks[{column, row}] =
                    std::string("abc").substr(static_cast<std::size_t>(rng.integer(0, 3)), 1);
        const auto areas = areasOf(40, 48, [&](int column, int row) {
            return blocks[{column / 8, row / 8}];
        });
        for (const auto& [place, styleClass] : blocks) {
            const ViewPoint middle(place.first * 8 + 4.01, place.second * 8 + 4.02);
            std::map<std::string, std::vector<Shape>> byClass;
            for (const Shape& area : areas) byClass[area.styleClass].push_back(area);
            for (const auto& [name, shapes] : byClass)
                ASSERT_EQ(countAt(shapes, middle), name == styleClass ? 1 : 0);
        }
    }
}

TEST(PlotRegions, NeighborsHaveTheSameSide) {
    // A wavy side between two regions.
    const auto areas = areasOf(200, 60, [](int column, int row) {
        return std::string(row + 0.5 < 30.0 + 15.0 * std::sin(column * 0.05) ? "a" : "b");
    });
    ASSERT_THAT(areas, SizeIs(2));
    const auto pointsInside = [](const Shape& area) {
        std::set<ViewPoint> points;
        for (const ViewPoint& point : area.points)
            if (point[0] > 1.0 && point[0] < 199.0 && point[1] > 1.0 && point[1] < 59.0) points.insert(point);
        return points;
    };
    EXPECT_GT(pointsInside(areas[0]).size(), 10U);
    EXPECT_EQ(pointsInside(areas[0]), pointsInside(areas[1]));
}

}  // namespace
}  // namespace quarn::test
