#include "RegionMapEstimate.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include <QuarnScreen/Detail/Search/QuadtreeSubdivision.h>

namespace quarn::detail {
namespace {

// A visitor that counts the nodes of a build without creating them.
class CountingVisitor {
public:
    struct Checkpoint {
        std::uint64_t nodes;
        std::uint64_t leafEntries;
    };

    explicit CountingVisitor(std::uint64_t maxSteps) : limit(maxSteps) {}

    [[nodiscard]] Checkpoint save() const { return {estimate.nodes, estimate.leafEntries}; }
    void restore(const Checkpoint& checkpoint) {
        estimate.nodes = checkpoint.nodes;
        estimate.leafEntries = checkpoint.leafEntries;
    }
    bool mayCut(int count) {
        estimate.steps += static_cast<std::uint64_t>(count);
        if (estimate.steps > limit) estimate.isWhole = false;
        return estimate.isWhole;
    }
    static void giveUp() {}
    int leaf(const BoxRange& range, int /*depth*/) {
        estimate.leafEntries += static_cast<std::uint64_t>(range.size());
        estimate.peakEntries = std::max(estimate.peakEntries, estimate.leafEntries);
        return addNode();
    }
    int inner(const std::array<int, 4>& /*children*/) { return addNode(); }

    [[nodiscard]] const RegionMapEstimate& counted() const { return estimate; }

private:
    // Returns a dummy index, because the visitor does not link nodes.
    int addNode() {
        ++estimate.nodes;
        estimate.peakNodes = std::max(estimate.peakNodes, estimate.nodes);
        return 0;
    }

    RegionMapEstimate estimate;
    std::uint64_t limit;
};

using Subdivision = QuadtreeSubdivision<CountingVisitor>;

// A uniform grid over a rectangle that counts the boxes in each cell.
class CellTable {
public:
    CellTable(const RegionRect& rectangle, int tableDepth)
        : rect(rectangle),
          depth(tableDepth),
          size(1 << tableDepth),
          cellsPerU(size / (rect.maxU - rect.minU)),
          cellsPerV(size / (rect.maxV - rect.minV)),
          counts(static_cast<std::size_t>(size) * static_cast<std::size_t>(size)) {}

    // Increments the count of each cell that a box overlaps, and returns the number of these cells.
    std::uint64_t add(const RegionRect& box) {
        const Cells cells = cellsOf(box);
        for (int row = cells.top; row <= cells.bottom; ++row)
            for (int column = cells.left; column <= cells.right; ++column) {
                std::uint8_t& count = counts[indexOf(column, row)];
                count = static_cast<std::uint8_t>(std::min(count + 1, kOverfull));
            }
        return cells.count();
    }

    struct Member {
        std::size_t cell;
        int box;

        friend bool operator<(const Member& a, const Member& b) { return a.cell < b.cell; }
    };

    // Appends the overfull cells that a box overlaps.
    void listOverfull(const RegionRect& box, int index, std::vector<Member>& members) const {
        const Cells cells = cellsOf(box);
        for (int row = cells.top; row <= cells.bottom; ++row)
            for (int column = cells.left; column <= cells.right; ++column)
                if (counts[indexOf(column, row)] == kOverfull)
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
    // More boxes than a leaf contains without subdivision.
    static constexpr int kOverfull = Subdivision::kLeafCapacity + 1;
    // The borders of the tree are rounded differently. A box this close to a border, in cells,
    // counts on both sides.
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

// Returns a depth with at least two cells per box, so that the cells of a usual mesh contain few
// boxes.
int tableDepthFor(std::size_t boxes) {
    constexpr int kMaxTableDepth = 13;
    int depth = 0;
    while (depth < kMaxTableDepth && (std::size_t{1} << (2 * depth)) < 2 * boxes) ++depth;
    return depth;
}

bool canBeCut(const RegionRect& rect) {
    const double width = rect.maxU - rect.minU;
    const double height = rect.maxV - rect.minV;
    constexpr double kMinExtent = 1e-30;
    return width > kMinExtent && height > kMinExtent && std::isfinite(width) && std::isfinite(height);
}

// Subdivides each overfull cell as a tree of its own. Returns false if this takes more than
// `maxSteps` steps.
bool areCellSizesBounded(const std::vector<RegionRect>& boxes, const CellTable& table,
                         std::vector<CellTable::Member> members, std::uint64_t maxSteps) {
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
        CountingVisitor visitor(maxSteps - steps);
        Subdivision(inCell, visitor).run(table.rectOf(first->cell), table.depthInTree());
        if (!visitor.counted().isWhole) return false;
        steps += visitor.counted().steps;
        first = last;
    }
    return true;
}

}  // namespace

std::uint64_t RegionMapEstimate::memory() const {
    // During a reallocation, a list occupies its old capacity and the new one, which is twice the
    // old one.
    constexpr std::uint64_t kReallocationFactor = 3;
    return kReallocationFactor * (peakNodes * sizeof(RegionNode) + peakEntries * sizeof(int));
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

RegionMapEstimate countRegionMap(const std::vector<RegionRect>& boxes, std::uint64_t maxSteps) {
    CountingVisitor visitor(maxSteps);
    Subdivision(boxes, visitor).run(unionOf(boxes));
    return visitor.counted();
}

bool isRegionMapSizeBounded(const std::vector<RegionRect>& boxes) {
    // Overlapped cells per box. A usual triangle is about three cells wide and high.
    constexpr std::uint64_t kCellsPerBox = 64;
    // Subdivision steps in overfull cells per box.
    constexpr std::uint64_t kStepsPerBox = 64;
    // Entries of overfull cells per box. Beyond this, counting the whole tree is as fast.
    constexpr std::size_t kOverfullPerBox = 2;

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
        table.listOverfull(boxes[i], static_cast<int>(i), members);
        if (members.size() > kOverfullPerBox * boxes.size()) return false;
    }
    return areCellSizesBounded(boxes, table, std::move(members), kStepsPerBox * boxes.size());
}

}  // namespace quarn::detail
