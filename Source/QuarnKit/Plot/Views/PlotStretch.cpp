#include "PlotStretch.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace quarn {

namespace {

constexpr std::array<double, 4> kLimits = {2.0, 4.0, 16.0, 64.0};
// The fraction of the area that may be beyond the ends of the scale.
constexpr double kMaxBeyondRatio = 0.05;
// Rounds away from a tie, in steps of the scale, so that the last bits of a number do not decide.
constexpr double kTieNudge = 1e-7;
constexpr int kMiddle = kStretchSteps / 2;

}  // namespace

StretchScale::StretchScale(const std::vector<StretchPatch>& patches) {
    StretchPatch sum;
    for (const StretchPatch& patch : patches) {
        if (!(patch.uvArea > 0.0)) continue;
        sum.area += patch.area;
        sum.uvArea += patch.uvArea;
    }
    if (sum.uvArea > 0.0) meanStretch = sum.area / sum.uvArea;
    for (const double limit : kLimits) {
        double beyond = 0.0;
        for (const StretchPatch& patch : patches) {
            if (!(patch.uvArea > 0.0)) continue;
            const double stretch = patch.area / patch.uvArea / meanStretch;
            if (stretch > limit || stretch < 1.0 / limit) beyond += patch.area;
        }
        maxStretch = limit;
        if (beyond <= kMaxBeyondRatio * sum.area) return;
    }
}

double StretchScale::placeOf(double value) const {
    return kMiddle * (1.0 + std::log2(value) / std::log2(maxStretch));
}

std::array<double, 5> StretchScale::roundNumbers() const {
    // The square root of the first limit is not round.
    const double inner = maxStretch > kLimits.front() ? std::sqrt(maxStretch) : 1.5;
    return {1.0 / maxStretch, 1.0 / inner, 1.0, inner, maxStretch};
}

std::string StretchScale::classOf(const StretchPatch& patch) const {
    if (!(meanStretch > 0.0) || !(patch.uvArea > 0.0 || patch.area > 0.0)) return kNoStretchClass;
    // A patch without area in UV is beyond the upper end.
    const double place = placeOf(patch.area / patch.uvArea / meanStretch);
    if (std::isnan(place)) return kNoStretchClass;
    const double step = std::clamp(place + kTieNudge, 0.0, kStretchSteps - 1.0);
    return kStretchClass + std::to_string(std::llround(step));
}

}  // namespace quarn
