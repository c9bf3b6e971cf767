#include "PlotRegions.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <map>
#include <utility>

#include "PlotLines.h"

namespace quarn {

namespace {

// Maximum distance in cells between a smooth side and the middles of the steps. It keeps regions
// that are a cell wide; the steps of a straight line deviate by half of a cell at most.
constexpr double kTolerance = 0.49;

using Line = std::vector<ViewPoint>;

// The sides of a cell are the bottom, the right, the top and the left one, counterclockwise.
constexpr std::size_t kSides = 4;
constexpr std::array<std::array<int, 2>, kSides> kNeighbors = {{{0, -1}, {1, 0}, {0, 1}, {-1, 0}}};
constexpr std::array<std::array<int, 2>, kSides> kFirstCorners = {{{0, 0}, {1, 0}, {1, 1}, {0, 1}}};

constexpr std::size_t turned(std::size_t side, std::size_t quarters) {
    return (side + quarters) % kSides;
}

struct Cell {
    int column;
    int row;

    [[nodiscard]] Cell neighbor(std::size_t side) const {
        return {column + kNeighbors.at(side)[0], row + kNeighbors.at(side)[1]};
    }
};

struct Side {
    Cell cell;
    std::size_t side;

    [[nodiscard]] ViewPoint start() const {
        const auto& corner = kFirstCorners.at(side);
        return {static_cast<double>(cell.column + corner[0]), static_cast<double>(cell.row + corner[1])};
    }
    [[nodiscard]] ViewPoint middle() const {
        const auto& to = kFirstCorners.at(turned(side, 1));
        return (start() + ViewPoint(cell.column + to[0], cell.row + to[1])) * 0.5;
    }
};

bool isBefore(const Line& a, const Line& b) {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end());
}

// The result does not depend on the direction, so that two regions simplify their common side
// alike.
Line simplified(const Line& line) {
    const Line reversed(line.rbegin(), line.rend());
    if (!isBefore(reversed, line)) return simplifyLine(line, kTolerance);
    const Line result = simplifyLine(reversed, kTolerance);
    return {result.rbegin(), result.rend()};
}

class RegionFinder {
public:
    explicit RegionFinder(const ClassRaster& classRaster)
        : raster(classRaster), regions(raster.cells.size()), isVisited(raster.cells.size() * kSides) {}

    std::vector<Shape> areas();

private:
    [[nodiscard]] bool isInside(const Cell& cell) const {
        return cell.column >= 0 && cell.row >= 0 && cell.column < raster.columns && cell.row < raster.rows;
    }
    [[nodiscard]] std::size_t indexOf(const Cell& cell) const {
        return static_cast<std::size_t>(cell.row) * static_cast<std::size_t>(raster.columns) +
               static_cast<std::size_t>(cell.column);
    }
    // Returns 0 for an empty cell or one outside of the raster.
    [[nodiscard]] std::uint32_t regionOf(const Cell& cell) const {
        return isInside(cell) ? regions[indexOf(cell)] : 0;
    }
    [[nodiscard]] bool isBoundary(const Side& side) const {
        return regionOf(side.cell) != regionOf(side.cell.neighbor(side.side));
    }
    void findRegions();
    void fill(const Cell& first, std::uint32_t region);
    [[nodiscard]] Side next(const Side& side) const;
    [[nodiscard]] std::vector<Side> ringFrom(const Side& first);
    [[nodiscard]] bool isJunction(const ViewPoint& corner) const;
    [[nodiscard]] Line smoothRing(const std::vector<Side>& ring) const;

