/// \file
/// A sphere section in plain scalar arithmetic.
#pragma once

#include "Reference/Shapes/ReferenceCurved.h"

namespace quarn::test {

struct ReferenceSphere : ReferenceCurved {
    double minPhi = 0.0;
    double maxPhi = 0.0;

    [[nodiscard]] Point3 normalAt(const Point3& p) const override;
    [[nodiscard]] bool isOnSection(const Point3& p) const override;
    [[nodiscard]] Point2 uvOf(const Point3& p) const override;
    [[nodiscard]] Point3 positionAt(double u, double v) const override;
    [[nodiscard]] std::vector<Intersection> wallHits(const Point3& from, const Point3& to) const override;
    [[nodiscard]] Samples samples(const GridRow& row) const override;
    [[nodiscard]] std::vector<Point3> calibrationPoints(int columns, int rows) const override;
    [[nodiscard]] Outline outline() const override;
    [[nodiscard]] DisplayGeometry displayGeometry() const override;
    [[nodiscard]] Point3 heading() const override;
    [[nodiscard]] double maxAngle() const override;

    /// Samples on the edges along which v changes.
    [[nodiscard]] int thetaSamples() const;
    /// Samples on the edges along which u changes.
    [[nodiscard]] int phiSamples() const;
    /// The larger of the two.
    [[nodiscard]] int outlineCount() const;
};

}  // namespace quarn::test
