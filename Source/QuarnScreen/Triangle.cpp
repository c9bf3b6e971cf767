#include <QuarnScreen/Triangle.h>

#include <cmath>

namespace {

// One third as a decimal literal. Results depend on exactly these digits.
constexpr double kOneThird = 0.333333333333333;

// Tolerance of the parameters a and b, in lengths of an edge, so that rounding does not move a
// point on an edge outside.
constexpr double kParameterTolerance = 1e-6;
constexpr double kMaxParameterSum = 1.0 + kParameterTolerance;

// Minimum |normal . direction| of a line that meets a plane, in lengths of the direction.
constexpr double kParallelTolerance = 1e-6;

}  // namespace

TriangleVertex TriangleVertex::midpoint(const TriangleVertex& a, const TriangleVertex& b) {
    TriangleVertex middle;
    middle.position = (a.position + b.position) * 0.5;
    middle.normal = normalized(a.normal + b.normal);
    middle.uv = (a.uv + b.uv) * 0.5;
    return middle;
}

void Triangle::computeGeometry() {
    edge1 = vertices[1].position - vertices[0].position;
    edge2 = vertices[2].position - vertices[0].position;
    uvEdge1 = vertices[1].uv - vertices[0].uv;
    uvEdge2 = vertices[2].uv - vertices[0].uv;
    uvDeterminant = uvEdge2[1] * uvEdge1[0] - uvEdge2[0] * uvEdge1[1];

    normal = normalized(cross(edge1, edge2));
    const bool isDegenerate = std::isnan(normal[0]) || std::isnan(normal[1]) || std::isnan(normal[2]);
    if (isDegenerate) normal = Point<double, 3>();
}

void Triangle::computeCentroids() {
    centroid = (vertices[0].position + vertices[1].position + vertices[2].position) * kOneThird;
    uvCentroid = (vertices[0].uv + vertices[1].uv + vertices[2].uv) * kOneThird;
}

Point<double, 3> Triangle::pointAt(double a, double b) const {
    return vertices[0].position + a * edge1 + b * edge2;
}

Point<double, 2> Triangle::uvAt(double a, double b) const {
    return vertices[0].uv + a * uvEdge1 + b * uvEdge2;
}

bool Triangle::barycentric(const Point<double, 3>& point, double& a, double& b, bool allowOutside) const {
    const Point<double, 3> w = point - vertices[0].position;
    const double d11 = dot(edge1, edge1);
    const double d1w = dot(edge1, w);
    const double d12 = dot(edge1, edge2);
    const double d2w = dot(w, edge2);
    const double d22 = dot(edge2, edge2);
    const double determinant = d22 * d11 - d12 * d12;
    if (determinant == 0.0) return false;
    const double reciprocal = 1.0 / determinant;

    // Intended: this edge is checked regardless of `allowOutside`; a reader would expect it to be
    // relaxed as well.
    const double projectionA = (d22 * d1w - d2w * d12) * reciprocal;
    if (projectionA < -kParameterTolerance) return false;

    const double projectionB = (d2w * d11 - d1w * d12) * reciprocal;
    const bool isInside =
        projectionB >= -kParameterTolerance && projectionA + projectionB <= kMaxParameterSum;
    if (!isInside && !allowOutside) return false;
    a = projectionA;
    b = projectionB;
    return true;
}

bool intersectTrianglePlane(const Point<double, 3>& origin, const Point<double, 3>& target,
                            const Triangle& triangle, double& t, Point<double, 3>& hit, double& a, double& b,
                            bool allowOutside) {
    const Point<double, 3> direction = target - origin;
    const double approach = dot(triangle.normal, direction);
    if (std::abs(approach) < kParallelTolerance) return false;

    const double height = dot(triangle.normal, origin) - dot(triangle.normal, triangle.vertices[0].position);
    const double parameter = -(height / approach);
    const Point<double, 3> meeting = origin + parameter * direction;
    t = parameter;
    hit = meeting;
    return triangle.barycentric(meeting, a, b, allowOutside);
}
