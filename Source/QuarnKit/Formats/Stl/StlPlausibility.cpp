#include "StlPlausibility.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "StlLayout.h"

namespace quarn {

namespace {

// Magnitudes of coordinates other than 0, in any unit. Rounding makes zeros of about 1e-17.
constexpr float kMinMagnitude = 1e-25F;
constexpr float kMaxMagnitude = 1e10F;
// Random bits have 45 % of their magnitudes in that range. Real files may contain a few numbers
// that are not finite.
constexpr std::uint64_t kMinPlausiblePercent = 75;
// Enough that no other file passes by chance.
constexpr std::uint64_t kSampleRecords = 20000;

}  // namespace

bool hasPlausibleCorners(std::string_view beginning) {
    const auto layout = stlLayoutOf(beginning);
    if (!layout) return false;
    std::uint64_t nonzeroCount = 0;
    std::uint64_t plausibleCount = 0;
    const std::uint64_t sampleCount = std::min(layout->recordCount, kSampleRecords);
    forEachStlRecord(beginning, sampleCount, [&](std::uint64_t, const std::array<float, 12>& numbers) {
        for (std::size_t i = 3; i < numbers.size(); ++i) {
            const float magnitude = std::abs(numbers.at(i));
            if (magnitude == 0.0F) continue;
            ++nonzeroCount;
            if (magnitude >= kMinMagnitude && magnitude <= kMaxMagnitude) ++plausibleCount;
        }
    });
    return nonzeroCount > 0 && plausibleCount * 100 >= nonzeroCount * kMinPlausiblePercent;
}

}  // namespace quarn
