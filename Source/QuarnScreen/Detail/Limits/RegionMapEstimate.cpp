#include "RegionMapEstimate.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include <QuarnScreen/Detail/Search/QuadtreeSubdivision.h>

namespace quarn {
namespace {

// Counts what a build makes.
class CountingSink {
public:
    struct Saved {
        std::uint64_t nodes;
        std::uint64_t leafEntries;
    };

    explicit CountingSink(std::uint64_t mostSteps) : limit(mostSteps) {}

    [[nodiscard]] Saved save() const { return {growth.nodes, growth.leafEntries}; }
    void restore(const Saved& saved) {
        growth.nodes = saved.nodes;
        growth.leafEntries = saved.leafEntries;
    }
    bool mayCut(int count) {
        growth.steps += static_cast<std::uint64_t>(count);
        if (growth.steps > limit) growth.isWhole = false;
        return growth.isWhole;
    }
    static void giveUp() {}
    int leaf(const BoxRange& range, int /*depth*/) {
        growth.leafEntries += static_cast<std::uint64_t>(range.size());
        growth.peakEntries = std::max(growth.peakEntries, growth.leafEntries);
        return addNode();
    }
    int inner(const std::array<int, 4>& /*children*/) { return addNode(); }

    [[nodiscard]] const RegionMapGrowth& counted() const { return growth; }

private:
    // The number of a node has no use here.
    int addNode() {
        ++growth.nodes;
        growth.peakNodes = std::max(growth.peakNodes, growth.nodes);
        return 0;
    }

    RegionMapGrowth growth;
    std::uint64_t limit;
};

using Subdivision = RegionSubdivision<CountingSink>;

// A table of equal cells over a rectangle, and how many boxes touch each.
class CellTable {
public:
    CellTable(const RegionRect& rectangle, int tableDepth)
        : rect(rectangle),
          depth(tableDepth),
          size(1 << tableDepth),
          cellsPerU(size / (rect.maxU - rect.minU)),
          cellsPerV(size / (rect.maxV - rect.minV)),
          counts(static_cast<std::size_t>(size) * static_cast<std::size_t>(size)) {}

    // Adds one to each cell that a box touches, and returns their number.
    std::uint64_t add(const RegionRect& box) {
        const Cells cells = cellsOf(box);
        for (int row = cells.top; row <= cells.bottom; ++row)
            for (int column = cells.left; column <= cells.right; ++column) {
                std::uint8_t& count = counts[indexOf(column, row)];
                count = static_cast<std::uint8_t>(std::min(count + 1, kCrowded));
            }
        return cells.count();
    }

    struct Member {
        std::size_t cell;
        int box;

        friend bool operator<(const Member& a, const Member& b) { return a.cell < b.cell; }
    };

    // The crowded cells that a box touches.
    void listCrowded(const RegionRect& box, int index, std::vector<Member>& members) const {
        const Cells cells = cellsOf(box);
        for (int row = cells.top; row <= cells.bottom; ++row)
            for (int column = cells.left; column <= cells.right; ++column)
                if (counts[indexOf(column, row)] == kCrowded)
                    members.push_back({indexOf(column, row), index});
    }

    [[nodiscard]] RegionRect rectOf(std::size_t cell) const {
        const auto cellsPerRow = static_cast<std::size_t>(size);
        const std::size_t fullRows = cell / cellsPerRow;
        const auto column = static_cast<double>(cell % cellsPerRow);
        const auto row = static_cast<double>(fullRows);
        return {rect.minU + column / cellsPerU, rect.minU + (column + 1.0) / cellsPerU,
                rect.minV + row / cellsPerV, rect.minV + (row + 1.0) / cellsPerV};
    }
    [[nodiscard]] int depthInTree() const { return depth + Subdivision::kFirstDepth; }

private:
    // More than a leaf takes without being cut.
    static constexpr int kCrowded = Subdivision::kRoomyLeafSize + 1;
    // The tree's own borders are rounded otherwise; a box so near to one, in cells, counts on both of its sides.
    static constexpr double kRounding = 1e-6;

    struct Cells {
        int left;
        int right;
        int top;
        int bottom;

        [[nodiscard]] std::uint64_t count() const {
            return static_cast<std::uint64_t>(right - left + 1) *
                   static_cast<std::uint64_t>(bottom - top + 1);
        }
    };

    [[nodiscard]] int clamped(double cell) const {
        return static_cast<int>(std::clamp(cell, 0.0, static_cast<double>(size - 1)));
    }
    [[nodiscard]] Cells cellsOf(const RegionRect& box) const {
        return {clamped((box.minU - rect.minU) * cellsPerU - kRounding),
                clamped((box.maxU - rect.minU) * cellsPerU + kRounding),
                clamped((box.minV - rect.minV) * cellsPerV - kRounding),
                clamped((box.maxV - rect.minV) * cellsPerV + kRounding)};
    }
    [[nodiscard]] std::size_t indexOf(int column, int row) const {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(size) +
               static_cast<std::size_t>(column);
    }

