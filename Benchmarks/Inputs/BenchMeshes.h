/// \file
/// The meshes of the benchmarks, each made once, and how benchmarks of them are named.
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "Inputs/BenchScreen.h"
#include "Support/Mesh/Meshes.h"

namespace quarn::bench {

enum class Shape { Dome, Wave };
enum class Order { InOrder, Shuffled };

/// A mesh that a benchmark queries.
struct MeshCase {
    Shape shape;
    int triangleCount;
    Order order = Order::InOrder;

    /// As it appears in the benchmarks' names: SHAPE/TRIANGLES/ORDER.
    [[nodiscard]] std::string name() const;
    [[nodiscard]] test::GridSize cells() const;
};

/// The mesh; its triangles go row by row, or in random order.
[[nodiscard]] const test::Mesh& meshOf(const MeshCase& mesh);

/// A screen with the mesh, ready for queries.
[[nodiscard]] const BenchScreen& screenOf(const MeshCase& mesh);

/// Keeps what is built for a mesh: building takes longer than a query, and all repetitions query
/// the same object.
template <class Thing>
class PerMesh {
public:
    template <class Make>
    [[nodiscard]] const Thing& get(const MeshCase& mesh, const Make& make) {
        const std::lock_guard<std::mutex> lock(mutex);
        std::unique_ptr<Thing>& thing = things[mesh.name()];
        if (thing == nullptr) thing = make();
        return *thing;
    }

private:
    std::mutex mutex;  // benchmarks may run on several threads
    std::map<std::string, std::unique_ptr<Thing>> things;
};

/// Calls `action(mesh)` for each shape and size.
template <class Action>
int forEachMesh(Order order, const Action& action) {
    for (const Shape shape : {Shape::Dome, Shape::Wave})
        for (const int triangleCount : {10'000, 100'000, 1'000'000})
            action(MeshCase{shape, triangleCount, order});
    return 0;
}

using Measure = std::function<void(benchmark::State&, const MeshCase&)>;

/// Registers a benchmark as SUBJECT/SHAPE/TRIANGLES/ORDER/WAY; the ways of a subject are compared
/// with one another.
benchmark::internal::Benchmark* add(const std::string& subject, const MeshCase& mesh,
                                    const std::string& implementation, const Measure& measure);

}  // namespace quarn::bench
