#include "RegionMapShortcut.h"

#include <algorithm>
#include <limits>

namespace quarn::detail {
namespace {

// At most a million cells, and at most two per leaf.
constexpr int kMaxDepth = 10;
constexpr std::size_t kCellsPerLeaf = 2;

constexpr double kMaxDouble = std::numeric_limits<double>::max();

void appendLowerBorders(std::vector<double>& borders, double low, double high, int depth) {
    if (depth == 0) {
        borders.push_back(low);
        return;
    }
    const double middle = (high - low) * 0.5 + low;
    appendLowerBorders(borders, low, middle, depth - 1);
    appendLowerBorders(borders, middle, high, depth - 1);
}

}  // namespace

void RegionMapShortcut::Axis::build(double low, double high, int depth) {
    borders.clear();
    appendLowerBorders(borders, low, high, depth);
    borders.push_back(high);
    cellsPerUnit = static_cast<double>(std::size_t{1} << depth) / (high - low);
}

// False for NaN and infinite ranges, and if the middles are not in ascending order.
bool RegionMapShortcut::Axis::canBeCut() const {
    return borders.back() - borders.front() <= kMaxDouble && cellsPerUnit > 0.0 &&
           cellsPerUnit <= kMaxDouble && std::is_sorted(borders.begin(), borders.end());
}

std::size_t RegionMapShortcut::Axis::cellOf(double x) const {
    const std::size_t last = borders.size() - 2;
    // An estimate. Rounding may make it a neighbor of the right cell.
    std::size_t i = std::min(static_cast<std::size_t>((x - borders.front()) * cellsPerUnit), last);
    while (i < last && x > borders[i + 1]) ++i;
    while (i > 0 && !(x > borders[i])) --i;
    return i;
}

void RegionMapShortcut::build(const std::vector<RegionNode>& nodes, const RegionRect& rootRect,
                              int leafCount) {
    clear();
    const std::size_t maxCells = kCellsPerLeaf * static_cast<std::size_t>(leafCount);
    while (depth < kMaxDepth && (std::size_t{4} << (2 * depth)) <= maxCells) ++depth;
    alongU.build(rootRect.minU, rootRect.maxU, depth);
    alongV.build(rootRect.minV, rootRect.maxV, depth);
    if (!alongU.canBeCut() || !alongV.canBeCut()) return;
    cells.resize(std::size_t{1} << (2 * depth));
    fill(nodes, static_cast<int>(nodes.size()) - 1, 0, 0, 0);
}

void RegionMapShortcut::clear() {
    depth = 0;
    cells.clear();
}

void RegionMapShortcut::fill(const std::vector<RegionNode>& nodes, int index, int nodeDepth,
                             std::size_t column, std::size_t row) {
    const RegionNode& node = nodes[static_cast<std::size_t>(index)];
    if (nodeDepth == depth || node.count() >= 0) {
        const std::size_t width = std::size_t{1} << (depth - nodeDepth);
        for (std::size_t r = row * width; r < (row + 1) * width; ++r) {
            const std::size_t first = (r << depth) + column * width;
            std::fill_n(cells.begin() + static_cast<std::ptrdiff_t>(first), width, index);
        }
        return;
    }
    for (int quadrant = 0; quadrant < 4; ++quadrant) {
        fill(nodes, node.child(quadrant), nodeDepth + 1, 2 * column + static_cast<std::size_t>(quadrant % 2),
             2 * row + static_cast<std::size_t>(quadrant / 2));
    }
}

std::optional<RegionMapShortcut::Arrival> RegionMapShortcut::find(double u, double v) const {
    if (cells.empty() || !alongU.contains(u) || !alongV.contains(v)) return std::nullopt;
    const std::size_t column = alongU.cellOf(u);
    const std::size_t row = alongV.cellOf(v);
    return Arrival{
        cells[(row << depth) + column],
        {alongU.borders[column], alongU.borders[column + 1], alongV.borders[row], alongV.borders[row + 1]}};
}

}  // namespace quarn::detail
