#include "Reference/Mesh/ReferenceViews.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>

#include "Reference/Mesh/ReferenceTrees.h"
#include "Support/Conversions.h"

namespace quarn::test {
namespace {

constexpr double kGreatest = std::numeric_limits<double>::max();

double distance(const Point3& a, const Point3& b) {
    return reference::length({a[0] - b[0], a[1] - b[1], a[2] - b[2]});
}

reference::Vec3 unitFrom(const Point3& eye, const Point3& to) {
    return reference::normalized({to[0] - eye[0], to[1] - eye[1], to[2] - eye[2]});
}

template <class Tree>
Tree treeOver(const std::vector<Triangle>& triangles) {
    Tree tree;
    tree.build(pointersTo(triangles));
    return tree;
}

// Which points of a line are taken: every so many-th, and the last.
std::vector<Point3> thinned(const std::vector<Point3>& line, std::int64_t wanted) {
    std::uint64_t step = 1;
    if (wanted != 0) step = static_cast<std::uint64_t>(line.size()) / static_cast<std::uint64_t>(wanted);
    if (step == 0) step = 1;
    std::vector<Point3> taken;
    for (std::size_t i = 0; i < line.size(); ++i)
        if (i % step == 0 || i == line.size() - 1) taken.push_back(line[i]);
    return taken;
}

}  // namespace

std::vector<Point3> referencePointsByUV(const IScreenGeometry& screen, int columns, int rows) {
    std::vector<Point3> points;
    for (int r = 0; r < rows; ++r) {
        const double v = r * (1.0 / (static_cast<double>(rows) - 1.0));
        const auto map = [&](const Point2& uv, Point3& point) { return screen.mapInto3D(uv, point, false); };
        for (const auto& sample : referenceRow(map, v, 0.0, 1.0, columns, 1)) points.push_back(sample.second);
    }
    return points;
}

std::vector<Point3> referencePointsOfBoundary(const Lines& outline, const std::vector<Triangle>& triangles,
                                              int columns, int rows) {
    std::vector<Point3> points;
    if (outline.empty()) return points;
    for (const auto& line : outline)
        for (const Point3& point : thinned(line, (static_cast<std::int64_t>(rows) + columns) * 2 - 4))
            points.push_back(point);
    std::size_t at = 1;
    while (at < points.size()) {
        const Point3& a = points[at];
        const Point3& b = points[at - 1];
        if (a[0] == b[0] && a[1] == b[1] && a[2] == b[2])
            points.erase(points.begin() + static_cast<std::ptrdiff_t>(at));
        ++at;
    }
    if (columns < 3 && rows < 3) return points;
    double least = kGreatest;
    const TriangleVertex* nearest = nullptr;
    for (const Triangle& triangle : triangles) {
        for (const TriangleVertex& corner : triangle.vertices) {
            const Point3& p = corner.position;
            const double measure = std::fabs(p[0]) + std::fabs(p[1]) + std::fabs(p[2]);
            if (measure < least) {
                least = measure;
                nearest = &corner;
            }
        }
    }
    if (nearest != nullptr) points.push_back(nearest->position);
    return points;
}

Point3 referenceHeading(const std::vector<Triangle>& triangles, const Point3& eye) {
    reference::Vec3 sum = {};
    for (const Triangle& triangle : triangles) {
        for (const TriangleVertex& corner : triangle.vertices) {
            const reference::Vec3 unit = unitFrom(eye, corner.position);
            for (std::size_t i = 0; i < 3; ++i) sum[i] += unit[i];
        }
    }
    return point(reference::normalized(sum));
}

double referenceMaxAngle(const std::vector<Triangle>& triangles, const Point3& eye, const Point3& heading) {
    const reference::Vec3 h = reference::normalized(plain(heading));
    double greatest = 0.0;
    for (const Triangle& triangle : triangles) {
        for (const TriangleVertex& corner : triangle.vertices) {
            const double angle = std::acos(reference::dot(unitFrom(eye, corner.position), h));
            if (angle > greatest) greatest = angle;
        }
    }
    return greatest;
}

std::pair<Point3, Point3> referenceCrease(const std::vector<const Triangle*>& triangles) {
    std::pair<Point3, Point3> crease;
    double best = kGreatest;
    for (const Triangle* t1 : triangles) {
        for (const Triangle* t2 : triangles) {
            std::vector<Point3> shared;
            for (const TriangleVertex& v1 : t1->vertices)
                for (const TriangleVertex& v2 : t2->vertices)
                    if (distance(v1.position, v2.position) < 1e-6) shared.push_back(v1.position);
            if (shared.size() != 2) continue;
            const double d = reference::dot(plain(t1->normal), plain(t2->normal));
            if (best > d) {
                best = d;
                crease = {shared[0], shared[1]};
            }
        }
    }
    return crease;
}

Point3 referencePointOnEdge(const std::vector<Triangle>& triangles, int uvTreeDepth, const Point3& at) {
    const int n = uvTreeDepth < 5 ? uvTreeDepth : 5;
    if (triangles.size() < 100 * static_cast<std::size_t>(n)) return at;
    const auto tree = treeOver<ReferenceCentroidTree>(triangles);
    const auto [first, second] = referenceCrease(tree.findKNearest(at, n * 2));
    reference::Vec3 d = {};
    reference::Vec3 w = {};
    for (std::size_t i = 0; i < 3; ++i) {
        d[i] = second[i] - first[i];
        w[i] = at[i] - first[i];
    }
    const double t = reference::dot(d, w) / reference::dot(d, d);
    Point3 candidate = first;
    if (t > 1.0) candidate = second;
    if (0.0 <= t && t <= 1.0)
        for (std::size_t i = 0; i < 3; ++i) candidate[i] = first[i] + t * d[i];
    return distance(at, candidate) < 0.5 ? candidate : at;
}

int referenceUVTreeDepth(const std::vector<Triangle>& triangles) {
    return treeOver<ReferenceUVTree>(triangles).depth;
}

}  // namespace quarn::test
