/// \file
/// Flat sheets one behind the other, and where a ray through them hits.
#pragma once

#include <cmath>
#include <vector>

#include <QuarnScreen/IntersectionSet.h>

#include "Support/Mesh/Meshes.h"

namespace quarn::test {

/// Sheets across the Y axis, of two triangles each, in the order of their places.
inline Mesh sheetsAt(const std::vector<double>& places) {
    Mesh mesh;
    for (const double y : places) {
        for (Triangle triangle : flatGrid({1, 1})) {
            for (TriangleVertex& vertex : triangle.vertices) vertex.position[1] = y;
            computeFields(triangle);
            mesh.push_back(triangle);
        }
    }
    return mesh;
}

/// A position that every sheet has, away from the diagonal where two triangles touch.
inline Point<double, 3> onRay(double y) {
    return {0.3, y, 0.1};
}

/// Places of the hits to one decimal: their positions are in single precision.
inline std::vector<double> placesOf(const IntersectionSet& hits) {
    std::vector<double> places;
    for (const Intersection& hit : hits) places.push_back(std::round(hit.point[1] * 10.0) / 10.0);
    return places;
}

}  // namespace quarn::test
