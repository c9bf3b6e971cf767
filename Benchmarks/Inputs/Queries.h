/// \file
/// The queries of the benchmarks, generated in advance: more of them than fit into a processor's
/// caches with their results.
#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>
#include <vector>

#include <QuarnScreen/Ray.h>

#include "Inputs/BenchMeshes.h"

namespace quarn::bench {

using Point2 = Point<double, 2>;
using Point3 = Point<double, 3>;

inline constexpr std::size_t kQuestions = 131'072;

/// Positions on random triangles.
[[nodiscard]] std::vector<Point3> positionsOnSurface(const MeshCase& mesh);
/// Positions at a random distance from random triangles, on either side.
[[nodiscard]] std::vector<Point3> positionsOffSurface(const MeshCase& mesh, double least, double greatest);

/// UVs inside of the mesh.
[[nodiscard]] std::vector<Point2> uvsInside();
/// UVs up to a hundredth outside of it, along all edges.
[[nodiscard]] std::vector<Point2> uvsJustOutside();

/// Rays from one eye point, in the order of the pixels of a picture. \pre a mesh in order
[[nodiscard]] std::vector<Ray> coherentRays(const MeshCase& mesh);
/// Rays from random places around the eye point to random triangles.
[[nodiscard]] std::vector<Ray> incoherentRays(const MeshCase& mesh);

/// Somewhere in a list, elsewhere each time, so that no repetition finds the memory as the one
/// before left it.
[[nodiscard]] std::size_t anyStart(std::size_t count);

/// Measures an operation that takes one input after the other.
template <class Inputs, class Operation>
void queryEach(benchmark::State& state, const Inputs& inputs, const Operation& operation) {
    std::size_t i = anyStart(inputs.size());
    for ([[maybe_unused]] auto _ : state) {
        operation(inputs[i]);
        if (++i == inputs.size()) i = 0;
    }
}

/// Returns the fraction of the first inputs for which two implementations have the same result.
template <class Inputs, class First, class Second>
double agreement(const Inputs& inputs, std::size_t count, const First& first, const Second& second) {
    std::size_t same = 0;
    for (std::size_t i = 0; i < count; ++i)
        if (first(inputs[i]) == second(inputs[i])) ++same;
    return static_cast<double>(same) / static_cast<double>(count);
}

inline constexpr std::size_t kChecked = 1000;
inline constexpr const char* kDisagreement = "other results than the library's";

}  // namespace quarn::bench
