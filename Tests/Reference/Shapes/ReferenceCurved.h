/// \file
/// A curved screen in plain scalar arithmetic, to compare the library with bit for bit.
#pragma once

#include <optional>
#include <vector>

#include "Support/GeometryBits.h"

namespace quarn::test {

/// What a screen hands out for display.
struct DisplayGeometry {
    Point3 viewPoint;
    std::vector<int> indices;
    std::vector<Point3> vertices;
    std::vector<Point3> normals;
};

/// A row of a grid: from uStart to uEnd at one v.
struct GridRow {
    double v;
    double uStart;
    double uEnd;
    int count;
    int row;
    bool extrapolate;
};

using Samples = std::map<Point<int, 2>, Point3>;
using Outline = std::vector<std::vector<Point3>>;

/// What both curved shapes answer, written out number by number. It shares no code with the library
/// but its records.
struct ReferenceCurved {
    ReferenceCurved() = default;
    ReferenceCurved(const ReferenceCurved&) = default;
    ReferenceCurved& operator=(const ReferenceCurved&) = default;
    virtual ~ReferenceCurved() = default;

    double cx = 0.0;
    double cy = 0.0;
    double cz = 0.0;
    double radius = -1.0;
    double minTheta = 0.0;
    double maxTheta = 0.0;

    [[nodiscard]] virtual Point3 normalAt(const Point3& p) const = 0;
    [[nodiscard]] virtual bool isOnSection(const Point3& p) const = 0;
    [[nodiscard]] virtual Point2 uvOf(const Point3& p) const = 0;
    [[nodiscard]] virtual Point3 positionAt(double u, double v) const = 0;
    /// Hits on the surface without limits, after `from`.
    [[nodiscard]] virtual std::vector<Intersection> wallHits(const Point3& from, const Point3& to) const = 0;
    [[nodiscard]] virtual Samples samples(const GridRow& row) const = 0;
    [[nodiscard]] virtual std::vector<Point3> calibrationPoints(int columns, int rows) const = 0;
    [[nodiscard]] virtual Outline outline() const = 0;
    [[nodiscard]] virtual DisplayGeometry displayGeometry() const = 0;
    [[nodiscard]] virtual Point3 heading() const = 0;
    [[nodiscard]] virtual double maxAngle() const = 0;

    /// Hits on the section.
    [[nodiscard]] IntersectionSet hits(const Point3& from, const Point3& to) const;
    /// Hits on the surface without limits whose side is \p sign.
    [[nodiscard]] IntersectionSet hitsOfSide(const Point3& from, const Point3& to, int sign) const;
    [[nodiscard]] Point3 closestPoint(const Point3& p) const;
    [[nodiscard]] std::optional<Intersection> closestIntersection(const Point3& from, const Point3& direction,
                                                                  bool extrapolate) const;
};

/// 1, -1, or 0 for zero and NaN.
int signOfNumber(double number);

/// The factor from a screen's size to the y of its view position.
double viewFactor(double size);

/// The indices of two triangles for each cell of a grid of 100 by 100 vertices.
std::vector<int> gridIndices();

/// Whether a count of samples is one that an int holds; where it is not, there are none.
bool isCount(double count);

}  // namespace quarn::test
