#include "Support/Mesh/WildRays.h"

#include <cmath>
#include <cstddef>

#include "Support/Mesh/Sheets.h"

namespace quarn::test {
namespace {

// Triangles that share planes, edges and vertices, and some without an area.
Mesh looseTriangles(Rng& rng, int count) {
    Mesh mesh(static_cast<std::size_t>(count));
    for (Triangle& triangle : mesh)
        for (TriangleVertex& vertex : triangle.vertices) {
            vertex.position = rng.integerPoint(0, 3);
            vertex.uv = {rng.uniform(0.0, 1.0), rng.uniform(0.0, 1.0)};
        }
    return mesh;
}

// Gaps from less than the rounding of a float to a multiple of the step behind a hit.
Mesh nearSheets(Rng& rng) {
    std::vector<double> places;
    double y = 1.0;
    for (int i = rng.integer(1, 14); i > 0; --i) {
        places.push_back(y);
        y += std::ldexp(1.0, -rng.integer(1, 26));
    }
    return sheetsAt(places);
}

Mesh surface(Rng& rng) {
    switch (rng.integer(0, 3)) {
        case 0:
            return dome({12, 12});
        case 1:
            return flatGrid({8, 8});
        case 2:
            return nearSheets(rng);
        default:
            return looseTriangles(rng, rng.integer(1, 60));
    }
}

void appendCopies(Mesh& mesh, Rng& rng) {
    const std::size_t count = mesh.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (rng.integer(0, 3) == 0) continue;
        Triangle copy = mesh[i];
        std::swap(copy.vertices[0], copy.vertices[static_cast<std::size_t>(rng.integer(0, 2))]);
        mesh.push_back(copy);
    }
}

// A position on a triangle: anywhere, on an edge, or at a vertex.
Point3 targetOn(const Triangle& triangle, Rng& rng) {
    const auto& [v0, v1, v2] = triangle.vertices;
    const int kind = rng.integer(0, 3);
    if (kind == 0) return v1.position;
    if (kind == 1) return 0.5 * (v0.position + v2.position);
    const double a = rng.uniform(0.0, 1.0);
    const double b = kind == 2 ? 1.0 - a : rng.uniform(0.0, 1.0 - a);
    return v0.position + a * (v1.position - v0.position) + b * (v2.position - v0.position);
}

Ray rayAt(const Mesh& mesh, const Point3& eye, Rng& rng) {
    const auto any = [&]() -> const Triangle& {
        return mesh[static_cast<std::size_t>(rng.integer(0, static_cast<int>(mesh.size()) - 1))];
    };
    const Point3 target = targetOn(any(), rng);
    // From the middle of another edge, so that the ray may run within a plane.
    const Point3 origin =
        rng.integer(0, 3) == 0 ? targetOn(any(), rng) + 2.0 * (targetOn(any(), rng) - target) : eye;
    const double factor = rng.coin() ? 1.0 : std::ldexp(1.0, rng.integer(-16, 16));
    return {origin, origin + factor * (target - origin)};
}

}  // namespace

RayCase wildRayCase(Rng& rng, int rayCount) {
    RayCase result;
    result.mesh = surface(rng);
    if (rng.integer(0, 2) == 0) appendCopies(result.mesh, rng);
    Point3 eye(0.25, -2.0, 0.125);
    if (rng.integer(0, 3) == 0) {
        const double size = std::ldexp(1.0, rng.integer(4, 60));
        const Point3 offset(size, -0.5 * size, 0.25 * size);
        for (Triangle& triangle : result.mesh)
            for (TriangleVertex& vertex : triangle.vertices) vertex.position = vertex.position + offset;
        if (rng.coin()) eye = eye + offset;
    }
    for (Triangle& triangle : result.mesh) computeFields(triangle);
    for (int i = 0; i < rayCount; ++i) result.rays.push_back(rayAt(result.mesh, eye, rng));
    return result;
}

}  // namespace quarn::test
