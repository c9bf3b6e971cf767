// The curved screens through the contract. The round trip through both mappings is compared with
// the same arithmetic written inline, and with the bare calls into the C library; a ruled screen's
// hit with the parts that it needs.
#include <benchmark/benchmark.h>

#include <cmath>
#include <memory>

#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/SphericalScreen.h>

#include "Inputs/BenchInputs.h"
#include "Reference/Timed/ReferenceCurvedFormulas.h"

namespace {

using quarn::bench::kInputs;
using quarn::bench::repeat;
using quarn::test::ReferenceCylinderFormulas;
using quarn::test::ReferenceSphereFormulas;

using Screen = std::unique_ptr<const IScreenGeometry>;

constexpr CylinderScreenParams kCylinder{{0.0, 0.0, 0.0}, 3.0, -1.75, 1.75, 2.5};
constexpr SphericalScreenParams kDome{{0.0, 0.0, 0.0}, 5.0, -3.1, 3.1, 0.0, 1.5};
constexpr RuledSurfaceScreenParams kRuled{4.0, 2.0, -0.7853981633974483, 0.7853981633974483, -0.5, 0.5};

const auto kUVs = quarn::bench::makeUVs(1);
const auto kEyes = quarn::bench::makePositions(2, {0.0, -0.5, 0.0}, {0.2, 0.2, 0.2});
const auto kTargets = quarn::bench::makePositions(3, {0.0, 4.0, 0.5}, {1.0, 0.5, 0.4});

// Behind the contract, so that no compiler knows the type.
template <class Shape>
Screen hidden(const Shape& shape) {
    Screen screen = std::make_unique<Shape>(shape);
    benchmark::DoNotOptimize(screen);
    return screen;
}

Screen makeCylinder() {
    const auto& p = kCylinder;
    return hidden(CylinderScreen(p.center, p.radius, p.minTheta, p.maxTheta, p.height));
}

Screen makeDome() {
    const auto& p = kDome;
    return hidden(SphericalScreen(p.center, p.radius, p.minTheta, p.maxTheta, p.minPhi, p.maxPhi));
}

RuledSurfaceScreen ruledShape() {
    const auto& p = kRuled;
    return {p.width, p.height, p.minTheta, p.maxTheta, p.minPhi, p.maxPhi};
}

Screen makeRuled() {
    return hidden(ruledShape());
}

void roundTrip(benchmark::State& state, Screen (*make)()) {
    const Screen screen = make();
    repeat(state, [&](std::size_t i) {
        Point<double, 3> point;
        screen->mapInto3D(kUVs[i], point, true);
        benchmark::DoNotOptimize(screen->mapInto2D(point, true));
    });
}

template <class Inline>
void roundTripInline(benchmark::State& state, Screen (*make)(), Inline shape) {
    benchmark::DoNotOptimize(shape);
    const Screen screen = make();
    for (const auto& uv : kUVs) {
        Point<double, 3> point;
        screen->mapInto3D(uv, point, true);
        if (point != shape.mapInto3D(uv) || screen->mapInto2D(point, true) != shape.mapInto2D(point))
            return state.SkipWithError("other values than the library's");
    }
    repeat(state, [&](std::size_t i) {
        Point<double, 3> point = shape.mapInto3D(kUVs[i]);
        benchmark::DoNotOptimize(point);
        benchmark::DoNotOptimize(shape.mapInto2D(point));
    });
}

template <class Inline>
void bareCalls(benchmark::State& state, Inline shape) {
    benchmark::DoNotOptimize(shape);
    repeat(state, [&](std::size_t i) { benchmark::DoNotOptimize(shape.bareCalls(kUVs[i])); });
}

void intersect(benchmark::State& state, Screen (*make)()) {
    const Screen screen = make();
    repeat(state, [&](std::size_t i) { benchmark::DoNotOptimize(screen->intersect(kEyes[i], kTargets[i])); });
}

// The positions of the inputs' UV.
std::array<Point<double, 3>, kInputs> onScreen(const IScreenGeometry& screen) {
    std::array<Point<double, 3>, kInputs> points;
    for (std::size_t i = 0; i < kInputs; ++i) screen.mapInto3D(kUVs[i], points[i], true);
    return points;
}

void mapInto3D(benchmark::State& state, Screen (*make)()) {
    const Screen screen = make();
    repeat(state, [&](std::size_t i) {
        Point<double, 3> point;
        screen->mapInto3D(kUVs[i], point, true);
        benchmark::DoNotOptimize(point);
    });
}

void mapInto2D(benchmark::State& state, Screen (*make)()) {
    const Screen screen = make();
    const auto points = onScreen(*screen);
    repeat(state, [&](std::size_t i) { benchmark::DoNotOptimize(screen->mapInto2D(points[i], true)); });
}

void isOnScreenSection(benchmark::State& state, Screen (*make)()) {
    const Screen screen = make();
    const auto points = onScreen(*screen);
    repeat(state, [&](std::size_t i) { benchmark::DoNotOptimize(screen->isOnScreenSection(points[i])); });
}

void getScreenNormal(benchmark::State& state, Screen (*make)()) {
    const Screen screen = make();
    const auto points = onScreen(*screen);
    repeat(state, [&](std::size_t i) { benchmark::DoNotOptimize(screen->getScreenNormal(points[i])); });
}

// Opens the parts of a ruled screen's search.
class OpenRuledScreen : public RuledSurfaceScreen {
public:
    explicit OpenRuledScreen(const RuledSurfaceScreen& shape) : RuledSurfaceScreen(shape) {}
    using RuledSurfaceScreen::isLeft;
};

// How often the search for a ruling checks on which side the ray passes: at both ends, and once for
// each halving.
int countSideTests() {
    const double greatestArc = std::max(kRuled.maxTheta - kRuled.minTheta, kRuled.maxPhi - kRuled.minPhi);
    const double searchRange = M_PI / greatestArc;
    int count = 2;
    for (double interval = searchRange; interval > 1e-6; interval *= 0.5) ++count;
    return count;
}

void ruledIntersectParts(benchmark::State& state) {
    const OpenRuledScreen screen(ruledShape());
    std::array<Point<double, 3>, kInputs> hits;
    for (std::size_t i = 0; i < kInputs; ++i) {
        const IntersectionSet found = screen.intersect(kEyes[i], kTargets[i]);
        if (found.empty()) return state.SkipWithError("a ray misses the screen");
        hits[i] = found.first().point;
    }
    const int sideTests = countSideTests();
    repeat(state, [&](std::size_t i) {
        for (int k = 0; k < sideTests; ++k)
            benchmark::DoNotOptimize(screen.isLeft(k / 23.0, kEyes[i], kTargets[i]));
        benchmark::DoNotOptimize(screen.getScreenNormal(hits[i]));
    });
}

}  // namespace

