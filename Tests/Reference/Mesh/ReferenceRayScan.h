/// \file
/// Reference implementation of the ray query: all triangles one after the other, in double
/// precision.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "Support/GeometryBits.h"
#include "Support/Mesh/Meshes.h"

namespace quarn::test {

/// Rounding of a position that passed through single precision, in a mesh of a few meters, across
/// the ray.
inline constexpr double kFloatRounding = 1e-5;

/// A triangle that a ray hits, or may hit by rounding.
struct ScannedHit {
    std::size_t triangle = 0;
    double t = 0.0;  // in lengths of the direction
    Point3 position;
    Point2 uv;
    double rounding = 0.0;  // of the position
    double slack = 0.0;     // the same in the parameters a and b
    bool isSure = false;    // no rounding can make it a miss
};

/// What a ray from \p start through \p end hits, nearest first. Distances are those of Moeller and
/// Trumbore.
inline std::vector<ScannedHit> scanRay(const Mesh& mesh, const Point3& start, const Point3& end) {
    constexpr double kMinCosine = 0.1;
    const Point3 direction = end - start;
    std::vector<ScannedHit> hits;
    for (std::size_t i = 0; i < mesh.size(); ++i) {
        const auto& [v0, v1, v2] = mesh[i].vertices;
        const Point3 edge1 = v1.position - v0.position;
        const Point3 edge2 = v2.position - v0.position;
        const Point3 normal = cross(edge1, edge2);
        const double determinant = -dot(normal, direction);
        const Point3 from = start - v0.position;
        const Point3 moment = cross(from, direction);
        const double a = dot(edge2, moment) / determinant;
        const double b = -dot(edge1, moment) / determinant;
        const double t = dot(from, normal) / determinant;
        const double longest = std::max(length(edge1), std::max(length(edge2), length(edge2 - edge1)));
        const double cosine = std::abs(determinant) / (length(normal) * length(direction));
        const double rounding = kFloatRounding / std::max(cosine, 1e-3);
        const double slack = rounding * longest / length(normal);
        const double least = std::min(a, std::min(b, 1.0 - a - b));
        if (!(least >= -slack) || !(t * length(direction) >= -kFloatRounding)) continue;
        ScannedHit hit;
        hit.triangle = i;
        hit.t = t;
        hit.position = start + t * direction;
        hit.uv = v0.uv + a * (v1.uv - v0.uv) + b * (v2.uv - v0.uv);
        hit.rounding = rounding;
        hit.slack = slack;
        hit.isSure = least > slack && cosine > kMinCosine && t * length(direction) > kFloatRounding;
        hits.push_back(hit);
    }
    std::sort(hits.begin(), hits.end(), [](const ScannedHit& x, const ScannedHit& y) { return x.t < y.t; });
    return hits;
}

}  // namespace quarn::test
