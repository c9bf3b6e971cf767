#include "Surface.h"

#include <algorithm>
#include <cmath>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/IsFinite.h>
#include <QuarnKit/Formats/GridMesh.h>
#include <QuarnScreen/MeshScreen.h>

namespace quarn {

namespace {

constexpr int kMaxCells = 1 << 20;
// Rows and columns of a grid that are looked at for its chord errors, spread from the first to the last: shapes are
// smooth.
constexpr int kMaxSampledLines = 64;

Point<double, 3> positionAt(const IScreenGeometry& screen, double u, double v) {
    Point<double, 3> position;
    static_cast<void>(screen.mapInto3D({u, v}, position, false));
    return position;
}

// How far edges of the grid's triangles are from the shape in their middle, by their direction.
struct ChordErrors {
    double alongU = 0.0;
    double alongV = 0.0;
    double diagonal = 0.0;

    [[nodiscard]] double greatest() const { return std::max(std::max(alongU, alongV), diagonal); }
};

// Numbers from 0 to \p count - 1, all of them or some.
std::vector<int> spread(int count) {
    std::vector<int> numbers;
    const int most = std::min(count, kMaxSampledLines);
    numbers.reserve(static_cast<std::size_t>(most));
    for (int i = 0; i < most; ++i) numbers.push_back(most == 1 ? 0 : i * (count - 1) / (most - 1));
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

std::vector<Corners> trianglesOf(const MeshDocument& mesh) {
    std::vector<Corners> triangles;
    triangles.reserve(mesh.faces.size());
    for (const detail::ObjFace& face : mesh.faces) {
        Corners& corners = triangles.emplace_back();
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
        if (!(errors.greatest() > accuracy) || isFull)
            return {.triangles = trianglesOf(gridMeshOf(screen, grid)), .chordError = errors.greatest()};
        // A diagonal errs by about as much as both directions do.
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

double sizeOf(const Screen& screen) {
    constexpr int kSteps = 16;
    Point<double, 3> low;
    Point<double, 3> high;
    if (const auto* mesh = dynamic_cast<const MeshScreen*>(screen.geometry.get())) {
        mesh->getBounds(&low, &high);
        return length(high - low);
    }
    low = high = positionAt(*screen.geometry, 0.0, 0.0);
    for (int i = 0; i <= kSteps; ++i)
        for (int k = 0; k <= kSteps; ++k) {
            const Point<double, 3> position = positionAt(*screen.geometry, static_cast<double>(i) / kSteps,
                                                         static_cast<double>(k) / kSteps);
            for (std::size_t axis = 0; axis < 3; ++axis) {
                low[axis] = std::min(low[axis], position[axis]);
                high[axis] = std::max(high[axis], position[axis]);
            }
        }
    return length(high - low);
}

Surface surfaceOf(const Screen& screen, double accuracy) {
    const auto* mesh = dynamic_cast<const MeshScreen*>(screen.geometry.get());
    Surface surface =
        mesh != nullptr ? surfaceOfMesh(*mesh) : surfaceOfAnalyticScreen(*screen.geometry, accuracy);
    const bool areFinite =
        std::all_of(surface.triangles.begin(), surface.triangles.end(), [](const Corners& triangle) {
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
