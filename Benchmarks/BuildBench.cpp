// Making a screen ready for queries, next to the reference indexes. The ray tracer's part is on one
// thread in both.
#include "Inputs/BenchMeshes.h"
#include "Measuring/OneCpu.h"
#include "Reference/Timed/ReferenceIndexes.h"
#include "Reference/Timed/ReferenceScene.h"

namespace {

using quarn::bench::add;
using quarn::bench::BenchScreen;
using quarn::bench::forEachMesh;
using quarn::bench::keepTracerOpen;
using quarn::bench::MeshCase;
using quarn::bench::meshOf;
using quarn::bench::Order;
using quarn::bench::processSeconds;
using quarn::test::ReferenceIndexes;
using quarn::test::ReferenceScene;

// Each time a new object, since the memory of an old one would be had for less.
template <class Prepare>
void measure(benchmark::State& state, const Prepare& prepare) {
    keepTracerOpen();
    for ([[maybe_unused]] auto _ : state) {
        const auto prepared = prepare();
        const double start = processSeconds();
        prepared->build();
        state.SetIterationTime(processSeconds() - start);
    }
}

struct ByLibrary {
    explicit ByLibrary(const MeshCase& mesh) { screen.take(meshOf(mesh)); }
    void build() { screen.addScreenToScene(); }

    BenchScreen screen;
};

struct ByReference {
    explicit ByReference(const MeshCase& mesh) : triangles(meshOf(mesh)) {}
    void build() {
        indexes.build(triangles);
        scene.upload(triangles);
    }

    std::vector<Triangle> triangles;
    ReferenceIndexes indexes;
    ReferenceScene scene;
};

// The part that is the same in both.
struct TracerAlone {
    explicit TracerAlone(const MeshCase& mesh) : triangles(meshOf(mesh)) {}
    void build() { scene.upload(triangles); }

    const std::vector<Triangle>& triangles;
    ReferenceScene scene;
};

template <class Built>
void addImplementation(const MeshCase& mesh, const char* implementation) {
    add("build", mesh, implementation, [](benchmark::State& state, const MeshCase& meshCase) {
        measure(state, [&] { return std::make_unique<Built>(meshCase); });
    })->UseManualTime();
}

void addAll(const MeshCase& mesh) {
    addImplementation<ByLibrary>(mesh, "library");
    addImplementation<ByReference>(mesh, "reference");
    addImplementation<TracerAlone>(mesh, "tracer-alone");
}

[[maybe_unused]] const int kRegistered =
    quarn::bench::stayOnOneCpu() + forEachMesh(Order::InOrder, addAll) + forEachMesh(Order::Shuffled, addAll);

}  // namespace
