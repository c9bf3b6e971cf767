#include "UvDistance.h"

#include <QuarnKit/Base/IsFinite.h>

namespace quarn {

namespace {

// Cells along u and along v: enough for a picture of the differences.
constexpr int kCellsPerSide = 128;

bool findPosition(const IScreenGeometry& screen, const Point<double, 2>& uv, Point<double, 3>& position) {
    return screen.mapInto3D(uv, position, IScreenGeometry::kNoExtrapolation) && isFinite(position);
}

}  // namespace

std::optional<UvDistance> uvDistance(const IScreenGeometry& a, const IScreenGeometry& b) {
    if (!a.hasParameterization() || !b.hasParameterization()) return std::nullopt;
    UvDistance result;
    double sum = 0.0;
    for (int row = 0; row < kCellsPerSide; ++row)
        for (int column = 0; column < kCellsPerSide; ++column) {
            const Point<double, 2> uv((column + 0.5) / kCellsPerSide, (row + 0.5) / kCellsPerSide);
            Point<double, 3> onA;
            Point<double, 3> onB;
            if (!findPosition(a, uv, onA) || !findPosition(b, uv, onB)) continue;
            const double distance = length(onB - onA);
            sum += distance;
            if (result.samples == 0 || distance > result.max) {
                result.max = distance;
                result.where = onA;
            }
            ++result.samples;
        }
    if (result.samples == 0) return std::nullopt;
    result.mean = sum / static_cast<double>(result.samples);
    return result;
}

}  // namespace quarn
