// A flat screen's operations through the contract, each compared with the same arithmetic written
// inline.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

#include <QuarnScreen/FlatScreen.h>

#include "Inputs/BenchInputs.h"
#include "Reference/Timed/ReferenceFlatFormulas.h"

namespace {

using quarn::bench::kInputs;
using quarn::bench::repeat;
using quarn::test::ReferenceFlatFormulas;

constexpr double kWidth = 4.0;
constexpr double kHeight = 3.0;
constexpr int kGridLines = 9;
// Both sides sum in another order, in meters.
constexpr double kSamePosition = 1e-12;

// Behind the contract, so that no compiler knows the type.
std::unique_ptr<const IScreenGeometry> makeScreen() {
    std::unique_ptr<const IScreenGeometry> screen = std::make_unique<FlatScreen>(kWidth, kHeight);
    benchmark::DoNotOptimize(screen);
    return screen;
}

// The size is unknown to the compiler, as it is in the library.
ReferenceFlatFormulas makeInlineScreen() {
    ReferenceFlatFormulas screen{kWidth, kHeight};
    benchmark::DoNotOptimize(screen);
    return screen;
}

// Positions around the wall and on the viewer's side of it.
const auto kPoints = quarn::bench::makePositions(1, {0.0, -3.0, 0.0}, {3.0, 1.0, 2.0});
const auto kTargets = quarn::bench::makePositions(2, {0.0, -3.0, 0.0}, {3.0, 1.0, 2.0});

bool same(const Point<double, 3>& a, const Point<double, 3>& b) {
    return length(a - b) < kSamePosition * (1.0 + length(a));
}

void mapInto2DLibrary(benchmark::State& state) {
    const auto screen = makeScreen();
    repeat(state, [&](std::size_t i) { benchmark::DoNotOptimize(screen->mapInto2D(kPoints[i], true)); });
}

void mapInto2DInline(benchmark::State& state) {
    const ReferenceFlatFormulas wall = makeInlineScreen();
    if (makeScreen()->mapInto2D(kPoints[0], true) != wall.mapInto2D(kPoints[0]))
        return state.SkipWithError("other UV than the library's");
    repeat(state, [&](std::size_t i) { benchmark::DoNotOptimize(wall.mapInto2D(kPoints[i])); });
}

void mapInto3DLibrary(benchmark::State& state) {
    const auto screen = makeScreen();
    repeat(state, [&](std::size_t i) {
        Point<double, 3> point;
        benchmark::DoNotOptimize(screen->mapInto3D({kPoints[i][0], kPoints[i][2]}, point, true));
        benchmark::DoNotOptimize(point);
    });
}

void mapInto3DInline(benchmark::State& state) {
    const ReferenceFlatFormulas wall = makeInlineScreen();
    Point<double, 3> expected;
    makeScreen()->mapInto3D({0.25, 0.75}, expected, true);
    if (!same(expected, wall.mapInto3D({0.25, 0.75})))
        return state.SkipWithError("another position than the library's");
    repeat(state, [&](std::size_t i) {
        benchmark::DoNotOptimize(wall.mapInto3D({kPoints[i][0], kPoints[i][2]}));
    });
}

void intersectLibrary(benchmark::State& state) {
    const auto screen = makeScreen();
    repeat(state,
           [&](std::size_t i) { benchmark::DoNotOptimize(screen->intersect(kPoints[i], kTargets[i])); });
}

void intersectInline(benchmark::State& state) {
    const ReferenceFlatFormulas wall = makeInlineScreen();
    const auto screen = makeScreen();
    for (std::size_t i = 0; i < kInputs; ++i) {
        Point<double, 3> hit;
        const bool hits = wall.intersect(kPoints[i], kTargets[i], hit);
        const IntersectionSet expected = screen->intersect(kPoints[i], kTargets[i]);
        if (hits == expected.empty() || (hits && !same(expected.first().point, hit)))
            return state.SkipWithError("other hits than the library's");
    }
    repeat(state, [&](std::size_t i) {
        Point<double, 3> hit;
        benchmark::DoNotOptimize(wall.intersect(kPoints[i], kTargets[i], hit));
        benchmark::DoNotOptimize(hit);
    });
}

void sampleGridLibrary(benchmark::State& state) {
    const auto screen = makeScreen();
    repeat(state, [&](std::size_t) {
        IScreenGeometry::Polylines grid;
        screen->sampleGrid(grid, kGridLines);
        benchmark::DoNotOptimize(grid);
    });
}

void sampleGridInline(benchmark::State& state) {
    const ReferenceFlatFormulas wall = makeInlineScreen();
    IScreenGeometry::Polylines expected;
    makeScreen()->sampleGrid(expected, kGridLines);
    std::vector<Point<double, 3>> positions;
    wall.sampleGrid(positions, kGridLines);
    if (!std::equal(positions.begin(), positions.end(), expected[0].begin(), expected[0].end(), same))
        return state.SkipWithError("another grid than the library's");
    repeat(state, [&](std::size_t) {
        std::vector<Point<double, 3>> grid;
        wall.sampleGrid(grid, kGridLines);
        benchmark::DoNotOptimize(grid);
    });
}

}  // namespace

BENCHMARK(mapInto2DLibrary)->Name("FlatScreen/mapInto2D/library");
BENCHMARK(mapInto2DInline)->Name("FlatScreen/mapInto2D/inline");
BENCHMARK(mapInto3DLibrary)->Name("FlatScreen/mapInto3D/library");
BENCHMARK(mapInto3DInline)->Name("FlatScreen/mapInto3D/inline");
BENCHMARK(intersectLibrary)->Name("FlatScreen/intersect/library");
BENCHMARK(intersectInline)->Name("FlatScreen/intersect/inline");
BENCHMARK(sampleGridLibrary)->Name("FlatScreen/sampleGrid/library");
BENCHMARK(sampleGridInline)->Name("FlatScreen/sampleGrid/inline");
