#include <QuarnScreen/Lines.h>

#include <algorithm>
#include <cmath>

namespace {

// Minimum length of a segment with a direction, in the screen's unit.
constexpr double kMinLength = 1e-10;
// Minimum squared area of the parallelogram of both directions, in the screen's unit to the fourth
// power.
constexpr double kMinDeterminant = 1e-10;

double clamped(double parameter, bool atStart, bool atEnd) {
    if (atStart && parameter < 0.0) return 0.0;
    if (atEnd) return std::min(1.0, parameter);
    return parameter;
}

}  // namespace

bool closestPointsBetweenLines(const Point<double, 3>& a0, const Point<double, 3>& a1,
                               const Point<double, 3>& b0, const Point<double, 3>& b1, Point<double, 3>& outA,
                               Point<double, 3>& outB, bool clampAStart, bool clampAEnd, bool clampBStart,
                               bool clampBEnd) {
    const Point<double, 3> da = a1 - a0;
    const Point<double, 3> db = b1 - b0;
    if (length(da) < kMinLength || length(db) < kMinLength) return false;

    const double aa = dot(da, da);
    const double bb = dot(db, db);
    const double ab = dot(da, db);
    const Point<double, 3> r = a0 - b0;
    const double e = dot(r, db);
    const double determinant = bb * aa - ab * ab;
    if (std::abs(determinant) < kMinDeterminant) return false;

    const double s = (e * ab - bb * dot(da, r)) / determinant;
    const double t = (ab * s + e) / bb;
    const Point<double, 3> onA = a0 + clamped(s, clampAStart, clampAEnd) * da;
    const Point<double, 3> onB = b0 + clamped(t, clampBStart, clampBEnd) * db;
    outA = onA;
    outB = onB;
    return true;
}

bool closestPointsBetweenLines(const Point<double, 3>& a0, const Point<double, 3>& a1,
                               const Point<double, 3>& b0, const Point<double, 3>& b1, Point<double, 3>& outA,
                               Point<double, 3>& outB) {
    return closestPointsBetweenLines(a0, a1, b0, b1, outA, outB, false, false, false, false);
}
