#include "OccupancyGrid.h"

#include <algorithm>
#include <cmath>

namespace quarn::detail {
namespace {

bool isEmpty(const FloatBox& box) {
    return !(box.lower[0] <= box.upper[0]);
}

}  // namespace

// Rounding keeps the order of numbers. Therefore a coordinate between two others is in their cells
// or between them.
std::size_t OccupancyGrid::Axis::cellOf(float coordinate) const {
    const auto cell = static_cast<std::size_t>((coordinate - lower) * scale);
    return std::min(cell, kCells - 1);
}

void OccupancyGrid::build(const std::vector<FloatBox>& boxes) {
    words.clear();
    whole = FloatBox::nowhere();
    for (const FloatBox& box : boxes) whole.include(box);
    if (boxes.size() < kMinBoxes || isEmpty(whole) || !measure()) return;
    words.resize(kCells * kCells * kWords);
    std::size_t markedRows = 0;
    for (const FloatBox& box : boxes) {
        if (!isEmpty(box)) markedRows += mark(box);
        if (markedRows > kMaxMarkedRows) {
            words.clear();
            return;
        }
    }
}

// Returns false if the boxes together are infinite or flat.
bool OccupancyGrid::measure() {
    for (std::size_t i = 0; i < 3; ++i) {
        const float extent = whole.upper[i] - whole.lower[i];
        axes[i] = {whole.lower[i], static_cast<float>(kCells) / extent};
        if (!std::isfinite(extent) || !std::isfinite(axes[i].scale)) return false;
    }
    return true;
}

// Returns the number of rows.
std::size_t OccupancyGrid::mark(const FloatBox& box) {
    std::array<std::size_t, 3> first{};
    std::array<std::size_t, 3> last{};
    for (std::size_t i = 0; i < 3; ++i) {
        first[i] = axes[i].cellOf(box.lower[i]);
        last[i] = axes[i].cellOf(box.upper[i]);
    }
    std::array<std::uint64_t, kWords> row{};
    for (std::size_t x = first[0]; x <= last[0]; ++x) row[x / kWordBits] |= std::uint64_t{1} << x % kWordBits;
    for (std::size_t z = first[2]; z <= last[2]; ++z)
        for (std::size_t y = first[1]; y <= last[1]; ++y)
            for (std::size_t i = 0; i < kWords; ++i) words[rowOf(y, z) + i] |= row[i];
    return (last[1] - first[1] + 1) * (last[2] - first[2] + 1);
}

bool OccupancyGrid::mayContain(const FloatPosition& position) const {
    const auto& [x, y, z] = position.coordinates;
    for (std::size_t i = 0; i < 3; ++i) {
        const float coordinate = position.coordinates[i];
        if (!(whole.lower[i] <= coordinate && coordinate <= whole.upper[i])) return false;
    }
    if (words.empty()) return true;
    const std::size_t cell = axes[0].cellOf(x);
    const std::size_t row = rowOf(axes[1].cellOf(y), axes[2].cellOf(z));
    return (words[row + cell / kWordBits] >> cell % kWordBits & 1) != 0;
}

}  // namespace quarn::detail
