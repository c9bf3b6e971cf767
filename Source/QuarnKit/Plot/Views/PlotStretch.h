/// \file
/// Stretch: area on the surface over area in UV.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace quarn {

/// Meaning of the colors of a plot: front and back, or the stretch.
enum class PlotColor { Side, Stretch };

/// Areas of a part of a surface, not negative.
struct StretchPatch {
    double area = 0.0;
    double uvArea = 0.0;
};

/// Prefix of the classes of stretch; a number from 0 for the smallest follows.
inline constexpr const char* kStretchClass = "k";
/// Class of areas without UV.
inline constexpr const char* kNoStretchClass = "none";
/// Number of steps of the scale; the one in the middle is the mean.
inline constexpr int kStretchSteps = 17;

/// A logarithmic scale for the stretch of patches, relative to their mean stretch.
class StretchScale {
public:
    explicit StretchScale(const std::vector<StretchPatch>& patches);

    /// Returns the area of all patches over their area in UV; 0 if they have none.
    [[nodiscard]] double mean() const { return meanStretch; }
    /// Returns the place of a stretch on the scale, in steps; 0 is the middle of the first one.
    [[nodiscard]] double placeOf(double value) const;
    /// Returns round numbers to label the scale with, from one end to the other.
    [[nodiscard]] std::array<double, 5> roundNumbers() const;
    /// Returns the class of a patch.
    [[nodiscard]] std::string classOf(const StretchPatch& patch) const;

private:
    double meanStretch = 0.0;
    double maxStretch = 0.0;  // at the upper end; the lower end is the reciprocal
};

}  // namespace quarn
