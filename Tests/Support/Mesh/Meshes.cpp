#include "Support/Mesh/Meshes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>

namespace quarn::test {
namespace {

using Point2 = Point<double, 2>;
using Point3 = Point<double, 3>;

TriangleVertex vertexAt(const Point3& position, const Point2& uv) {
    TriangleVertex vertex;
    vertex.position = position;
    vertex.uv = uv;
    return vertex;
}

Triangle triangleOfVertices(const TriangleVertex& v0, const TriangleVertex& v1, const TriangleVertex& v2) {
    Triangle triangle;
    triangle.vertices = {v0, v1, v2};
    computeFields(triangle);
    return triangle;
}

Point3 onSheet(const SheetSize& sheet, double u, double v) {
    return {(u - 0.5) * sheet.width, 0.0, (0.5 - v) * sheet.height};
}

// Applies a function from UV to UV at every corner.
template <class MapUV>
void changeUV(Mesh& mesh, MapUV map) {
    for (Triangle& triangle : mesh) {
        for (TriangleVertex& vertex : triangle.vertices) vertex.uv = map(vertex.uv);
        computeFields(triangle);
    }
}

}  // namespace

Mesh gridOnSurface(const GridSize& size, const std::function<Point3(double, double)>& surface) {
    const auto rowOf = [&](int row) {
        std::vector<TriangleVertex> vertices;
        const double v = static_cast<double>(row) / size.rows;
        for (int column = 0; column <= size.columns; ++column) {
            const double u = static_cast<double>(column) / size.columns;
            vertices.push_back(vertexAt(surface(u, v), {u, v}));
        }
        return vertices;
    };
    Mesh mesh;
    mesh.reserve(2 * static_cast<std::size_t>(size.columns) * static_cast<std::size_t>(size.rows));
    std::vector<TriangleVertex> above = rowOf(0);
    for (int row = 1; row <= size.rows; ++row) {
        std::vector<TriangleVertex> below = rowOf(row);
        for (std::size_t left = 0; left + 1 < above.size(); ++left) {
            mesh.push_back(triangleOfVertices(above[left], below[left], below[left + 1]));
            mesh.push_back(triangleOfVertices(above[left], below[left + 1], above[left + 1]));
        }
        above = std::move(below);
    }
    return mesh;
}

Mesh flatGrid(const GridSize& size, const SheetSize& sheet) {
    return gridOnSurface(size, [&](double u, double v) { return onSheet(sheet, u, v); });
}

Mesh cylinderSection(const GridSize& size, double radius, double height, double angle) {
    return gridOnSurface(size, [&](double u, double v) {
        const double theta = (u - 0.5) * angle;
        return Point3(radius * std::sin(theta), radius * std::cos(theta), (0.5 - v) * height);
    });
}

Mesh dome(const GridSize& size, const DomeShape& shape) {
    return gridOnSurface(size, [&](double u, double v) {
        const double theta = shape.minTheta + u * (shape.maxTheta - shape.minTheta);
        const double phi = shape.maxPhi - v * (shape.maxPhi - shape.minPhi);
        return shape.radius *
               Point3(std::cos(phi) * std::sin(theta), std::cos(phi) * std::cos(theta), std::sin(phi));
    });
}

Mesh wave(const GridSize& size, double height) {
    constexpr double kTurn = 2.0 * std::numbers::pi;
    return gridOnSurface(size, [&](double u, double v) {
        Point3 position = onSheet({}, u, v);
        position[1] = height * std::sin(kTurn * u) * std::cos(kTurn * v);
        return position;
    });
}

Mesh foldedSheet(int layers, double gap, int rows, const SheetSize& sheet) {
    // Two columns of vertices for each layer: on its left and on its right.
    const int columns = 2 * layers - 1;
    return gridOnSurface({columns, rows}, [&](double u, double v) {
        const int column = static_cast<int>(std::lround(u * columns));
        const int layer = column / 2;
        const bool isOnRight = (column % 2 == 1) == (layer % 2 == 0);
        Point3 position = onSheet(sheet, isOnRight ? 1.0 : 0.0, v);
        position[1] = layer * gap;
        return position;
    });
}

Mesh gridWithHoles(const GridSize& size, int holes) {
    Mesh mesh = flatGrid(size);
    for (int hole = holes - 1; hole >= 0; --hole) {
        const int column = (2 * hole + 1) * size.columns / (2 * holes);
        const int cell = size.rows / 2 * size.columns + column;
        const auto first = mesh.begin() + std::ptrdiff_t{2} * cell;
        mesh.erase(first, first + 2);
    }
    return mesh;
}

Mesh gridWithSeam(const GridSize& size) {
    Mesh mesh = flatGrid(size);
    for (Triangle& triangle : mesh) {
        const bool isOnRight = triangle.uvCentroid[0] > 0.5;
        for (TriangleVertex& vertex : triangle.vertices)
            vertex.uv[0] = vertex.uv[0] * 0.8 + (isOnRight ? 0.2 : 0.0);
        computeFields(triangle);
    }
    return mesh;
}

Mesh separatePieces(int pieces, const GridSize& size) {
    Mesh mesh;
    for (int piece = 0; piece < pieces; ++piece) {
        for (Triangle triangle : flatGrid(size)) {
            for (TriangleVertex& vertex : triangle.vertices) {
                vertex.position[0] += 5.0 * piece;
                vertex.uv[0] = (0.8 * vertex.uv[0] + piece) / pieces;
            }
            computeFields(triangle);
            mesh.push_back(triangle);
        }
    }
    return mesh;
}

Mesh soup(Rng& rng, int count, double reach) {
    Mesh mesh;
    for (int i = 0; i < count; ++i) {
        const Point3 middle = rng.point(-1.0, 1.0);
        Triangle triangle;
        for (TriangleVertex& vertex : triangle.vertices) {
            const Point3 uv = rng.point(0.0, 1.0);
            vertex = vertexAt(middle + rng.point(-reach, reach), {uv[0], uv[1]});
        }
        computeFields(triangle);
        mesh.push_back(triangle);
    }
    return mesh;
}

Triangle wholeTriangle(const Point3& p0, const Point3& p1, const Point3& p2) {
    return triangleOfVertices(vertexAt(p0, {0.0, 0.0}), vertexAt(p1, {1.0, 0.0}), vertexAt(p2, {0.0, 1.0}));
}

void computeFields(Triangle& triangle) {
    triangle.computeGeometry();
    triangle.computeCentroids();
    for (TriangleVertex& vertex : triangle.vertices) vertex.normal = triangle.normal;
}

void computeFields(Mesh& mesh) {
    for (Triangle& triangle : mesh) computeFields(triangle);
}

void shuffle(Mesh& mesh, int seed) {
    Rng rng(seed);
    for (std::size_t left = mesh.size(); left > 1; --left)
        std::swap(mesh[left - 1], mesh[static_cast<std::size_t>(rng.bits() % left)]);
}

void stripUV(Mesh& mesh) {
    changeUV(mesh, [](const Point2&) { return kNoUV; });
}

void twistUV(Mesh& mesh) {
    changeUV(mesh, [](const Point2& uv) {
        return Point2(0.5 + (uv[0] - 0.5) * std::cos(std::numbers::pi * uv[1]), uv[1]);
    });
}

void foldUV(Mesh& mesh) {
    changeUV(mesh, [](const Point2& uv) { return Point2(std::abs(2.0 * uv[0] - 1.0), uv[1]); });
}

void scale(Mesh& mesh, double factor) {
    for (Triangle& triangle : mesh)
        for (TriangleVertex& vertex : triangle.vertices) vertex.position = vertex.position * factor;
    computeFields(mesh);
}

void duplicate(Mesh& mesh, Rng& rng, int count) {
    if (mesh.empty()) return;
    for (int i = 0; i < count; ++i) {
        Triangle copy = mesh[static_cast<std::size_t>(rng.integer(0, static_cast<int>(mesh.size()) - 1))];
        if (rng.coin()) {
            std::swap(copy.vertices[1], copy.vertices[2]);
            computeFields(copy);
        }
        mesh.push_back(copy);
    }
}

}  // namespace quarn::test
