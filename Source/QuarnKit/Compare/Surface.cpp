#include "Surface.h"

#include <algorithm>
#include <cmath>

#include <QuarnKit/Base/Bounds.h>
#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/IsFinite.h>
#include <QuarnKit/Formats/GridMesh.h>
#include <QuarnScreen/MeshScreen.h>

namespace quarn {

namespace {

constexpr int kMaxCells = 1 << 20;
// Rows and columns of a grid to sample for chord errors, evenly spaced. Analytic screens are
// smooth.
constexpr int kMaxSampledLines = 64;

Point<double, 3> positionAt(const IScreenGeometry& screen, double u, double v) {
    Point<double, 3> position;
    static_cast<void>(screen.mapInto3D({u, v}, position, false));
    return position;
}

// Distances between the midpoints of a grid's edges and the surface, by the direction of the edges.
struct ChordErrors {
    double alongU = 0.0;
    double alongV = 0.0;
    double diagonal = 0.0;

    [[nodiscard]] double max() const { return std::max(std::max(alongU, alongV), diagonal); }
};

// Returns the numbers from 0 to count - 1, or kMaxSampledLines evenly spaced ones of them.
std::vector<int> spread(int count) {
    std::vector<int> numbers;
    const int size = std::min(count, kMaxSampledLines);
    numbers.reserve(static_cast<std::size_t>(size));
    for (int i = 0; i < size; ++i) numbers.push_back(size == 1 ? 0 : i * (count - 1) / (size - 1));
    return numbers;
}

ChordErrors chordErrorsOf(const IScreenGeometry& screen, const GridSize& grid) {
    ChordErrors errors;
    const double du = 1.0 / grid.columns;
    const double dv = 1.0 / grid.rows;
    const auto errorOf = [&](double u, double v, double stepU, double stepV) {
        const Point<double, 3> middle =
            (positionAt(screen, u, v) + positionAt(screen, u + stepU, v + stepV)) * 0.5;
        return length(positionAt(screen, u + stepU * 0.5, v + stepV * 0.5) - middle);
    };
    for (const int row : spread(grid.rows))
        for (const int column : spread(grid.columns)) {
            const double u = column * du;
            const double v = row * dv;
            errors.alongU = std::max(errors.alongU, errorOf(u, v, du, 0.0));
            errors.alongV = std::max(errors.alongV, errorOf(u, v, 0.0, dv));
            errors.diagonal = std::max(errors.diagonal, errorOf(u, v, du, dv));
        }
    return errors;
}

std::vector<TriangleCorners> trianglesOf(const MeshDocument& mesh) {
    std::vector<TriangleCorners> triangles;
    triangles.reserve(mesh.faces.size());
    for (const detail::ObjFace& face : mesh.faces) {
        TriangleCorners& corners = triangles.emplace_back();
        for (std::size_t i = 0; i < face.size(); ++i) {
            const auto& [x, y, z] = mesh.positions[static_cast<std::size_t>(face.at(i).vertex)];
            corners.at(i) = {x, y, z};
        }
    }
    return triangles;
}

Surface surfaceOfAnalyticScreen(const IScreenGeometry& screen, double accuracy) {
    GridSize grid{.rows = 1, .columns = 1};
    for (;;) {
        const ChordErrors errors = chordErrorsOf(screen, grid);
        const bool isFull = grid.rows * grid.columns >= kMaxCells;
        if (!(errors.max() > accuracy) || isFull)
            return {.triangles = trianglesOf(gridMeshOf(screen, grid)), .chordError = errors.max()};
        // The error along a diagonal is about the sum of both directions.
        const double part = accuracy / 2.0;
        const bool isFine = errors.alongU <= part && errors.alongV <= part;
        if (errors.alongU > part || isFine) grid.columns *= 2;
        if (errors.alongV > part || isFine) grid.rows *= 2;
    }
}

Surface surfaceOfMesh(const MeshScreen& mesh) {
    std::vector<Triangle> triangles;
    mesh.getTesselation(triangles);
    Surface surface;
    surface.triangles.reserve(triangles.size());
    for (const Triangle& triangle : triangles) {
        const auto& [a, b, c] = triangle.vertices;
        surface.triangles.push_back({a.position, b.position, c.position});
    }
    return surface;
}

}  // namespace

bool isAnalytic(const Screen& screen) {
    return dynamic_cast<const MeshScreen*>(screen.geometry.get()) == nullptr;
}

double sizeOf(const Screen& screen) {
    constexpr int kSteps = 16;
    if (const auto* mesh = dynamic_cast<const MeshScreen*>(screen.geometry.get())) {
        Point<double, 3> min;
        Point<double, 3> max;
        mesh->getBounds(&min, &max);
        return length(max - min);
    }
    Bounds<3> bounds(positionAt(*screen.geometry, 0.0, 0.0));
    for (int i = 0; i <= kSteps; ++i)
        for (int k = 0; k <= kSteps; ++k)
            bounds.include(positionAt(*screen.geometry, static_cast<double>(i) / kSteps,
                                      static_cast<double>(k) / kSteps));
    return length(bounds.extent());
}

Surface surfaceOf(const Screen& screen, double accuracy) {
    const auto* mesh = dynamic_cast<const MeshScreen*>(screen.geometry.get());
    Surface surface =
        mesh != nullptr ? surfaceOfMesh(*mesh) : surfaceOfAnalyticScreen(*screen.geometry, accuracy);
    const bool areFinite =
        std::all_of(surface.triangles.begin(), surface.triangles.end(), [](const TriangleCorners& triangle) {
            return std::all_of(triangle.begin(), triangle.end(),
                               [](const auto& corner) { return isFinite(corner); });
        });
    if (surface.triangles.empty() || !areFinite)
        throw Error({.found = "found no surface, or positions that are not finite as floats",
                     .expected = "a screen with a surface",
                     .file = screen.file});
    return surface;
}

}  // namespace quarn
