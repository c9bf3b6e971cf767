/// \file
/// The time that it takes to load a file.
#pragma once

#include <chrono>
#include <memory>

#include "Inputs/BenchMeshes.h"
#include "Inputs/MeshFiles.h"

namespace quarn::bench {

/// Measures `load(file)` of a new `Implementation`, whose `count()` must be the given number of
/// triangles then.
template <class Implementation>
void measureLoad(benchmark::State& state, const MeshFile& file, int triangleCount) {
    using Clock = std::chrono::steady_clock;
    keepTracerOpen();
    for ([[maybe_unused]] auto _ : state) {
        const auto implementation = std::make_unique<Implementation>();
        const Clock::time_point start = Clock::now();
        implementation->load(file);
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
        if (implementation->count() != static_cast<std::size_t>(triangleCount))
            state.SkipWithError("another number of triangles");
    }
}

}  // namespace quarn::bench
