#include "MeshBounds.h"

#include <algorithm>
#include <cmath>

namespace quarn::detail {
namespace {

constexpr double kMaxDouble = std::numeric_limits<double>::max();

template <std::size_t N, class Indices>
void grow(Point<double, N, Indices>& min, Point<double, N, Indices>& max,
          const Point<double, N, Indices>& point) {
    for (std::size_t i = 0; i < N; ++i) {
        min[i] = std::min(min[i], point[i]);
        max[i] = std::max(max[i], point[i]);
    }
}

// Source: Heron's formula. Rounding may make the product negative.
double areaOf(const Triangle& triangle) {
    const auto& [v0, v1, v2] = triangle.vertices;
    const double a = length(v1.position - v0.position);
    const double b = length(v2.position - v1.position);
    const double c = length(v0.position - v2.position);
    const double s = (a + b + c) * 0.5;
    return std::sqrt(std::abs((s - a) * s * (s - b) * (s - c)));
}

}  // namespace

MeshBounds boundsOf(const std::vector<Triangle>& triangles) {
    MeshBounds bounds;
    bounds.min = {kMaxDouble, kMaxDouble, kMaxDouble};
    bounds.max = {-kMaxDouble, -kMaxDouble, -kMaxDouble};
    bounds.uvMin = {kMaxDouble, kMaxDouble};
    bounds.uvMax = {-kMaxDouble, -kMaxDouble};
    double total = 0.0;
    Point<double, 3> weighted;
    for (const Triangle& triangle : triangles) {
        for (const TriangleVertex& corner : triangle.vertices) {
            grow(bounds.min, bounds.max, corner.position);
            grow(bounds.uvMin, bounds.uvMax, corner.uv);
        }
        const double area = areaOf(triangle);
        total += area;
        weighted = weighted + area * triangle.centroid;
    }
    if (total > 0.0) bounds.centroid = weighted / total;
    return bounds;
}

bool hasVaryingUV(const std::vector<Triangle>& triangles) {
    if (triangles.empty()) return false;
    const Point<double, 2>& reference = triangles.front().vertices[0].uv;
    return std::any_of(triangles.begin(), triangles.end(), [&reference](const Triangle& triangle) {
        return std::any_of(triangle.vertices.begin(), triangle.vertices.end(),
                           [&reference](const TriangleVertex& vertex) { return vertex.uv != reference; });
    });
}

}  // namespace quarn::detail
