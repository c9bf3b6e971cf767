/// \file
/// A flat screen in plain scalar arithmetic, to compare the library with bit for bit.
#pragma once

#include <array>
#include <map>
#include <optional>
#include <vector>

#include "Support/GeometryBits.h"

namespace quarn::test {

/// The rectangle, written out number by number. It shares no code with the library but its records.
struct ReferenceFlat {
    double w;
    double h;

    [[nodiscard]] bool isOnSection(const Point3& p) const;
    [[nodiscard]] Point2 uvOf(const Point3& p) const;
    [[nodiscard]] Point3 positionAt(double u, double v) const;
    /// The hit on the endless plane.
    [[nodiscard]] std::optional<Intersection> planeHit(const Point3& from, const Point3& to) const;
    /// The hit on the rectangle.
    [[nodiscard]] std::optional<Intersection> hit(const Point3& from, const Point3& to) const;
    [[nodiscard]] std::map<Point<int, 2>, Point3> horizontalSamples(double v, double uStart, double uEnd,
                                                                    int count, int row,
                                                                    bool extrapolate) const;
    [[nodiscard]] std::vector<Point3> calibrationPoints(int columns, int rows) const;
    [[nodiscard]] Point3 closestPoint(const Point3& p) const;
    /// The hit nearest to a position, both ways along a direction.
    [[nodiscard]] std::optional<Intersection> closestIntersection(const Point3& from, const Point3& direction,
                                                                  bool extrapolate) const;
    /// Top left, top right, bottom left, bottom right.
    [[nodiscard]] std::array<Point3, 4> corners() const;
    [[nodiscard]] double longerSide() const;
    [[nodiscard]] Point3 viewPoint() const;
};

/// A set of the hit, or the empty set.
inline IntersectionSet asSet(const std::optional<Intersection>& hit) {
    return hit ? IntersectionSet(*hit) : IntersectionSet();
}

}  // namespace quarn::test
