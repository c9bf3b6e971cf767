#include "Rows/StatusNumbers.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "Rows/ResultRows.h"

namespace quarn::tool {

namespace {

// Programs depend on these numbers: a new status gets a new line.
constexpr std::array<std::pair<std::string_view, double>, 9> kNumbers = {{
    {kEmptyRow, -1.0},
    {"miss", 0.0},
    {"none", 0.0},
    {"outside", 0.0},
    {"hit", 1.0},
    {"found", 1.0},
    {"on_screen", 1.0},
    {"extrapolated", 2.0},
    {"boundary", 3.0},
}};

}  // namespace

double statusNumber(std::string_view status) {
    const auto entry = std::find_if(kNumbers.begin(), kNumbers.end(),
                                    [&](const auto& each) { return each.first == status; });
    return entry == kNumbers.end() ? std::numeric_limits<double>::quiet_NaN() : entry->second;
}

}  // namespace quarn::tool
