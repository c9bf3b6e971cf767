#include "Reference/Mesh/ReferenceTransform.h"

#include <cmath>
#include <cstddef>

#include "Support/Conversions.h"

namespace quarn::test {
namespace {

struct Rotation {
    double m[3][3] = {};
};

Rotation about(double x, double y, double z, double angle) {
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double k = 1 - c;
    return {{{x * x * k + c, x * y * k - s * z, x * z * k + s * y},
             {x * y * k + s * z, y * y * k + c, y * z * k - s * x},
             {x * z * k - s * y, y * z * k + s * x, z * z * k + c}}};
}

Rotation times(const Rotation& a, const Rotation& b) {
    Rotation result;
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            for (int k = 0; k < 3; ++k) result.m[i][j] += a.m[i][k] * b.m[k][j];
    return result;
}

}  // namespace

std::vector<Triangle> referenceTransform(std::vector<Triangle> triangles, const Point<double, 3>& translation,
                                         const Point<double, 3>& rotation, double scale) {
    const Rotation a = about(0, 0, 1, rotation[0] * -0.017453292);
    const Rotation b = about(1, 0, 0, rotation[1] * 0.017453292);
    const Rotation c = about(0, 1, 0, rotation[2] * 0.017453292);
    const Rotation all = times(times(a, b), c);
    for (Triangle& triangle : triangles) {
        reference::Corners corners;
        for (std::size_t i = 0; i < 3; ++i) {
            const Point<double, 3> old = triangle.vertices[i].position;
            for (std::size_t row = 0; row < 3; ++row) {
                double sum = 0.0;
                for (std::size_t column = 0; column < 3; ++column)
                    sum += all.m[row][column] * (old[column] * scale);
                triangle.vertices[i].position[row] = sum + translation[row];
            }
            corners.position[i] = plain(triangle.vertices[i].position);
            corners.uv[i] = plain(triangle.vertices[i].uv);
        }
        const reference::Derived derived = reference::derive(corners);
        triangle.normal = point(derived.normal);
        triangle.edge1 = point(derived.edge1);
        triangle.edge2 = point(derived.edge2);
        triangle.uvEdge1 = point(derived.uvEdge1);
        triangle.uvEdge2 = point(derived.uvEdge2);
        triangle.uvDeterminant = derived.uvDeterminant;
        for (TriangleVertex& vertex : triangle.vertices) vertex.normal = triangle.normal;
    }
    return triangles;
}

}  // namespace quarn::test
