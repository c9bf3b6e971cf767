/// \file
/// Samples along a horizontal arc.
#pragma once

#include <QuarnScreen/IScreenGeometry.h>

namespace quarn::detail {

/// A horizontal arc. u is 0 at `minTheta` and 1 at `maxTheta`.
struct Arc {
    Point<double, 3> center;  ///< Center of the arc's circle.
    double radius = 0.0;      ///< Radius of the circle.
    double minTheta = 0.0;    ///< Azimuth of u = 0, in radians.
    double maxTheta = 0.0;    ///< Azimuth of u = 1, in radians.
};

/// Samples an arc as IScreenGeometry::sampleHorizontally() specifies.
void sampleArc(const Arc& arc, double v, double uStart, double uEnd, int count, int row,
               IScreenGeometry::GridSamples& samples, bool extrapolate);

}  // namespace quarn::detail
