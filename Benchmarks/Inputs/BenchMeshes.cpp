#include "Inputs/BenchMeshes.h"

namespace quarn::bench {

std::string MeshCase::name() const {
    return std::string(shape == Shape::Dome ? "dome/" : "wave/") + std::to_string(triangleCount) +
           (order == Order::InOrder ? "/in-order" : "/shuffled");
}

test::GridSize MeshCase::cells() const {
    if (triangleCount == 10'000) return {100, 50};
    if (triangleCount == 100'000) return {250, 200};
    return {800, 625};
}

const test::Mesh& meshOf(const MeshCase& mesh) {
    static PerMesh<test::Mesh> meshes;
    return meshes.get(mesh, [&] {
        auto made = std::make_unique<test::Mesh>(mesh.shape == Shape::Dome ? test::dome(mesh.cells())
                                                                           : test::wave(mesh.cells()));
        if (mesh.order == Order::Shuffled) test::shuffle(*made, 1);
        return made;
    });
}

const BenchScreen& screenOf(const MeshCase& mesh) {
    static PerMesh<BenchScreen> screens;
    return screens.get(mesh, [&] {
        auto screen = std::make_unique<BenchScreen>();
        screen->take(meshOf(mesh));
        screen->addScreenToScene();
        return screen;
    });
}

benchmark::internal::Benchmark* add(const std::string& subject, const MeshCase& mesh,
                                    const std::string& implementation, const Measure& measure) {
    const std::string name = subject + "/" + mesh.name() + "/" + implementation;
    return benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) { measure(state, mesh); });
}

}  // namespace quarn::bench
