#include "Support/Mesh/MeshCases.h"

#include <array>
#include <cmath>
#include <cstddef>

#include "Support/WildNumbers.h"

namespace quarn::test {
namespace {

// Distances from a triangle's plane, around the limit of 1e-5.
double anyHeight(Rng& rng) {
    constexpr std::array kFactors = {0.0, 0.5, 0.999999, 1.0, 1.000001, 1.5, 2.0};
    const double height = kFactors[static_cast<std::size_t>(rng.integer(0, 6))] * 1e-5;
    const double moved = rng.integer(0, 3) == 0 ? std::nextafter(height, rng.coin() ? 1.0 : 0.0) : height;
    return rng.coin() ? moved : -moved;
}

// Parameters of the corners, the edges, the inside, and around the slack of 1e-6.
double anyParameter(Rng& rng) {
    constexpr std::array kUsual = {0.0,      0.5,      1.0,      0.333333333333333, -1e-6,
                                   -0.99e-6, -1.01e-6, 1.000001, 1.0000009};
    if (rng.integer(0, 2) == 0) return rng.uniform(0.0, 1.0);
    return kUsual[static_cast<std::size_t>(rng.integer(0, static_cast<int>(kUsual.size()) - 1))];
}

double anyOtherParameter(Rng& rng, double first) {
    if (rng.coin()) return anyParameter(rng);
    return rng.coin() ? 1.0 - first : rng.uniform(0.0, 1.0 - first);
}

Point3 roundedToFloat(Point3 position) {
    for (std::size_t i = 0; i < 3; ++i) {
        if (std::abs(position[i]) < 1e38) position[i] = static_cast<double>(static_cast<float>(position[i]));
    }
    return position;
}

GridSize anyGrid(Rng& rng) {
    const int columns = 2 * rng.integer(1, 4);
    return {columns, rng.integer(1, 7)};
}

}  // namespace

Mesh anyShape(Rng& rng) {
    const GridSize size = anyGrid(rng);
    switch (rng.integer(0, 9)) {
        case 0:
            return flatGrid(size);
        case 1:
            return cylinderSection(size);
        case 2:
            return dome(size);
        case 3:
            return dome(size, kHalfSphere);
        case 4:
            return wave(size);
        case 5:
            return foldedSheet(size.columns, rng.coin() ? 0.1 : 1e-5, size.rows);
        case 6:
            return gridWithHoles({size.columns + 2, 4}, rng.integer(1, 2));
        case 7:
            return gridWithSeam(size);
        case 8:
            return separatePieces(rng.integer(2, 3), size);
        default:
            return soup(rng, rng.integer(1, 60), rng.coin() ? 0.3 : 1e-4);
    }
}

Mesh anyMesh(Rng& rng) {
    Mesh mesh = anyShape(rng);
    if (rng.integer(0, 3) == 0) scale(mesh, std::abs(rng.spread(-70, 70)));
    if (rng.integer(0, 15) == 0) scale(mesh, std::abs(rng.spread()));
    if (rng.integer(0, 3) == 0) duplicate(mesh, rng, rng.integer(1, 20));
    switch (rng.integer(0, 5)) {
        case 0:
            twistUV(mesh);
            break;
        case 1:
            foldUV(mesh);
            break;
        case 2:
            stripUV(mesh);
            break;
        default:
            break;
    }
    if (rng.coin()) shuffle(mesh, rng.integer(0, 1000));
    if (rng.integer(0, 2) == 0) makeStale(mesh, rng, rng.coin() ? 0.1 : 0.6);
    return mesh;
}

const Triangle& anyOf(const Mesh& mesh, Rng& rng) {
    return mesh[static_cast<std::size_t>(rng.integer(0, static_cast<int>(mesh.size()) - 1))];
}

Point3 questionAround(const Triangle& triangle, Rng& rng) {
    const double a = anyParameter(rng);
    const double b = anyOtherParameter(rng, a);
    Point3 position = triangle.pointAt(a, b);
    // A stored normal that leans has a plane of its own through corner 0, and that is what counts.
    if (rng.coin()) {
        const Point3 offCorner = position - triangle.vertices[0].position;
        const Point3& normal = triangle.normal;
        position = position - (dot(normal, offCorner) / dot(normal, normal)) * normal;
    }
    position = position + anyHeight(rng) * triangle.normal;
    return rng.integer(0, 3) == 0 ? roundedToFloat(position) : position;
}

Point3 anyQuestion(const Mesh& mesh, Rng& rng) {
    switch (rng.integer(0, 15)) {
        case 0:
            return rng.point(-6.0, 6.0);
        case 1:
            return wildPoint<3>(rng);
        case 2:
            return anyOf(mesh, rng).centroid;
        case 3:
            return anyOf(mesh, rng).vertices[static_cast<std::size_t>(rng.integer(0, 2))].position;
        default:
            return questionAround(anyOf(mesh, rng), rng);
    }
}

}  // namespace quarn::test
