#include "Reference/Mesh/ReferenceMesh.h"

#include <cmath>
#include <utility>

#include "Reference/Mesh/ReferencePointInPolygon.h"
#include "Support/Conversions.h"

namespace quarn::test {
namespace {

constexpr int kSignal = 17;

// The projection of a position onto a triangle, where the line along its stored normal meets it.
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

double clampedToUnit(double number) {
    if (number < 0.0) return 0.0;
    if (number > 1.0) return 1.0;
    return number;
}

}  // namespace

ReferenceMesh::ReferenceMesh(const std::vector<Triangle>& mesh, std::vector<Point2> outlineInUV,
                             bool isOutlineValid)
    : bounds(mesh), outline(std::move(outlineInUV)), hasOutline(isOutlineValid) {
    tree.build(pointersTo(mesh));
}

ReferenceMesh::Search ReferenceMesh::searchHolding(const Point3& point) const {
    Search search;
    if (tree.root == nullptr) return search;
    bool outsideChecked = !hasOutline;
    const auto accept = [&](const Triangle* triangle) {
        const Foot foot = footOf(point, *triangle);
        if (foot.isInside && 1e-5 > std::fabs(foot.t)) return true;
        const Point2 uv = uvAt(*triangle, foot.a, foot.b);
        if (!search.firstRejectedUV) search.firstRejectedUV = uv;
        if (outsideChecked) return false;
        if (!bounds.contains(uv) || !referencePointInPolygon(outline, uv[0], uv[1])) throw kSignal;
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

const Triangle* ReferenceMesh::findNearestCentroid(const Point3& point) const {
    return tree.findNearest(point);
}

Point3 ReferenceMesh::getScreenNormal(const Point3& point) const {
    const Triangle* const triangle = searchHolding(point).triangle;
    if (triangle == nullptr) return {};
    return triangle->normal;
}

bool ReferenceMesh::isOnScreenSection(const Point3& point) const {
    const Point3 normal = getScreenNormal(point);
    return !(normal[0] == 0.0 && normal[1] == 0.0 && normal[2] == 0.0);
}

Point3 ReferenceMesh::getClosestPoint(const Point3& point) const {
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
