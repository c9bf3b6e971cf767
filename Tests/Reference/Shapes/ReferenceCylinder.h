/// \file
/// A cylinder section in plain scalar arithmetic.
#pragma once

#include "Reference/Shapes/ReferenceCurved.h"

namespace quarn::test {

struct ReferenceCylinder : ReferenceCurved {
    double height = 0.0;

    [[nodiscard]] Point3 normalAt(const Point3& p) const override;
    /// \pre endsSectionTest()
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

    /// Samples on the top edge, and on the bottom edge.
    [[nodiscard]] int outlineCount() const;
    /// Whether the test of a position against the limits ends soon: it goes by whole turns.
    [[nodiscard]] bool endsSectionTest() const;
};

}  // namespace quarn::test
