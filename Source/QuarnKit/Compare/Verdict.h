/// \file
/// The decision if two screens are as close to each other as required.
#pragma once

#include <optional>
#include <string_view>

namespace quarn {

/// What a comparison has to show.
struct ComparisonRequirements {
    std::optional<double> accuracy;  ///< Maximum error of the maximum distances.
    std::optional<double> max;       ///< Maximum distance between the surfaces.
};

/// What a comparison found out about the maximum distance between two surfaces.
struct DistanceRange {
    double min = 0.0;       ///< The distance is at least this.
    double max = 0.0;       ///< The distance is at most this.
    double accuracy = 0.0;  ///< Error of the reported distances.
};

enum class Verdict {
    Yes,       ///< All requirements are met.
    No,        ///< The distance is greater than required.
    Undecided  ///< The bounds of the distance do not decide.
};

/// Returns "yes", "no" or "undecided".
[[nodiscard]] std::string_view nameOf(Verdict verdict);

/// Decides from bounds. The reported distance alone does not decide, because the true one may be
/// greater.
[[nodiscard]] Verdict verdictOf(const DistanceRange& distance, const ComparisonRequirements& requirements);

/// True if the accuracy is as required, or none is required.
[[nodiscard]] bool isAccurate(const DistanceRange& distance, const ComparisonRequirements& requirements);

}  // namespace quarn
