// Triangles whose stored fields do not fit together.
#include <cmath>
#include <utility>

#include "Support/Mesh/Meshes.h"
#include "Support/WildNumbers.h"

namespace quarn::test {
namespace {

Point<double, 3> turned(const Point<double, 3>& normal, Rng& rng) {
    const double angle = rng.coin() ? 1.0 : std::abs(rng.spread(-40, -4));
    return normalized(normal + rng.point(-angle, angle));
}

}  // namespace

void makeStale(Triangle& triangle, Stale kind, Rng& rng) {
    Point<double, 3>& edge = rng.coin() ? triangle.edge1 : triangle.edge2;
    switch (kind) {
        case Stale::ZeroNormal:
            triangle.normal = {};
            break;
        case Stale::ScaledNormal:
            triangle.normal = triangle.normal * rng.spread(-12, 12);
            break;
        case Stale::TurnedNormal:
            triangle.normal = turned(triangle.normal, rng);
            break;
        case Stale::SpecialNormal:
            triangle.normal = wildPoint<3>(rng);
            break;
        case Stale::ZeroEdge:
            edge = {};
            break;
        case Stale::ScaledEdges:
            triangle.edge1 = triangle.edge1 * rng.spread(-8, 8);
            triangle.edge2 = triangle.edge2 * rng.spread(-8, 8);
            break;
        case Stale::SpecialEdge:
            edge = wildPoint<3>(rng);
            break;
        case Stale::MovedCorners: {
            const Point<double, 3> shift = rng.point(-1.0, 1.0);
            for (TriangleVertex& vertex : triangle.vertices) vertex.position = vertex.position + shift;
            break;
        }
        case Stale::MovedCentroid:
            triangle.centroid = rng.coin() ? rng.point(-3.0, 3.0) : rng.spreadPoint();
            break;
        default:
            std::swap(triangle.vertices[0], triangle.vertices[static_cast<std::size_t>(rng.integer(1, 2))]);
            break;
    }
}

void makeStale(Mesh& mesh, Rng& rng, double share) {
    for (Triangle& triangle : mesh) {
        if (rng.uniform(0.0, 1.0) < share)
            makeStale(triangle, static_cast<Stale>(rng.integer(0, static_cast<int>(Stale::Count) - 1)), rng);
    }
}

}  // namespace quarn::test
