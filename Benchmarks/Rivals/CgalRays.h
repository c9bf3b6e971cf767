/// \file
/// Rays through a mesh, by CGAL's tree of boxes.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include <QuarnScreen/Triangle.h>

namespace quarn::bench {

/// Takes numbers of double precision as they are, which is CGAL's fastest variant.
class CgalRays {
public:
    struct Hit {
        Point<double, 3> position;
        std::size_t triangle;
        double squaredDistance;  // from the ray's start
    };

    explicit CgalRays(const std::vector<Triangle>& triangles);
    CgalRays(const CgalRays&) = delete;
    CgalRays& operator=(const CgalRays&) = delete;
    ~CgalRays();

    /// All hits of the ray from \p start through \p end, nearest first.
    [[nodiscard]] std::vector<Hit> intersect(const Point<double, 3>& start,
                                             const Point<double, 3>& end) const;

private:
    struct Tree;
    std::unique_ptr<Tree> tree;
};

}  // namespace quarn::bench
