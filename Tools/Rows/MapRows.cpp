#include "Rows/MapRows.h"

#include <algorithm>
#include <array>

#include <QuarnKit/Base/IsFinite.h>

namespace quarn {

namespace {

// A position with the word that says how it was got.
template <std::size_t N>
struct Mapped {
    std::string_view status = "outside";
    Point<double, N> point;
    [[nodiscard]] bool isAnswer() const { return status != "outside"; }
};

// A mesh hands out its last answers again, also that of 0 for -0. The order of the questions does not show in that: the
// sum that a position is begins with a corner, and the corners of a mesh that was read are never -0.
Mapped<3> mapTo3D(const IScreenGeometry& geometry, const Point<double, 2>& uv, bool extrapolates) {
    Point<double, 3> point;
    if (geometry.mapInto3D(uv, point, false) && isFinite(point)) return {"on_screen", point};
    if (extrapolates && geometry.mapInto3D(uv, point, true) && isFinite(point))
        return {"extrapolated", point};
    return {};
}

Mapped<2> mapTo2D(const IScreenGeometry& geometry, const Point<double, 3>& point, bool extrapolates) {
    const auto isAnswer = [](const Point<double, 2>& uv) { return isFinite(uv) && uv != kNoUV; };
    if (geometry.isOnScreenSection(point)) {
        const Point<double, 2> uv = geometry.mapInto2D(point, false);
        if (isAnswer(uv)) return {"on_screen", uv};
    }
    if (extrapolates) {
        const Point<double, 2> uv = geometry.mapInto2D(point, true);
        if (isAnswer(uv)) return {"extrapolated", uv};
    }
    return {};
}

// The input and the answer are five numbers in all, whichever way they are mapped.
template <std::size_t N>
void addRow(AnswerRows& rows, std::span<const double> numbers, const Mapped<N>& mapped) {
    std::array<Cell, 6> cells;
    std::copy(numbers.begin(), numbers.end(), cells.begin());
    cells[numbers.size()] = mapped.status;
    for (std::size_t i = 0; mapped.isAnswer() && i < N; ++i) cells[numbers.size() + 1 + i] = mapped.point[i];
    rows.add(cells, mapped.isAnswer() ? Answered::Yes : Answered::No);
}

}  // namespace

RowAnswer mapRows(const IScreenGeometry& screen, MapTarget target, bool extrapolates) {
    if (target == MapTarget::Position)
        return [&screen, extrapolates](std::int64_t /*number*/, std::span<const double> numbers,
                                       AnswerRows& rows) {
            addRow(rows, numbers, mapTo3D(screen, {numbers[0], numbers[1]}, extrapolates));
        };
    return
        [&screen, extrapolates](std::int64_t /*number*/, std::span<const double> numbers, AnswerRows& rows) {
            addRow(rows, numbers, mapTo2D(screen, {numbers[0], numbers[1], numbers[2]}, extrapolates));
        };
}

}  // namespace quarn
