// CGAL's headers are slow to compile, so they stay in this file.
#include "Rivals/CgalRays.h"

#include <CGAL/AABB_traits.h>
#include <CGAL/AABB_tree.h>
#include <CGAL/AABB_triangle_primitive.h>
#include <CGAL/Simple_cartesian.h>

#include <algorithm>
#include <iterator>

namespace quarn::bench {
namespace {

using Kernel = CGAL::Simple_cartesian<double>;
using Triangles = std::vector<Kernel::Triangle_3>;
using Primitive = CGAL::AABB_triangle_primitive<Kernel, Triangles::const_iterator>;
using BoxTree = CGAL::AABB_tree<CGAL::AABB_traits<Kernel, Primitive>>;
using Found = BoxTree::Intersection_and_primitive_id<Kernel::Ray_3>::Type;

Kernel::Point_3 toCgal(const Point<double, 3>& point) {
    return {point[0], point[1], point[2]};
}

Triangles toCgal(const std::vector<Triangle>& triangles) {
    Triangles copies;
    copies.reserve(triangles.size());
    for (const Triangle& triangle : triangles) {
        const auto& [a, b, c] = triangle.vertices;
        copies.emplace_back(toCgal(a.position), toCgal(b.position), toCgal(c.position));
    }
    return copies;
}

}  // namespace

struct CgalRays::Tree {
    explicit Tree(const std::vector<Triangle>& mesh)
        : triangles(toCgal(mesh)), boxes(triangles.cbegin(), triangles.cend()) {
        boxes.build();
    }

    Triangles triangles;
    BoxTree boxes;
};

CgalRays::CgalRays(const std::vector<Triangle>& triangles) : tree(std::make_unique<Tree>(triangles)) {}
CgalRays::~CgalRays() = default;

std::vector<CgalRays::Hit> CgalRays::intersect(const Point<double, 3>& start,
                                               const Point<double, 3>& end) const {
    const Kernel::Point_3 origin = toCgal(start);
    std::vector<Found> found;
    tree->boxes.all_intersections(Kernel::Ray_3(origin, toCgal(end)), std::back_inserter(found));
    std::vector<Hit> hits;
    for (const Found& each : found) {
        // A ray within a triangle's plane meets it in a segment.
        const auto* const point = boost::get<Kernel::Point_3>(&each.first);
        if (point == nullptr) continue;
        hits.push_back({{point->x(), point->y(), point->z()},
                        static_cast<std::size_t>(each.second - tree->triangles.cbegin()),
                        CGAL::squared_distance(origin, *point)});
    }
    std::sort(hits.begin(), hits.end(),
              [](const Hit& a, const Hit& b) { return a.squaredDistance < b.squaredDistance; });
    return hits;
}

}  // namespace quarn::bench
