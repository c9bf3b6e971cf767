/// \file
/// A plain second way to answer a mesh's questions about positions: pointers, walks without boxes, and tests one after
/// the other.
#pragma once

#include <optional>
#include <vector>

#include <QuarnScreen/Triangle.h>

#include "Reference/Mesh/ReferenceKDTree.h"

namespace quarn::test {

using Point2 = Point<double, 2>;
using Point3 = Point<double, 3>;

struct PlainCentroid {
    double operator()(const Triangle* triangle, int axis) const {
        return triangle->centroid[static_cast<std::size_t>(axis)];
    }
};

/// Extent and centre of a mesh.
struct PlainBounds {
    explicit PlainBounds(const std::vector<Triangle>& triangles);

    [[nodiscard]] bool holds(const Point2& uv) const;

    Point3 min;
    Point3 max;
    Point2 uvMin;
    Point2 uvMax;
    Point3 centroid;
};

/// Slow and simple answers. The triangles must outlive it.
class PlainMesh {
public:
    /// What a search for the triangle that holds a position came to.
    struct Search {
        const Triangle* triangle = nullptr;
        std::optional<Point2> firstRejectedUV;  // of the first candidate that does not hold the position
        bool isEnded = false;                   // as that UV lies outside of the outline
    };

    explicit PlainMesh(const std::vector<Triangle>& mesh) : PlainMesh(mesh, {}, false) {}
    PlainMesh(const std::vector<Triangle>& mesh, std::vector<Point2> outlineInUV, bool isOutlineValid);

    [[nodiscard]] Search searchHolding(const Point3& point) const;
    [[nodiscard]] const Triangle* findNearestCentroid(const Point3& point) const;
    [[nodiscard]] Point3 getScreenNormal(const Point3& point) const;
    [[nodiscard]] bool isOnScreenSection(const Point3& point) const;
    [[nodiscard]] Point3 getClosestPoint(const Point3& point) const;

    const PlainBounds bounds;

private:
    PlainKDTree<const Triangle*, 3, PlainCentroid> tree;
    std::vector<Point2> outline;
    bool hasOutline;
};

}  // namespace quarn::test
