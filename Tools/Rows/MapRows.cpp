#include "Rows/MapRows.h"

#include <algorithm>
#include <array>

namespace quarn::tool {

namespace {

std::string_view statusOf(Found found) {
    switch (found) {
        case Found::OnScreen:
            return "on_screen";
        case Found::Extrapolated:
            return "extrapolated";
        default:
            return "outside";
    }
}

// Input and result have five numbers in total for both targets.
constexpr std::size_t kCells = 6;

template <std::size_t N>
void addRow(ResultRows& rows, std::span<const double> numbers, const MappedPoint<N>& result) {
    std::array<Cell, kCells> cells;
    std::copy(numbers.begin(), numbers.end(), cells.begin());
    cells[numbers.size()] = statusOf(result.found);
    const bool isFound = result.found != Found::None;
    for (std::size_t i = 0; isFound && i < N; ++i) cells[numbers.size() + 1 + i] = result.point[i];
    rows.add(cells, isFound ? HasResult::Yes : HasResult::No);
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
            addRow(rows, numbers, positionAt(screen, {numbers[0], numbers[1]}, beyond));
        };
    return [&screen, beyond](std::int64_t /*number*/, std::span<const double> numbers, ResultRows& rows) {
        if (numbers.empty()) return addEmptyRow(rows, 3);
        addRow(rows, numbers, uvAt(screen, {numbers[0], numbers[1], numbers[2]}, beyond));
    };
}

}  // namespace quarn::tool