BENCHMARK_CAPTURE(roundTrip, cylinder, makeCylinder)->Name("CylinderScreen/roundTrip/library");
BENCHMARK_CAPTURE(roundTripInline, cylinder, makeCylinder, ReferenceCylinderFormulas{kCylinder})
    ->Name("CylinderScreen/roundTrip/inline");
BENCHMARK_CAPTURE(bareCalls, cylinder, ReferenceCylinderFormulas{kCylinder})
    ->Name("CylinderScreen/roundTrip/bare calls");
BENCHMARK_CAPTURE(roundTrip, dome, makeDome)->Name("SphericalScreen/roundTrip/library");
BENCHMARK_CAPTURE(roundTripInline, dome, makeDome, ReferenceSphereFormulas{kDome})
    ->Name("SphericalScreen/roundTrip/inline");
BENCHMARK_CAPTURE(bareCalls, dome, ReferenceSphereFormulas{kDome})
    ->Name("SphericalScreen/roundTrip/bare calls");

#define QUARN_EACH_SHAPE(operation)                                                                      \
    BENCHMARK_CAPTURE(operation, cylinder, makeCylinder)->Name("CylinderScreen/" #operation "/library"); \
    BENCHMARK_CAPTURE(operation, dome, makeDome)->Name("SphericalScreen/" #operation "/library");        \
    BENCHMARK_CAPTURE(operation, ruled, makeRuled)->Name("RuledSurfaceScreen/" #operation "/library")
QUARN_EACH_SHAPE(intersect);
QUARN_EACH_SHAPE(mapInto3D);
QUARN_EACH_SHAPE(mapInto2D);
QUARN_EACH_SHAPE(isOnScreenSection);
QUARN_EACH_SHAPE(getScreenNormal);
BENCHMARK(ruledIntersectParts)->Name("RuledSurfaceScreen/intersect/its parts");
