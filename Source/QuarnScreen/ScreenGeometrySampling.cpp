#include <QuarnScreen/ScreenGeometry.h>

#include <optional>
#include <utility>

#include <QuarnScreen/Detail/Platform/Sign.h>
#include <QuarnScreen/Detail/Shapes/PolylineSampler.h>

using quarn::detail::PolylineSampler;

namespace {

constexpr int kIntervalsPerGridLine = 20;
constexpr double kGridLineStep = 0.05;
constexpr int kStepsBetweenGridLines = 3;
constexpr double kStepBetweenGridLines = 0.25;  // of the gap between two lines

constexpr int kPointsPerEdge = 20;
constexpr double kIntervalsPerEdge = 20.0;

bool isOdd(int number) {
    return (number & 1) != 0;
}

// Samples the lines of constant u from left to right: down, along the bottom, up, along the top,
// and so on.
void sampleLinesOfConstantU(PolylineSampler& sampler, int lines) {
    const double intervals = lines - 1;
    for (int i = 0; i < lines; ++i) {
        double u = i / intervals;
        for (int j = 0; j <= kIntervalsPerGridLine; ++j) {
            const double s = j * kGridLineStep;
            sampler.sample(u, isOdd(i) ? 1.0 - s : s);
        }
        if (i == lines - 1) continue;
        for (int step = 0; step < kStepsBetweenGridLines; ++step) {
            u = u + kStepBetweenGridLines / intervals;
            sampler.sample(u, isOdd(i) ? 0.0 : 1.0);
        }
    }
}

// Samples the lines of constant v from bottom to top: to the left, up the left edge, to the right,
// up the right edge.
void sampleLinesOfConstantV(PolylineSampler& sampler, int lines) {
    const double intervals = lines - 1;
    for (int i = 0; i < lines; ++i) {
        double v = 1.0 - i / intervals;
        for (int j = 0; j <= kIntervalsPerGridLine; ++j) {
            const double s = j * kGridLineStep;
            sampler.sample(isOdd(i) ? s : 1.0 - s, v);
        }
        if (i == lines - 1) continue;
        for (int step = 0; step < kStepsBetweenGridLines; ++step) {
            v = v - kStepBetweenGridLines / intervals;
            sampler.sample(isOdd(i) ? 1.0 : 0.0, v);
        }
    }
}

}  // namespace

void ScreenGeometry::sampleGrid(Polylines& grid, int density) const {
    // With an odd number of lines, the first pass ends where the second one begins, so that the
    // path is closed.
    const int lines = isOdd(density) ? density : density + 1;
    if (!hasParameterization()) return;
    grid.clear();
    grid.emplace_back();
    PolylineSampler sampler(*this, grid.back());
    sampleLinesOfConstantU(sampler, lines);
    sampleLinesOfConstantV(sampler, lines);
}

void ScreenGeometry::sampleBoundary(Polylines& boundary) const {
    if (!hasParameterization()) return;
    Polylines edges(4);
    for (auto& edge : edges) edge.reserve(kPointsPerEdge);

    PolylineSampler left(*this, edges[0]);
    for (int i = 0; i < kPointsPerEdge; ++i) left.sample(0.0, i / kIntervalsPerEdge);
    PolylineSampler bottom(*this, edges[1]);
    for (int i = 0; i < kPointsPerEdge; ++i) bottom.sample(i / kIntervalsPerEdge, 1.0);
    PolylineSampler right(*this, edges[2]);
    for (int i = kPointsPerEdge; i > 0; --i) right.sample(1.0, i / kIntervalsPerEdge);
    PolylineSampler top(*this, edges[3]);
    for (int i = kPointsPerEdge; i > 0; --i) top.sample(i / kIntervalsPerEdge, 0.0);

    quarn::detail::appendPolylines(boundary, std::move(edges));
}

std::vector<Point<double, 3>> ScreenGeometry::intersectChannelBoundary(const PointPairs& rays,
                                                                       const PointPairs& extraRays) const {
    // Returns the side of the surface at the first hit of a ray on the screen; nothing for a miss.
    const auto sideOf = [this](const auto& ray) -> std::optional<int> {
        const IntersectionSet hits = intersect(ray.first, ray.second);
        if (hits.empty()) return std::nullopt;
        const double approach = dot(ray.second - ray.first, getScreenNormal(hits.first().point));
        return quarn::detail::signOf(approach);
    };
    std::optional<int> side;
    for (auto ray = rays.begin(); ray != rays.end() && !side; ++ray) side = sideOf(*ray);
    for (auto ray = extraRays.begin(); ray != extraRays.end() && !side; ++ray) side = sideOf(*ray);
    if (!side) return {};

    std::vector<Point<double, 3>> points;
    for (const auto& [from, to] : rays) {
        const IntersectionSet hits = intersectExtrapolatedWithSpecifiedNormal(from, to, *side);
        if (!hits.empty()) points.push_back(hits.first().point);
    }
    return points;
}
