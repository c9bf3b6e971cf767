#include "ScreenComparison.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "Surface.h"

namespace quarn {

namespace {

// Default accuracy of the maximum distance, as a fraction of the screens' size.
constexpr double kDefaultAccuracy = 2e-5;
// The chord error that the triangles of each analytic screen may have, as a fraction of the
// accuracy.
constexpr double kChordErrorRatio = 0.25;
// The fraction that is left for the search.
constexpr double kSearchRatio = 1.0 - 2.0 * kChordErrorRatio;
// Accuracy of the triangles for the first estimate of the distance, as a fraction of the size.
constexpr double kCoarseAccuracy = 1e-3;
// Maximum number of positions for that estimate.
constexpr std::size_t kEstimatePositions = 500;
// Maximum number of tree nodes to visit for each of them.
constexpr std::uint64_t kMaxEstimateVisits = 500;
// Tolerance of each of their distances, as a fraction.
constexpr double kEstimateTolerance = 0.1;
// Accuracy of a distance, as a fraction of its difference to the required maximum.
constexpr double kDecisionRatio = 0.25;

using Digest = std::array<unsigned char, 20>;
using Screens = std::array<Screen, 2>;

// A digest of zero bytes only, as that of an STL screen, carries no information.
DigestComparison compareDigests(const Digest& a, const Digest& b) {
    constexpr Digest kNoDigest{};
    if (a == kNoDigest || b == kNoDigest) return DigestComparison::None;
    return a == b ? DigestComparison::Same : DigestComparison::Different;
}

// A surface, and the search for its nearest triangle.
struct SearchableSurface {
    Surface surface;
    std::optional<TriangleTree> tree;
};
using Surfaces = std::array<SearchableSurface, 2>;

double sumOfChordErrors(const Surfaces& surfaces) {
    return surfaces[0].surface.chordError + surfaces[1].surface.chordError;
}

void buildTrees(Surfaces& surfaces, ThreadPool& pool) {
    pool.parallelFor(surfaces.size(), [&](std::size_t i) {
        SearchableSurface& target = surfaces.at(i);
        if (!target.tree) target.tree.emplace(target.surface.triangles);
    });
}

// Returns a lower bound of the maximum distance from one surface to the other.
double estimateDistance(const SearchableSurface& from, const SearchableSurface& to) {
    const std::vector<TriangleCorners>& triangles = from.surface.triangles;
    const std::size_t step = triangles.size() / kEstimatePositions + 1;
    const TriangleTree::SearchLimits limits{
        .exactVisits = 0, .maxVisits = kMaxEstimateVisits, .relativeTolerance = kEstimateTolerance};
    std::uint64_t visits = 0;
    double max = 0.0;
    for (std::size_t i = 0; i < triangles.size(); i += step)
        max =
            std::max(max, to.tree->nearest(triangles[i][0], TriangleTree::kNone, limits, visits).minDistance);
    return max;
}

// Returns the accuracy that the estimated distance needs. Surfaces that are far apart need fewer
// triangles.
double accuracyFor(const Surfaces& surfaces, std::optional<double> requiredMax) {
    const double chordErrors = sumOfChordErrors(surfaces);
    const double distance =
        std::min(estimateDistance(surfaces[0], surfaces[1]), estimateDistance(surfaces[1], surfaces[0])) -
        chordErrors;
    const double accuracy = DistanceGoal::kRelativeAccuracy * distance;
    if (!requiredMax) return accuracy;
    return std::min(accuracy, kDecisionRatio * (std::abs(distance - *requiredMax) - chordErrors));
}

// Builds the surfaces. If no accuracy is required, coarse triangles of analytic screens show which
// accuracy is enough.
Surfaces buildSurfaces(const Screens& screens, const ComparisonRequirements& requirements, double& accuracy,
                       ThreadPool& pool) {
    const double size = std::max(sizeOf(screens[0]), sizeOf(screens[1]));
    const bool isEstimated = !requirements.accuracy && (isAnalytic(screens[0]) || isAnalytic(screens[1]));
    accuracy = requirements.accuracy.value_or(kDefaultAccuracy * size);
    const double first = isEstimated ? kCoarseAccuracy * size : accuracy;
    Surfaces surfaces;
    for (std::size_t i = 0; i < surfaces.size(); ++i)
        surfaces.at(i).surface = surfaceOf(screens.at(i), first * kChordErrorRatio);
    if (!isEstimated) return surfaces;

    buildTrees(surfaces, pool);
    accuracy = std::max(accuracy, accuracyFor(surfaces, requirements.max));
    for (std::size_t i = 0; i < surfaces.size(); ++i)
        if (isAnalytic(screens.at(i)))
            surfaces.at(i) = {.surface = surfaceOf(screens.at(i), accuracy * kChordErrorRatio), .tree = {}};
    return surfaces;
}

DistanceGoal goalFor(const ComparisonRequirements& requirements, double accuracy, double chordErrors) {
    DistanceGoal goal{.accuracy = accuracy * kSearchRatio};
    if (requirements.accuracy) {
        goal.accuracy = std::max(goal.accuracy, accuracy - chordErrors);
        goal.relativeAccuracy = 0.0;
    } else if (chordErrors > 0.0) {
        goal.relativeAccuracy *= kSearchRatio;
    }
    if (requirements.max && *requirements.max > chordErrors) goal.limit = *requirements.max - chordErrors;
    return goal;
}

}  // namespace

DistanceRange ScreenComparison::range() const {
    const double max = std::max(aToB.max, bToA.max);
    return {.min = std::max(max - chordErrors, 0.0),
            .max = std::max(aToB.bound, bToA.bound) + chordErrors,
            .accuracy = std::max(accuracyOf(aToB), accuracyOf(bToA))};
}

ComparisonLimit ScreenComparison::limitOf(const SurfaceDistance& distance) const {
    return distance.end == SearchEnd::WorkLimit ? ComparisonLimit::Work : surfaceLimit;
}

ComparisonLimit ScreenComparison::verdictLimit() const {
    if (verdict != Verdict::Undecided) return ComparisonLimit::None;
    for (const SurfaceDistance* distance : {&aToB, &bToA})
        if (limitOf(*distance) != ComparisonLimit::None) return limitOf(*distance);
    return ComparisonLimit::Accuracy;
}

ScreenComparison compareScreens(Screen a, Screen b, const ComparisonRequirements& requirements,
                                ThreadPool& pool) {
    ScreenComparison result;
    result.digests = compareDigests(a.geometry->getUniqueDataHash(), b.geometry->getUniqueDataHash());
    result.atEqualUv = uvDistance(*a.geometry, *b.geometry);
    double accuracy = 0.0;
    Surfaces surfaces;
    {
        const Screens screens{std::move(a), std::move(b)};
        surfaces = buildSurfaces(screens, requirements, accuracy, pool);
        // The triangles of the same analytic screen deviate in the same way. The digest of a mesh
        // does not cover everything.
        const bool isSame =
            isAnalytic(screens[0]) && isAnalytic(screens[1]) && result.digests == DigestComparison::Same;
        result.chordErrors = isSame ? 0.0 : sumOfChordErrors(surfaces);
    }
    if (result.chordErrors > 2.0 * kChordErrorRatio * accuracy) result.surfaceLimit = ComparisonLimit::Grid;
    buildTrees(surfaces, pool);
    const DistanceGoal goal = goalFor(requirements, accuracy, result.chordErrors);
    const auto& [onA, onB] = surfaces;
    result.aToB = surfaceDistance(onA.surface.triangles, *onB.tree, goal, pool);
    result.bToA = surfaceDistance(onB.surface.triangles, *onA.tree, goal, pool);
    if (requirements.max || requirements.accuracy) result.verdict = verdictOf(result.range(), requirements);
    return result;
}

}  // namespace quarn
