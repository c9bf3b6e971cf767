/// \file
/// Reference implementation of a mesh's queries about positions: pointers, walks without boxes, and
/// tests one after the other.
#pragma once

#include <optional>
#include <vector>

#include <QuarnScreen/Triangle.h>

#include "Reference/Mesh/ReferenceBounds.h"
#include "Reference/Mesh/ReferenceTrees.h"

namespace quarn::test {

using Point2 = Point<double, 2>;
using Point3 = Point<double, 3>;

/// Slow and simple answers. The triangles must outlive it.
class ReferenceMesh {
public:
    /// What a search for the triangle that holds a position came to.
    struct Search {
        const Triangle* triangle = nullptr;
        std::optional<Point2> firstRejectedUV;  // of the first candidate that does not hold the position
        bool isEnded = false;                   // as that UV lies outside of the boundary
    };

    explicit ReferenceMesh(const std::vector<Triangle>& mesh) : ReferenceMesh(mesh, {}, false) {}
    ReferenceMesh(const std::vector<Triangle>& mesh, std::vector<Point2> outlineInUV, bool isOutlineValid);

    [[nodiscard]] Search searchHolding(const Point3& point) const;
    [[nodiscard]] const Triangle* findNearestCentroid(const Point3& point) const;
    [[nodiscard]] Point3 getScreenNormal(const Point3& point) const;
    [[nodiscard]] bool isOnScreenSection(const Point3& point) const;
    [[nodiscard]] Point3 getClosestPoint(const Point3& point) const;

    const ReferenceBounds bounds;

private:
    ReferenceCentroidTree tree;
    std::vector<Point2> outline;
    bool hasOutline;
};

}  // namespace quarn::test
