/// \file
/// Findings of a check as text and as JSON. For the command check.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QuarnKit/Check/Finding.h>

#include "Base/Json.h"

namespace quarn::tool {

/// The findings of a check of one file.
struct CheckReport {
    std::string file;
    std::string unit;
    std::uint64_t triangles = 0;
    std::vector<Finding> findings = {};

    /// Returns the number of findings that are not notes.
    [[nodiscard]] std::uint64_t problemCount() const;
};

/// Returns a line for each finding, as in "wall.obj:12: text (hint)", and a last one that counts
/// them.
[[nodiscard]] std::string reportText(const CheckReport& report);

/// Returns the report as a JSON document.
[[nodiscard]] Json reportJson(const CheckReport& report);

}  // namespace quarn::tool
