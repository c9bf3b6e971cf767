/// \file
/// Inputs of the benchmarks, and the loop over them.
#pragma once

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <random>

#include <QuarnScreen/Point.h>

namespace quarn::bench {

inline constexpr std::size_t kInputs = 1024;  // a power of two, so that taking turns costs nothing

/// Positions within a box around a middle, the same for each run.
inline std::array<Point<double, 3>, kInputs> makePositions(unsigned int seed, const Point<double, 3>& middle,
                                                           const Point<double, 3>& halfSize) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> within(-1.0, 1.0);
    std::array<Point<double, 3>, kInputs> positions;
    for (auto& position : positions)
        for (std::size_t i = 0; i < 3; ++i) position[i] = middle[i] + halfSize[i] * within(random);
    return positions;
}

/// UV pairs of the unit square, the same for each run.
inline std::array<Point<double, 2>, kInputs> makeUVs(unsigned int seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    std::array<Point<double, 2>, kInputs> uvs;
    for (auto& uv : uvs)
        for (std::size_t i = 0; i < 2; ++i) uv[i] = unit(random);
    return uvs;
}

/// Measures an operation that takes the index of an input.
template <class Operation>
void repeat(benchmark::State& state, const Operation& operation) {
    std::size_t i = 0;
    for ([[maybe_unused]] auto _ : state) {
        operation(i);
        i = (i + 1) % kInputs;
    }
}

}  // namespace quarn::bench
