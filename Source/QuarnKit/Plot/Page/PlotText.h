/// \file
/// Texts and rounded numbers of a plot.
#pragma once

#include <string>

#include <QuarnKit/Formats/ScreenReader.h>
#include <QuarnKit/Plot/Views/PlotSurface.h>

namespace quarn {

/// Formats a number with four significant digits, and up to seven digits before the point.
/// \param scale numbers that are negligible relative to it become 0
[[nodiscard]] std::string shortNumber(double value, double scale);

/// Formats a length, as in "4.25 m".
[[nodiscard]] std::string lengthText(double value, const std::string& unit);

/// Formats a position, as in "(0, -2, 0)", with the numbers of shortNumber().
[[nodiscard]] std::string positionText(const Point<double, 3>& position, double scale);

/// Returns the file's name without folders. Replaces the middle of a long name with an ellipsis.
[[nodiscard]] std::string shortFileName(const std::string& path);

/// Describes the shape of a screen, as in "Full cylinder".
[[nodiscard]] std::string shapeText(const IScreenGeometry& geometry, const PlotSurface& surface);

/// Lists the parameters of a screen, with angles in degrees.
[[nodiscard]] std::string parametersText(const Screen& screen, const std::string& unit);

/// Describes the size and the position of a surface's bounds.
[[nodiscard]] std::string sizeText(const Point<double, 3>& min, const Point<double, 3>& max,
                                   const std::string& unit);

/// Returns the beginning of a screen's digest.
[[nodiscard]] std::string shortDigest(const IScreenGeometry& geometry);

}  // namespace quarn
