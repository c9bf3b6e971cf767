/// \file
/// All indexes of a mesh, and the search for the triangle at a position, for comparison of times.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "Reference/Mesh/ReferenceBoundary.h"
#include "Reference/Mesh/ReferenceBounds.h"
#include "Reference/Mesh/ReferencePointInPolygon.h"
#include "Reference/Mesh/ReferenceTrees.h"
#include "Reference/Timed/ReferenceQuadtree.h"

namespace quarn::test {

/// Everything that a screen derives from its triangles, except the ray tracer's scene.
class ReferenceIndexes {
public:
    ReferenceIndexes() = default;
    explicit ReferenceIndexes(const std::vector<Triangle>& triangles) { build(triangles); }

    /// The triangles must outlive the searches.
    void build(const std::vector<Triangle>& triangles) {
        const std::vector<const Triangle*> pointers = pointersTo(triangles);
        centroidTree.build(pointers);
        uvTree.build(pointers);
        quadtree.build(triangles);
        boundary.emplace(triangles);
        bounds = ReferenceBounds(triangles);
    }

    /// Of the triangles that contain a position, the one with the nearest centroid. Null if there
    /// is none, or if the position lies outside of the boundary by the first triangle that is
    /// tested. Unlike ReferenceMesh it tests with the library's own plane test, so that times
    /// differ by the search alone.
    [[nodiscard]] const Triangle* findContaining(const Point<double, 3>& point) const {
        bool isOutsideChecked = !boundary->isSingleWithUV;
        const auto accept = [&](const Triangle* triangle) {
            double t = 0.0;
            double a = 0.0;
            double b = 0.0;
            Point<double, 3> hit;
            if (intersectTrianglePlane(point, point + triangle->normal, *triangle, t, hit, a, b, false) &&
                kContainmentDistance > std::abs(t))
                return true;
            if (isOutsideChecked) return false;
            const Point<double, 2> uv = triangle->uvAt(a, b);
            if (!bounds.contains(uv) || !referencePointInPolygon(boundary->boundary.uvPoints, uv[0], uv[1]))
                throw EndOfSearch();
            isOutsideChecked = true;
            return false;
        };
        try {
            return centroidTree.findNearestIf(point, accept);
        } catch (const EndOfSearch&) {
            return nullptr;
        }
    }

    ReferenceCentroidTree centroidTree;
    ReferenceUVTree uvTree;
    ReferenceQuadtree quadtree;
    std::optional<ReferenceBoundary> boundary;
    ReferenceBounds bounds;

private:
    struct EndOfSearch {};
    static constexpr double kContainmentDistance = 1e-5;  // in the mesh's unit
};

}  // namespace quarn::test
