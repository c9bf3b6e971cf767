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

using FindOutline = void (*)(const std::vector<Triangle>&);

void findByLibrary(const std::vector<Triangle>& triangles) {
    Boundary boundary;
    benchmark::DoNotOptimize(MeshScreen::findBoundaryNew(triangles, boundary));
}

void findByReference(const std::vector<Triangle>& triangles) {
    const quarn::test::ReferenceBoundary outline(triangles);
    benchmark::DoNotOptimize(outline.isSingleWithUV);
}

void measure(benchmark::State& state, const MeshCase& mesh, FindOutline find) {
    const std::vector<Triangle>& triangles = meshOf(mesh);
    for ([[maybe_unused]] auto _ : state) find(triangles);
}

void measureMemory(benchmark::State& state, const MeshCase& mesh, FindOutline find) {
    const std::vector<Triangle>& triangles = meshOf(mesh);
    for ([[maybe_unused]] auto _ : state) {
        const MemoryCount count;
        find(triangles);
        state.counters["bytes_per_triangle"] =
            static_cast<double>(MemoryCount::peak()) / static_cast<double>(triangles.size());
    }
}

void addWay(const MeshCase& mesh, const char* way, FindOutline find) {
    add("boundary", mesh, way, [=](auto& state, auto& asked) { measure(state, asked, find); });
    add("boundary-memory", mesh, way, [=](auto& state, auto& asked) {
        measureMemory(state, asked, find);
    })->Iterations(1);
}

void addWays(const MeshCase& mesh) {
    addWay(mesh, "library", findByLibrary);
    addWay(mesh, "reference", findByReference);
}

[[maybe_unused]] const int kRegistered =
    forEachMesh(Order::InOrder, addWays) + forEachMesh(Order::Shuffled, addWays);

}  // namespace
