/// \file
/// The time that it takes to load a file.
#pragma once

#include <chrono>
#include <memory>

#include "Inputs/BenchMeshes.h"
#include "Inputs/MeshFiles.h"

namespace quarn::bench {

/// Measures `load(file)` of a new `Way`, whose `count()` must be the given number of triangles
/// then.
template <class Way>
void measureLoad(benchmark::State& state, const MeshFile& file, int triangleCount) {
    using Clock = std::chrono::steady_clock;
    keepTracerOpen();
    for ([[maybe_unused]] auto _ : state) {
        const auto way = std::make_unique<Way>();
        const Clock::time_point start = Clock::now();
        way->load(file);
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
        if (way->count() != static_cast<std::size_t>(triangleCount))
            state.SkipWithError("another number of triangles");
    }
}

}  // namespace quarn::bench