    const ClassRaster& raster;
    std::vector<std::uint32_t> regions;      // by cell, from 1; 0 for an empty cell
    std::vector<std::size_t> regionClasses;  // by region
    std::vector<bool> isVisited;             // by cell and side
};

void RegionFinder::findRegions() {
    regionClasses = {0};
    for (int row = 0; row < raster.rows; ++row)
        for (int column = 0; column < raster.columns; ++column) {
            const std::size_t index = indexOf({column, row});
            if (raster.cells[index] == 0 || regions[index] != 0) continue;
            fill({column, row}, static_cast<std::uint32_t>(regionClasses.size()));
            regionClasses.push_back(raster.cells[index]);
        }
}

void RegionFinder::fill(const Cell& first, std::uint32_t region) {
    const std::size_t ownClass = raster.cells[indexOf(first)];
    regions[indexOf(first)] = region;
    std::vector<Cell> open = {first};
    while (!open.empty()) {
        const Cell cell = open.back();
        open.pop_back();
        for (std::size_t side = 0; side < kSides; ++side) {
            const Cell neighbor = cell.neighbor(side);
            if (!isInside(neighbor)) continue;
            const std::size_t index = indexOf(neighbor);
            if (raster.cells[index] != ownClass || regions[index] != 0) continue;
            regions[index] = region;
            open.push_back(neighbor);
        }
    }
}

// Cells that share only a corner are not connected there.
Side RegionFinder::next(const Side& side) const {
    const std::size_t leftwards = turned(side.side, 1);
    if (const Side left{side.cell, leftwards}; isBoundary(left)) return left;
    const Side ahead{side.cell.neighbor(leftwards), side.side};
    if (isBoundary(ahead)) return ahead;
    return {ahead.cell.neighbor(side.side), turned(side.side, kSides - 1)};
}

std::vector<Side> RegionFinder::ringFrom(const Side& first) {
    std::vector<Side> ring;
    for (Side side = first; !isVisited[indexOf(side.cell) * kSides + side.side]; side = next(side)) {
        isVisited[indexOf(side.cell) * kSides + side.side] = true;
        ring.push_back(side);
    }
    return ring;
}

// True for a corner of cells at which more than two sides between regions meet.
bool RegionFinder::isJunction(const ViewPoint& corner) const {
    const int column = static_cast<int>(corner[0]);
    const int row = static_cast<int>(corner[1]);
    const std::array<std::uint32_t, kSides> around = {regionOf({column, row}), regionOf({column - 1, row}),
                                                      regionOf({column - 1, row - 1}),
                                                      regionOf({column, row - 1})};
    int sides = 0;
    for (std::size_t i = 0; i < kSides; ++i) sides += around.at(i) != around.at(turned(i, 1)) ? 1 : 0;
    return sides > 2;
}

Line RegionFinder::smoothRing(const std::vector<Side>& ring) const {
    const auto junction =
        std::find_if(ring.begin(), ring.end(), [&](const Side& side) { return isJunction(side.start()); });
    // A ring without junctions starts at its first middle, which does not depend on the region.
    const auto start = junction != ring.end()
                           ? junction
                           : std::min_element(ring.begin(), ring.end(), [](const Side& a, const Side& b) {
                                 return a.middle() < b.middle();
                             });
    std::vector<Side> sides(start, ring.end());
    sides.insert(sides.end(), ring.begin(), start);

    Line result;
    Line part;
    const auto finishPart = [&](const ViewPoint& end) {
        part.push_back(end);
        const Line smooth = simplified(part);
        result.insert(result.end(), smooth.begin(), smooth.end() - 1);
        part = {end};
    };
    for (const Side& side : sides) {
        if (isJunction(side.start())) {
            if (part.empty())
                part = {side.start()};
            else
                finishPart(side.start());
        }
        part.push_back(side.middle());
    }
    finishPart(junction != ring.end() ? sides.front().start() : sides.front().middle());
    return result;
}

std::vector<Shape> RegionFinder::areas() {
    findRegions();
    std::vector<Shape> shapes(regionClasses.size());
    for (int row = 0; row < raster.rows; ++row)
        for (int column = 0; column < raster.columns; ++column)
            for (std::size_t side = 0; side < kSides; ++side) {
                const Side first{{column, row}, side};
                const std::uint32_t region = regionOf(first.cell);
                if (region == 0 || !isBoundary(first) || isVisited[indexOf(first.cell) * kSides + side])
                    continue;
                Line ring = smoothRing(ringFrom(first));
                Shape& shape = shapes[region];
                // The first cell of a region from the bottom is on its outer ring.
                if (!shape.isArea)
                    shape = {.styleClass = raster.classes[regionClasses[region] - 1],
                             .points = std::move(ring),
                             .isArea = true};
                else
                    shape.holes.push_back(std::move(ring));
            }
    std::erase_if(shapes, [](const Shape& shape) { return shape.points.size() < 3; });
    std::stable_sort(shapes.begin(), shapes.end(),
                     [](const Shape& a, const Shape& b) { return a.styleClass < b.styleClass; });
    return shapes;
}

}  // namespace

ClassRaster buildClassRaster(int columns, int rows, const std::function<std::string(int, int)>& classOf) {
    ClassRaster raster{.columns = columns, .rows = rows};
    std::map<std::string, std::size_t> numbers = {{"", 0}};
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            const auto [place, isNew] = numbers.try_emplace(classOf(column, row), numbers.size());
            if (isNew) raster.classes.push_back(place->first);
            raster.cells.push_back(place->second);
        }
    return raster;
}

std::vector<Shape> regionAreas(const ClassRaster& raster,
                               const std::function<ViewPoint(const ViewPoint&)>& toView) {
    std::vector<Shape> shapes = RegionFinder(raster).areas();
    for (Shape& shape : shapes) {
        for (ViewPoint& point : shape.points) point = toView(point);
        for (auto& hole : shape.holes)
            for (ViewPoint& point : hole) point = toView(point);
    }
    return shapes;
}

}  // namespace quarn
