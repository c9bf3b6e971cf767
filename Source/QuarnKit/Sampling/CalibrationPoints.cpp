#include "CalibrationPoints.h"

#include <cstddef>

namespace quarn {

namespace {

using Visitor = std::function<void(const CalibrationPoint& point)>;

// Samples the same UVs as the screen itself, with the same bits, row by row.
void visitMesh(const IScreenGeometry& screen, int columns, int rows, const Visitor& visit) {
    const double step = 1.0 / (rows - 1.0);
    for (int r = 0; r < rows; ++r) {
        const double v = r * step;
        IScreenGeometry::GridSamples samples;
        screen.sampleHorizontally(v, 0.0, 1.0, columns, r, samples, false);
        for (int c = 0; c < columns; ++c) {
            CalibrationPoint point{.place = CalibrationPlace{c + 1LL, r + 1LL, {c / (columns - 1.0), v}}};
            const auto sample = samples.find(Point<int, 2>(c, r));
            if (sample != samples.end()) point.position = sample->second;
            visit(point);
        }
    }
}

void visitAnalytic(const IScreenGeometry& screen, int columns, int rows, const Visitor& visit) {
    std::int64_t index = 0;
    for (const Point<double, 3>& position : screen.getDefaultCalibrationPoints(columns, rows)) {
        const std::int64_t column = index / rows;
        const std::int64_t row = index % rows;
        const Point<double, 2> uv(static_cast<double>(column) / (columns - 1.0),
                                  static_cast<double>(row) / (rows - 1.0));
        visit({.place = CalibrationPlace{column + 1, row + 1, uv}, .position = position});
        ++index;
    }
}

}  // namespace

void visitCalibrationPoints(const IScreenGeometry& screen, int columns, int rows, const Visitor& visit) {
    if (!screen.hasParameterization()) {
        for (const Point<double, 3>& position : screen.getDefaultCalibrationPoints(columns, rows))
            visit({.place = std::nullopt, .position = position});
    } else if (screen.hasTesselation()) {
        visitMesh(screen, columns, rows, visit);
    } else {
        visitAnalytic(screen, columns, rows, visit);
    }
}

}  // namespace quarn
