#include "Reference/Mesh/ReferenceBounds.h"

#include <cmath>
#include <cstddef>
#include <limits>

namespace quarn::test {
namespace {

constexpr double kGreatest = std::numeric_limits<double>::max();

double distance(const Point3& a, const Point3& b) {
    const double x = a[0] - b[0];
    const double y = a[1] - b[1];
    const double z = a[2] - b[2];
    return std::sqrt(x * x + y * y + z * z);
}

double heronArea(const Triangle& triangle) {
    const auto& corners = triangle.vertices;
    const double a = distance(corners[0].position, corners[1].position);
    const double b = distance(corners[1].position, corners[2].position);
    const double c = distance(corners[2].position, corners[0].position);
    const double s = (a + b + c) * 0.5;
    return std::sqrt(std::fabs((s - a) * s * (s - b) * (s - c)));
}

}  // namespace

ReferenceBounds::ReferenceBounds(const std::vector<Triangle>& triangles)
    : min(kGreatest, kGreatest, kGreatest),
      max(-kGreatest, -kGreatest, -kGreatest),
      uvMin(kGreatest, kGreatest),
      uvMax(-kGreatest, -kGreatest) {
    double total = 0.0;
    Point3 weighted;
    for (const Triangle& triangle : triangles) {
        for (const TriangleVertex& corner : triangle.vertices) {
            for (std::size_t i = 0; i < 3; ++i) {
                if (corner.position[i] < min[i]) min[i] = corner.position[i];
                if (corner.position[i] > max[i]) max[i] = corner.position[i];
            }
            for (std::size_t i = 0; i < 2; ++i) {
                if (corner.uv[i] < uvMin[i]) uvMin[i] = corner.uv[i];
                if (corner.uv[i] > uvMax[i]) uvMax[i] = corner.uv[i];
            }
        }
        const double area = heronArea(triangle);
        total += area;
        for (std::size_t i = 0; i < 3; ++i) weighted[i] += area * triangle.centroid[i];
    }
    if (total > 0.0)
        for (std::size_t i = 0; i < 3; ++i) centroid[i] = weighted[i] / total;
}

bool ReferenceBounds::contains(const Point2& uv) const {
    return uv[0] >= uvMin[0] && uv[0] <= uvMax[0] && uv[1] >= uvMin[1] && uv[1] <= uvMax[1];
}

}  // namespace quarn::test
