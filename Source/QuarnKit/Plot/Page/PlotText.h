/// \file
/// The words and rounded numbers of a plot.
#pragma once

#include <string>

#include <QuarnKit/Formats/ScreenReader.h>
#include <QuarnKit/Plot/Views/PlotSurface.h>

namespace quarn {

/// A number for people: four digits, and all digits before the point up to seven.
/// \param scale what the number is compared with; what is nothing beside it is 0
[[nodiscard]] std::string shortNumber(double value, double scale);

/// As in "4.25 m".
[[nodiscard]] std::string lengthText(double value, const std::string& unit);

/// As in "(0, -2, 0)", its numbers as by shortNumber().
[[nodiscard]] std::string positionText(const Point<double, 3>& position, double scale);

/// The file's own name, cut in its middle where it is long.
[[nodiscard]] std::string shortFileName(const std::string& path);

/// What the screen is, as in "Dome".
[[nodiscard]] std::string shapeText(const IScreenGeometry& geometry, const PlotSurface& surface);

/// Every number that defines the screen, with angles in degrees.
[[nodiscard]] std::string parametersText(const Screen& screen, const std::string& unit);

/// Size and place of a surface's bounds.
[[nodiscard]] std::string sizeText(const Point<double, 3>& min, const Point<double, 3>& max,
                                   const std::string& unit);

/// The beginning of the screen's digest.
[[nodiscard]] std::string shortDigest(const IScreenGeometry& geometry);

}  // namespace quarn
