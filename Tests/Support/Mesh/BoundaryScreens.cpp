#include "Support/Mesh/BoundaryScreens.h"

#include <cmath>
#include <cstddef>
#include <numbers>

namespace quarn::test {
namespace {

template <class MapUV>
void changeUV(Mesh& mesh, MapUV map) {
    for (Triangle& triangle : mesh) {
        for (TriangleVertex& vertex : triangle.vertices) vertex.uv = map(vertex.uv);
        computeFields(triangle);
    }
}

}  // namespace

void squeezeUV(Mesh& mesh, double low, double high) {
    changeUV(mesh, [=](const Point2& uv) {
        return Point2(low + uv[0] * (high - low), low + uv[1] * (high - low));
    });
}

void warpUV(Mesh& mesh, Rng& rng) {
    const double angle = rng.uniform(-std::numbers::pi, std::numbers::pi);
    const double size = rng.uniform(0.2, 1.6);
    const Point2 middle(rng.uniform(0.2, 0.8), rng.uniform(0.2, 0.8));
    changeUV(mesh, [=](const Point2& uv) {
        const Point2 offset = (uv - Point2(0.5, 0.5)) * size;
        return middle + Point2(offset[0] * std::cos(angle) - offset[1] * std::sin(angle),
                               offset[0] * std::sin(angle) + offset[1] * std::cos(angle));
    });
}

Mesh notchedGrid(const GridSize& size) {
    Mesh mesh = flatGrid(size);
    std::erase_if(mesh, [](const Triangle& triangle) {
        const Point2& middle = triangle.uvCentroid;
        return middle[0] > 1.0 / 3.0 && middle[0] < 2.0 / 3.0 && middle[1] < 0.5;
    });
    return mesh;
}

std::vector<Point2> rectangleUV(const Point2& low, const Point2& high) {
    return {low, {high[0], low[1]}, high, {low[0], high[1]}, low};
}

std::vector<Point2> anyOutline(Rng& rng) {
    const int corners = rng.integer(1, 24);
    const bool isOnLattice = rng.integer(0, 2) == 0;
    const bool crossesItself = rng.integer(0, 3) == 0;
    std::vector<Point2> outline;
    for (int i = 0; i < corners; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / corners * (crossesItself ? 2.0 : 1.0);
        const double radius = rng.uniform(0.1, 0.7);
        Point2 corner(0.5 + radius * std::cos(angle), 0.5 + radius * std::sin(angle));
        if (isOnLattice) corner = {std::round(corner[0] * 8.0) / 8.0, std::round(corner[1] * 8.0) / 8.0};
        outline.push_back(corner);
    }
    if (rng.coin()) outline.push_back(outline.front());
    return outline;
}

void scatterNormals(Mesh& mesh, Rng& rng) {
    const Point3 axis = normalized(rng.point(-1.0, 1.0));
    for (Triangle& triangle : mesh) {
        for (TriangleVertex& vertex : triangle.vertices) {
            if (rng.coin())
                vertex.normal = rng.coin() ? axis : Point3() - axis;
            else
                vertex.normal = normalized(rng.point(-1.0, 1.0));
        }
    }
}

}  // namespace quarn::test