    RegionRect rect;
    int depth;
    int size;
    double cellsPerU;
    double cellsPerV;
    std::vector<std::uint8_t> counts;
};

// At least two cells for each box, so that the cells of a usual mesh hold few.
int tableDepthFor(std::size_t boxes) {
    constexpr int kDeepest = 13;
    int depth = 0;
    while (depth < kDeepest && (std::size_t{1} << (2 * depth)) < 2 * boxes) ++depth;
    return depth;
}

bool canBeCut(const RegionRect& rect) {
    const double width = rect.maxU - rect.minU;
    const double height = rect.maxV - rect.minV;
    constexpr double kLeast = 1e-30;
    return width > kLeast && height > kLeast && std::isfinite(width) && std::isfinite(height);
}

// What crowded cells grow into, each taken as a tree of its own.
bool areCellsSmall(const std::vector<RegionRect>& boxes, const CellTable& table,
                   std::vector<CellTable::Member> members, std::uint64_t mostSteps) {
    std::sort(members.begin(), members.end());
    std::uint64_t steps = 0;
    for (auto first = members.begin(); first != members.end();) {
        const auto last = std::find_if(first, members.end(), [&](const CellTable::Member& member) {
            return member.cell != first->cell;
        });
        std::vector<RegionRect> inCell;
        std::transform(first, last, std::back_inserter(inCell), [&](const CellTable::Member& member) {
            return boxes[static_cast<std::size_t>(member.box)];
        });
        CountingSink sink(mostSteps - steps);
        Subdivision(inCell, sink).run(table.rectOf(first->cell), table.depthInTree());
        if (!sink.counted().isWhole) return false;
        steps += sink.counted().steps;
        first = last;
    }
    return true;
}

}  // namespace

std::uint64_t RegionMapGrowth::memory() const {
    // A list that grows holds its old and its new room, which is twice the old one.
    constexpr std::uint64_t kRoom = 3;
    return kRoom * (peakNodes * sizeof(RegionNode) + peakEntries * sizeof(int));
}

std::vector<RegionRect> uvBoxesOf(const std::vector<Triangle>& triangles) {
    std::vector<RegionRect> boxes(triangles.size());
    std::transform(triangles.begin(), triangles.end(), boxes.begin(), [](const Triangle& triangle) {
        const auto& [a, b, c] = triangle.vertices;
        return uvBoxOf(a.uv, b.uv, c.uv);
    });
    return boxes;
}

std::vector<RegionRect> uvBoxesOf(const std::vector<std::array<Point<double, 2>, 3>>& triangles) {
    std::vector<RegionRect> boxes(triangles.size());
    std::transform(triangles.begin(), triangles.end(), boxes.begin(),
                   [](const auto& uvs) { return uvBoxOf(uvs[0], uvs[1], uvs[2]); });
    return boxes;
}

RegionMapGrowth countRegionMap(const std::vector<RegionRect>& boxes, std::uint64_t mostSteps) {
    CountingSink sink(mostSteps);
    Subdivision(boxes, sink).run(unionOf(boxes));
    return sink.counted();
}

bool isRegionMapSurelySmall(const std::vector<RegionRect>& boxes) {
    // Cells that the boxes touch, for each box: a usual triangle is about three cells wide and high.
    constexpr std::uint64_t kCellsPerBox = 64;
    // Steps in crowded cells, for each box.
    constexpr std::uint64_t kStepsPerBox = 64;
    // Boxes of crowded cells, for each box. Beyond it the whole tree is counted as fast.
    constexpr std::size_t kCrowdedPerBox = 2;

    const RegionRect rect = unionOf(boxes);
    if (boxes.empty() || !canBeCut(rect)) return boxes.empty();
    CellTable table(rect, tableDepthFor(boxes.size()));
    std::uint64_t touched = 0;
    for (const RegionRect& box : boxes) {
        touched += table.add(box);
        if (touched > kCellsPerBox * boxes.size()) return false;
    }
    std::vector<CellTable::Member> members;
    for (std::size_t i = 0; i < boxes.size(); ++i) {
        table.listCrowded(boxes[i], static_cast<int>(i), members);
        if (members.size() > kCrowdedPerBox * boxes.size()) return false;
    }
    return areCellsSmall(boxes, table, std::move(members), kStepsPerBox * boxes.size());
}

}  // namespace quarn
