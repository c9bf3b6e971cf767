#include "ArcSampling.h"

#include <cmath>

namespace quarn::detail {

void sampleArc(const Arc& arc, double v, double uStart, double uEnd, int count, int row,
               IScreenGeometry::GridSamples& samples, bool extrapolate) {
    if (count < 2) return;
    const double range = arc.maxTheta - arc.minTheta;
    const double stepU = (uEnd - uStart) / (count - 1);
    const double thetaStart = range * uStart + arc.minTheta;
    const double stepTheta = (range * uEnd + arc.minTheta - thetaStart) / (count - 1);
    for (int i = 0; i < count; ++i) {
        const double u = i * stepU + uStart;
        const bool isOnScreen = u >= 0.0 && u <= 1.0 && v >= 0.0 && v <= 1.0;
        if (!extrapolate && !isOnScreen) continue;
        const double theta = i * stepTheta + thetaStart;
        samples[Point<int, 2>(i, row)] =
            Point<double, 3>(std::sin(theta) * arc.radius + arc.center[0],
                             std::cos(theta) * arc.radius + arc.center[1], arc.center[2]);
    }
}

}  // namespace quarn::detail
