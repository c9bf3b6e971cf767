#include "Reference/Mesh/ReferenceMesh.h"

#include <cmath>
#include <limits>
#include <utility>

#include "Reference/Mesh/ReferencePointInPolygon.h"
#include "Support/Conversions.h"

namespace quarn::test {
namespace {

constexpr double kGreatest = std::numeric_limits<double>::max();
constexpr int kSignal = 17;

// The foot of a position in a triangle, where the line along its stored normal meets it.
struct Foot {
    bool isInside = false;
    double t = 0.0;
    double a = 0.0;
    double b = 0.0;
};

Foot footOf(const Point3& at, const Triangle& triangle) {
    Foot foot;
    reference::Vec3 hit{};
    foot.isInside = reference::intersectPlane(plain(at), plain(at + triangle.normal), plain(triangle), foot.t,
                                              hit, foot.a, foot.b, false);
    return foot;
}

Point2 uvAt(const Triangle& triangle, double a, double b) {
    Point2 uv;
    for (std::size_t i = 0; i < 2; ++i)
        uv[i] = (triangle.vertices[0].uv[i] + a * triangle.uvEdge1[i]) + b * triangle.uvEdge2[i];
    return uv;
}

double distance(const Point3& a, const Point3& b) {
    const double x = a[0] - b[0];
    const double y = a[1] - b[1];
    const double z = a[2] - b[2];
    return std::sqrt(x * x + y * y + z * z);
}

double heronArea(const Triangle& triangle) {
    const auto& corners = triangle.vertices;
    const double a = distance(corners[0].position, corners[1].position);
    const double b = distance(corners[1].position, corners[2].position);
    const double c = distance(corners[2].position, corners[0].position);
    const double s = (a + b + c) * 0.5;
    return std::sqrt(std::fabs((s - a) * s * (s - b) * (s - c)));
}

double clampedToUnit(double number) {
    if (number < 0.0) return 0.0;
    if (number > 1.0) return 1.0;
    return number;
}

}  // namespace

PlainBounds::PlainBounds(const std::vector<Triangle>& triangles)
    : min(kGreatest, kGreatest, kGreatest),
      max(-kGreatest, -kGreatest, -kGreatest),
      uvMin(kGreatest, kGreatest),
      uvMax(-kGreatest, -kGreatest) {
    double total = 0.0;
    Point3 weighted;
    for (const Triangle& triangle : triangles) {
        for (const TriangleVertex& corner : triangle.vertices) {
            for (std::size_t i = 0; i < 3; ++i) {
                if (corner.position[i] < min[i]) min[i] = corner.position[i];
                if (corner.position[i] > max[i]) max[i] = corner.position[i];
            }
            for (std::size_t i = 0; i < 2; ++i) {
                if (corner.uv[i] < uvMin[i]) uvMin[i] = corner.uv[i];
                if (corner.uv[i] > uvMax[i]) uvMax[i] = corner.uv[i];
            }
        }
        const double area = heronArea(triangle);
        total += area;
        for (std::size_t i = 0; i < 3; ++i) weighted[i] += area * triangle.centroid[i];
    }
    if (total > 0.0)
        for (std::size_t i = 0; i < 3; ++i) centroid[i] = weighted[i] / total;
}

bool PlainBounds::holds(const Point2& uv) const {
    return uv[0] >= uvMin[0] && uv[0] <= uvMax[0] && uv[1] >= uvMin[1] && uv[1] <= uvMax[1];
}

PlainMesh::PlainMesh(const std::vector<Triangle>& mesh, std::vector<Point2> outlineInUV, bool isOutlineValid)
    : bounds(mesh), outline(std::move(outlineInUV)), hasOutline(isOutlineValid) {
    std::vector<const Triangle*> pointers;
    pointers.reserve(mesh.size());
    for (const Triangle& triangle : mesh) pointers.push_back(&triangle);
    tree.build(pointers);
}

PlainMesh::Search PlainMesh::searchHolding(const Point3& point) const {
    Search search;
    if (tree.root == nullptr) return search;
    bool outsideChecked = !hasOutline;
    const auto accept = [&](const Triangle* triangle) {
        const Foot foot = footOf(point, *triangle);
        if (foot.isInside && 1e-5 > std::fabs(foot.t)) return true;
        const Point2 uv = uvAt(*triangle, foot.a, foot.b);
        if (!search.firstRejectedUV) search.firstRejectedUV = uv;
        if (outsideChecked) return false;
        if (!bounds.holds(uv) || !plainPointWithinOutline(outline, uv[0], uv[1])) throw kSignal;
        outsideChecked = true;
        return false;
    };
    try {
        search.triangle = tree.findNearestIf(point, accept);
    } catch (int) {
        search.isEnded = true;
    }
    return search;
}

const Triangle* PlainMesh::findNearestCentroid(const Point3& point) const {
    return tree.findNearest(point);
}

Point3 PlainMesh::getScreenNormal(const Point3& point) const {
    const Triangle* const triangle = searchHolding(point).triangle;
    if (triangle == nullptr) return {};
    return triangle->normal;
}

bool PlainMesh::isOnScreenSection(const Point3& point) const {
    const Point3 normal = getScreenNormal(point);
    return !(normal[0] == 0.0 && normal[1] == 0.0 && normal[2] == 0.0);
}

Point3 PlainMesh::getClosestPoint(const Point3& point) const {
    const Triangle* const triangle = findNearestCentroid(point);
    if (triangle == nullptr) return {};
    const Foot foot = footOf(point, *triangle);
    if (!foot.isInside) return {};
    const double a = clampedToUnit(foot.a);
    const double b = clampedToUnit(foot.b);
    Point3 result;
    for (std::size_t i = 0; i < 3; ++i)
        result[i] = (triangle->vertices[0].position[i] + a * triangle->edge1[i]) + b * triangle->edge2[i];
    return result;
}

}  // namespace quarn::test
