// The grid of a mesh whose boundary has 4,000 points, next to the reference implementation.
#include "Inputs/BenchMeshes.h"
#include "Reference/Mesh/ReferenceGrid.h"
#include "Reference/Timed/ReferenceLockedMapping.h"

namespace {

using quarn::bench::add;
using quarn::bench::BenchScreen;
using quarn::bench::forEachMesh;
using quarn::bench::MeshCase;
using quarn::bench::Order;
using quarn::bench::PerMesh;
using quarn::bench::Shape;
using quarn::test::GridSize;
using quarn::test::Point2;
using quarn::test::Point3;
using quarn::test::ReferenceIndexes;
using quarn::test::ReferenceLockedMapping;

// Cells of a mesh with 2,000 of them along two edges, and about the case's number of triangles.
GridSize cellsOf(const MeshCase& mesh) {
    if (mesh.triangleCount == 10'000) return {1997, 3};
    if (mesh.triangleCount == 100'000) return {1975, 25};
    return {1707, 293};
}

const BenchScreen& longScreenOf(const MeshCase& mesh) {
    static PerMesh<BenchScreen> screens;
    return screens.get(mesh, [&] {
        auto made = std::make_unique<BenchScreen>();
        made->take(mesh.shape == Shape::Dome ? quarn::test::dome(cellsOf(mesh))
                                             : quarn::test::wave(cellsOf(mesh)));
        made->addScreenToScene();
        return made;
    });
}

const ReferenceIndexes& referenceOf(const MeshCase& mesh) {
    static PerMesh<ReferenceIndexes> indexes;
    return indexes.get(mesh, [&] { return std::make_unique<ReferenceIndexes>(longScreenOf(mesh).mesh()); });
}

class GridByReference {
public:
    explicit GridByReference(const ReferenceIndexes& indexes)
        : boundary(indexes.boundary->boundary), mapping(indexes) {}

    void sampleGrid(MeshScreen::Polylines& grid, int density) {
        grid = quarn::test::referenceGrid(
            {[this](MeshScreen::Polylines& lines) { lines.push_back(boundary.points); },
             [this](std::vector<Point2>& uvs) { uvs = boundary.uvPoints; },
             [this](const Point2& uv, Point3& point) { return mapping.mapInto3D(uv, point, true); }},
            density);
    }

private:
    const Boundary& boundary;
    ReferenceLockedMapping mapping;
};

// Two densities in turn, so that no grid is had from the one before.
template <class Sampled>
void sampleAnew(benchmark::State& state, Sampled& sampled) {
    int density = 50;
    for ([[maybe_unused]] auto _ : state) {
        MeshScreen::Polylines grid;
        sampled.sampleGrid(grid, density);
        benchmark::DoNotOptimize(grid.data());
        density = density == 50 ? 51 : 50;
    }
}

void sampleByLibrary(benchmark::State& state, const MeshCase& mesh) {
    sampleAnew(state, longScreenOf(mesh));
}

void sampleByReference(benchmark::State& state, const MeshCase& mesh) {
    GridByReference plain(referenceOf(mesh));
    MeshScreen::Polylines expected;
    MeshScreen::Polylines found;
    longScreenOf(mesh).sampleGrid(expected, 50);
    plain.sampleGrid(found, 50);
    if (found != expected) return state.SkipWithError("another grid than the library's");
    sampleAnew(state, plain);
}

void addAll(const MeshCase& mesh) {
    add("grid", mesh, "library", sampleByLibrary);
    add("grid", mesh, "reference", sampleByReference);
}

[[maybe_unused]] const int kRegistered = forEachMesh(Order::InOrder, addAll);

}  // namespace
