/// \file
/// The positions to calibrate at, with their places in the layout.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include <QuarnScreen/IScreenGeometry.h>

namespace quarn {

/// A place in a layout of columns and rows.
struct CalibrationPlace {
    std::int64_t column = 1;  ///< From 1.
    std::int64_t row = 1;     ///< From 1.
    Point<double, 2> uv;
};

/// A position to calibrate at.
struct CalibrationPoint {
    /// None for positions on the boundary of a mesh without UV.
    std::optional<CalibrationPlace> place;
    /// None for a place that is not on the screen: beyond a mesh, or in a gap between its UVs.
    std::optional<Point<double, 3>> position = {};
};

/// Visits the positions of IScreenGeometry::getDefaultCalibrationPoints(), and the places that it
/// omits, column by column for analytic screens and row by row for meshes.
/// \pre the counts are at least 2
void visitCalibrationPoints(const IScreenGeometry& screen, int columns, int rows,
                            const std::function<void(const CalibrationPoint& point)>& visit);

}  // namespace quarn
