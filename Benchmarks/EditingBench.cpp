// Changes of a mesh with the building of its indexes, next to the reference implementation.
#include <cmath>

#include "Inputs/BenchMeshes.h"
#include "Measuring/OneCpu.h"
#include "Reference/Timed/ReferenceEditing.h"

namespace {

using quarn::bench::add;
using quarn::bench::BenchScreen;
using quarn::bench::forEachMesh;
using quarn::bench::MeshCase;
using quarn::bench::meshOf;
using quarn::bench::Order;
using quarn::bench::PerMesh;
using quarn::bench::processSeconds;
using quarn::bench::Shape;
using quarn::test::GridSize;
using quarn::test::Mesh;
using quarn::test::ReferenceEditing;

// A mesh with a hundredth of the case's triangles, and the length of edges that makes about all of
// them again.
struct Coarse {
    Mesh mesh;
    double maxEdgeLength;
};

Mesh coarseMesh(const MeshCase& mesh) {
    const int count = mesh.triangleCount;
    const GridSize cells = count == 1'000'000 ? GridSize{100, 50}
                           : count == 100'000 ? GridSize{25, 20}
                                              : GridSize{10, 5};
    return mesh.shape == Shape::Dome ? quarn::test::dome(cells) : quarn::test::wave(cells);
}

double lengthForPieces(const Mesh& mesh, int count) {
    const double longest = length(mesh.front().edge2);
    double few = longest;
    double many = longest / 64.0;
    for (int step = 0; step < 16; ++step) {
        const double middle = std::sqrt(few * many);
        const bool areMany = ReferenceEditing::countPieces(mesh, middle) > static_cast<std::size_t>(count);
        (areMany ? many : few) = middle;
    }
    return many;
}

const Coarse& coarseOf(const MeshCase& mesh) {
    static PerMesh<Coarse> coarse;
    return coarse.get(mesh, [&] {
        auto made = std::make_unique<Coarse>();
        made->mesh = coarseMesh(mesh);
        made->maxEdgeLength = lengthForPieces(made->mesh, mesh.triangleCount);
        return made;
    });
}

// A mesh with its indexes, by each implementation.
class LibraryEditing : public BenchScreen {
public:
    explicit LibraryEditing(const Mesh& mesh) {
        take(mesh);
        initTriangleData();
    }
};

// Each time a new mesh; what it takes to make that does not count.
template <class Edited, class Change>
void measure(benchmark::State& state, const Mesh& mesh, const Change& change) {
    for ([[maybe_unused]] auto _ : state) {
        const auto edited = std::make_unique<Edited>(mesh);
        const double start = processSeconds();
        change(*edited);
        state.SetIterationTime(processSeconds() - start);
    }
}

template <class Edited>
void addImplementation(const MeshCase& mesh, const char* implementation) {
    add("refine", mesh, implementation, [](benchmark::State& state, const MeshCase& meshCase) {
        const Coarse& coarse = coarseOf(meshCase);
        measure<Edited>(state, coarse.mesh, [&](Edited& edited) { edited.refine(coarse.maxEdgeLength); });
    })->UseManualTime();
    add("transform", mesh, implementation, [](benchmark::State& state, const MeshCase& meshCase) {
        measure<Edited>(state, meshOf(meshCase), [](Edited& edited) {
            edited.applyTransform({0.1, 0.2, 0.3}, {10.0, 20.0, 30.0}, 1.1);
        });
    })->UseManualTime();
}

void addAll(const MeshCase& mesh) {
    addImplementation<LibraryEditing>(mesh, "library");
    addImplementation<ReferenceEditing>(mesh, "reference");
}

[[maybe_unused]] const int kRegistered = forEachMesh(Order::InOrder, addAll);

}  // namespace
