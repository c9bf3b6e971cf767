#include "Rows/MapRows.h"

#include <algorithm>
#include <array>

#include <QuarnKit/Base/IsFinite.h>

namespace quarn::tool {

namespace {

// A mapped point and its status.
template <std::size_t N>
struct MappedPoint {
    std::string_view status = "outside";
    Point<double, N> point;
    [[nodiscard]] bool isValid() const { return status != "outside"; }
};

// A mesh caches its last results, and returns that of 0 for -0. Results do not depend on the order
// of queries all the same: a position is a sum that begins with a corner, and the corners of a mesh
// from a file are never -0.
MappedPoint<3> mapTo3D(const IScreenGeometry& geometry, const Point<double, 2>& uv, BeyondScreen beyond) {
    Point<double, 3> point;
    if (geometry.mapInto3D(uv, point, false) && isFinite(point)) return {"on_screen", point};
    if (beyond == BeyondScreen::Extrapolate && geometry.mapInto3D(uv, point, true) && isFinite(point))
        return {"extrapolated", point};
    return {};
}

MappedPoint<2> mapTo2D(const IScreenGeometry& geometry, const Point<double, 3>& point, BeyondScreen beyond) {
    const auto isValid = [](const Point<double, 2>& uv) { return isFinite(uv) && uv != kNoUV; };
    if (geometry.isOnScreenSection(point)) {
        const Point<double, 2> uv = geometry.mapInto2D(point, false);
        if (isValid(uv)) return {"on_screen", uv};
    }
    if (beyond == BeyondScreen::Extrapolate) {
        const Point<double, 2> uv = geometry.mapInto2D(point, true);
        if (isValid(uv)) return {"extrapolated", uv};
    }
    return {};
}

// Input and result have five numbers in total for both targets.
constexpr std::size_t kCells = 6;

template <std::size_t N>
void addRow(ResultRows& rows, std::span<const double> numbers, const MappedPoint<N>& result) {
    std::array<Cell, kCells> cells;
    std::copy(numbers.begin(), numbers.end(), cells.begin());
    cells[numbers.size()] = result.status;
    for (std::size_t i = 0; result.isValid() && i < N; ++i) cells[numbers.size() + 1 + i] = result.point[i];
    rows.add(cells, result.isValid() ? HasResult::Yes : HasResult::No);
}

void addEmptyRow(ResultRows& rows, std::size_t inputCount) {
    std::array<Cell, kCells> cells;
    cells.at(inputCount) = kEmptyRow;
    rows.add(cells, HasResult::No);
}

}  // namespace

RowQuery mapRows(const IScreenGeometry& screen, MapTarget target, BeyondScreen beyond) {
    if (target == MapTarget::Position)
        return [&screen, beyond](std::int64_t /*number*/, std::span<const double> numbers, ResultRows& rows) {
            if (numbers.empty()) return addEmptyRow(rows, 2);
            addRow(rows, numbers, mapTo3D(screen, {numbers[0], numbers[1]}, beyond));
        };
    return [&screen, beyond](std::int64_t /*number*/, std::span<const double> numbers, ResultRows& rows) {
        if (numbers.empty()) return addEmptyRow(rows, 3);
        addRow(rows, numbers, mapTo2D(screen, {numbers[0], numbers[1], numbers[2]}, beyond));
    };
}

}  // namespace quarn::tool
