#include "Verdict.h"

namespace quarn {

namespace {

// The accuracy reached is a sum of the parts that the required one was divided into.
constexpr double kRoundingFactor = 1.0 + 1e-12;

}  // namespace

std::string_view nameOf(Verdict verdict) {
    switch (verdict) {
        case Verdict::Yes:
            return "yes";
        case Verdict::No:
            return "no";
        case Verdict::Undecided:
            break;
    }
    return "undecided";
}

bool isAccurate(const DistanceRange& distance, const ComparisonRequirements& requirements) {
    return !requirements.accuracy || distance.accuracy <= *requirements.accuracy * kRoundingFactor;
}

Verdict verdictOf(const DistanceRange& distance, const ComparisonRequirements& requirements) {
    if (requirements.max && distance.min > *requirements.max) return Verdict::No;
    if (requirements.max && !(distance.max <= *requirements.max)) return Verdict::Undecided;
    return isAccurate(distance, requirements) ? Verdict::Yes : Verdict::Undecided;
}

}  // namespace quarn
