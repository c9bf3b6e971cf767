/// \file
/// A second way of computing all that a ruled screen answers.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <vector>

#include <QuarnScreen/RuledSurfaceScreen.h>

#include "Support/GeometryBits.h"

namespace quarn::test {

/// A ruled screen in plain scalar arithmetic: no operator of points, and nothing shared with the
/// screen.
class ReferenceRuled {
public:
    explicit ReferenceRuled(const RuledSurfaceScreenParams& params);

    [[nodiscard]] Point3 top(double t) const;
    [[nodiscard]] Point3 bottom(double t) const;
    [[nodiscard]] Point3 topDerivative(double t) const;
    [[nodiscard]] Point3 bottomDerivative(double t) const;
    [[nodiscard]] bool isLeft(double t, const Point3& from, const Point3& to) const;

    [[nodiscard]] std::optional<Intersection> hit(const Point3& from, const Point3& to,
                                                  bool extrapolate) const;
    [[nodiscard]] bool isOnSection(const Point3& p) const;
    [[nodiscard]] Point2 uvOf(const Point3& p) const;
    [[nodiscard]] Point3 position(double u, double v) const;
    [[nodiscard]] Point3 normal(const Point3& p) const;
    [[nodiscard]] Point3 closestPoint(const Point3& p) const;

    [[nodiscard]] Point3 eyepoint() const;
    [[nodiscard]] double maxAngle() const;
    [[nodiscard]] std::vector<Point3> calibrationPoints(int columns, int rows) const;
    [[nodiscard]] std::map<Point<int, 2>, Point3> samples(double v, double uStart, double uEnd, int count,
                                                          int row, bool extrapolate) const;
    [[nodiscard]] Point3 viewPoint() const;
    [[nodiscard]] std::vector<Point3> displayVertices() const;
    [[nodiscard]] std::vector<Point3> displayNormals() const;

    double width, height, topArc, bottomArc;
    double topRadius, bottomRadius, topCenterY, bottomCenterY, topZ, bottomZ;
    double searchHigh, searchLow;
    /// Lines that a screen would have logged by now.
    mutable int logLines = 0;

private:
    [[nodiscard]] double sine(double u, const Point3& p) const;
};

/// Bisection as the screen's normals use it, with the root as the answer of a search that accepts
/// it.
bool referenceBisect(const std::function<double(double)>& function, double& root, double low, double high,
                     int maxIterations, double tolerance, double acceptance);

}  // namespace quarn::test
