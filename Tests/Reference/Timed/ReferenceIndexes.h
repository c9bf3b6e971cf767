/// \file
/// The indexes of a mesh written plainly, and the search for the triangle at a position.
#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <vector>

#include "Reference/Mesh/ReferenceBoundary.h"
#include "Reference/Mesh/ReferenceKDTree.h"
#include "Reference/Timed/ReferencePolygonScan.h"
#include "Reference/Timed/ReferenceQuadtree.h"

namespace quarn::bench {

struct CentroidKey {
    double operator()(const Triangle* triangle, int axis) const {
        return triangle->centroid[static_cast<std::size_t>(axis)];
    }
};
struct UVCentroidKey {
    double operator()(const Triangle* triangle, int axis) const {
        return triangle->uvCentroid[static_cast<std::size_t>(axis)];
    }
};
using PlainCentroidTree = test::PlainKDTree<const Triangle*, 3, CentroidKey>;
using PlainUVTree = test::PlainKDTree<const Triangle*, 2, UVCentroidKey>;

inline std::vector<const Triangle*> pointersTo(const std::vector<Triangle>& triangles) {
    std::vector<const Triangle*> pointers;
    pointers.reserve(triangles.size());
    for (const Triangle& triangle : triangles) pointers.push_back(&triangle);
    return pointers;
}

/// Extent of a mesh, and its centre by the areas of its triangles.
struct PlainBounds {
    PlainBounds() = default;
    explicit PlainBounds(const std::vector<Triangle>& triangles) {
        double total = 0.0;
        Point<double, 3> weighted;
        for (const Triangle& triangle : triangles) {
            for (const TriangleVertex& vertex : triangle.vertices) {
                grow(min, max, vertex.position);
                grow(uvMin, uvMax, vertex.uv);
            }
            const auto& [v0, v1, v2] = triangle.vertices;
            const double a = length(v1.position - v0.position);
            const double b = length(v2.position - v1.position);
            const double c = length(v0.position - v2.position);
            const double s = (a + b + c) * 0.5;
            const double area = std::sqrt(std::abs((s - a) * s * (s - b) * (s - c)));
            total += area;
            weighted = weighted + area * triangle.centroid;
        }
        if (total > 0.0) centroid = weighted / total;
    }

    template <std::size_t N>
    static void grow(Point<double, N>& low, Point<double, N>& high, const Point<double, N>& point) {
        for (std::size_t i = 0; i < N; ++i) {
            low[i] = std::min(low[i], point[i]);
            high[i] = std::max(high[i], point[i]);
        }
    }

    static constexpr double kGreatest = std::numeric_limits<double>::max();
    Point<double, 3> min{kGreatest, kGreatest, kGreatest};
    Point<double, 3> max{-kGreatest, -kGreatest, -kGreatest};
    Point<double, 2> uvMin{kGreatest, kGreatest};
    Point<double, 2> uvMax{-kGreatest, -kGreatest};
    Point<double, 3> centroid;
};

/// Everything that a screen derives from its triangles, but for the ray tracer's scene.
class PlainIndexes {
public:
    PlainIndexes() = default;
    explicit PlainIndexes(const std::vector<Triangle>& triangles) { build(triangles); }

    /// The triangles must outlive the searches.
    void build(const std::vector<Triangle>& triangles) {
        const std::vector<const Triangle*> pointers = pointersTo(triangles);
        centroidTree.build(pointers);
        uvTree.build(pointers);
        quadtree.build(triangles);
        outline.emplace(triangles);
        bounds = PlainBounds(triangles);
    }

    /// Of the triangles that hold a position, that with the nearest centroid; null where there is none, or where the
    /// first triangle that is looked at lies off the outline.
    [[nodiscard]] const Triangle* findContaining(const Point<double, 3>& point) const {
        bool isOutsideChecked = !outline->isSingleWithUV;
        const auto accept = [&](const Triangle* triangle) {
            double t = 0.0;
            double a = 0.0;
            double b = 0.0;
            Point<double, 3> hit;
            if (intersectTrianglePlane(point, point + triangle->normal, *triangle, t, hit, a, b, false) &&
                detail::kContainmentDistance > std::abs(t))
                return true;
            if (isOutsideChecked) return false;
            const Point<double, 2> uv = triangle->uvAt(a, b);
            if (!isInBounds(uv) || !isWithin(outline->boundary.uvPoints, uv)) throw EndOfSearch();
            isOutsideChecked = true;
            return false;
        };
        try {
            return centroidTree.findNearestIf(point, accept);
        } catch (const EndOfSearch&) {
            return nullptr;
        }
    }

    PlainCentroidTree centroidTree;
    PlainUVTree uvTree;
    PlainQuadtree quadtree;
    std::optional<test::PlainOutline> outline;
    PlainBounds bounds;

private:
    struct EndOfSearch {};
    static constexpr double detail::kContainmentDistance = 1e-5;  // in the mesh's unit

    [[nodiscard]] bool isInBounds(const Point<double, 2>& uv) const {
        return bounds.uvMin[0] <= uv[0] && uv[0] <= bounds.uvMax[0] && bounds.uvMin[1] <= uv[1] &&
               uv[1] <= bounds.uvMax[1];
    }
};

}  // namespace quarn::bench
