/// \file
/// How much more surface some UVs cover than others.
#pragma once

#include <string>
#include <vector>

namespace quarn {

/// What a plot's colours tell.
enum class PlotColor { Side, Stretch };

/// A part of a surface; areas are not negative.
struct StretchPatch {
    double area = 0.0;
    double uvArea = 0.0;
};

/// Classes of stretch are this, followed by a number from 0 for the least.
inline constexpr const char* kStretchClass = "k";
/// Class of what has no UV.
inline constexpr const char* kNoStretchClass = "none";
inline constexpr int kStretchSteps = 17;  ///< The one in the middle is the mean.

/// A scale for the stretch of patches: area over area in UV, relative to that of all of them.
class StretchScale {
public:
    explicit StretchScale(const std::vector<StretchPatch>& patches);

    /// Area of all patches over their area in UV; 0 where they have none.
    [[nodiscard]] double mean() const { return meanStretch; }
    /// The stretch at the middle of a step, relative to the mean.
    [[nodiscard]] double valueOf(int step) const;
    [[nodiscard]] std::string classOf(const StretchPatch& patch) const;

private:
    double meanStretch = 0.0;
    double greatest = 0.0;  // at the upper end; the lower end is one over it
};

}  // namespace quarn
