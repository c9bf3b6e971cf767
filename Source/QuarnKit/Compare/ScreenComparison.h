/// \file
/// The comparison of two screens: digests, surfaces, and positions of equal UV.
#pragma once

#include <optional>

#include <QuarnKit/Formats/ScreenReader.h>

#include "SurfaceDistance.h"
#include "UvDistance.h"
#include "Verdict.h"

namespace quarn {

enum class DigestComparison {
    Same,
    Different,
    None  ///< A screen has no digest, such as one from STL.
};

/// Why a distance is not accurate enough.
enum class ComparisonLimit {
    None,
    Work,      ///< The search for the maximum distance reached its limit of work.
    Grid,      ///< The grid on an analytic screen reached its maximum number of cells.
    Accuracy,  ///< The accuracy is too coarse for the required maximum distance.
};

/// The results for two screens.
struct ScreenComparison {
    DigestComparison digests = DigestComparison::None;
    std::optional<UvDistance> atEqualUv;
    /// Error of the distances that is due to the triangles of analytic screens, sum of both.
    double chordErrors = 0.0;
    /// None or Grid.
    ComparisonLimit surfaceLimit = ComparisonLimit::None;
    SurfaceDistance aToB;
    SurfaceDistance bToA;
    /// Set if the comparison had requirements.
    std::optional<Verdict> verdict;

    /// Returns the upper bound of the error of a distance.
    [[nodiscard]] double accuracyOf(const SurfaceDistance& distance) const {
        return distance.bound - distance.max + chordErrors;
    }
    /// Returns what is known about the larger of both maximum distances.
    [[nodiscard]] DistanceRange range() const;
    /// Returns why a distance is less accurate than it should be.
    [[nodiscard]] ComparisonLimit limitOf(const SurfaceDistance& distance) const;
    /// Returns why the verdict is undecided.
    [[nodiscard]] ComparisonLimit verdictLimit() const;
};

/// Compares two screens. They are released before the surfaces are measured, because both may be
/// large.
///
/// Without a required accuracy, the maximum distances are accurate to a fraction of the screens'
/// size or of the distance.
/// \throws Error if a screen has no surface
[[nodiscard]] ScreenComparison compareScreens(Screen a, Screen b, const ComparisonRequirements& requirements,
                                              ThreadPool& pool);

}  // namespace quarn
