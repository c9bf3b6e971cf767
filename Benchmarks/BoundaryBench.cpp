// The boundary of a mesh, next to two ordered multimaps of edges: the time, and the memory at its
// peak.
#include "Inputs/BenchMeshes.h"
#include "Measuring/CountedMemory.h"
#include "Reference/Mesh/ReferenceBoundary.h"

namespace {

using quarn::bench::add;
using quarn::bench::forEachMesh;
using quarn::bench::MemoryCount;
using quarn::bench::MeshCase;
using quarn::bench::meshOf;
using quarn::bench::Order;

using FindBoundary = void (*)(const std::vector<Triangle>&);

void findByLibrary(const std::vector<Triangle>& triangles) {
    Boundary boundary;
    benchmark::DoNotOptimize(MeshScreen::findBoundaryNew(triangles, boundary));
}

void findByReference(const std::vector<Triangle>& triangles) {
    const quarn::test::ReferenceBoundary boundary(triangles);
    benchmark::DoNotOptimize(boundary.isSingleWithUV);
}

void measure(benchmark::State& state, const MeshCase& mesh, FindBoundary find) {
    const std::vector<Triangle>& triangles = meshOf(mesh);
    for ([[maybe_unused]] auto _ : state) find(triangles);
}

void measureMemory(benchmark::State& state, const MeshCase& mesh, FindBoundary find) {
    const std::vector<Triangle>& triangles = meshOf(mesh);
    for ([[maybe_unused]] auto _ : state) {
        const MemoryCount count;
        find(triangles);
        state.counters["bytes_per_triangle"] =
            static_cast<double>(MemoryCount::peak()) / static_cast<double>(triangles.size());
    }
}

void addImplementation(const MeshCase& mesh, const char* implementation, FindBoundary find) {
    add("boundary", mesh, implementation,
        [=](auto& state, auto& meshCase) { measure(state, meshCase, find); });
    add("boundary-memory", mesh, implementation, [=](auto& state, auto& meshCase) {
        measureMemory(state, meshCase, find);
    })->Iterations(1);
}

void addWays(const MeshCase& mesh) {
    addImplementation(mesh, "library", findByLibrary);
    addImplementation(mesh, "reference", findByReference);
}

[[maybe_unused]] const int kRegistered =
    forEachMesh(Order::InOrder, addWays) + forEachMesh(Order::Shuffled, addWays);

}  // namespace
