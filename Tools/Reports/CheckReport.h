/// \file
/// Findings of a check as text and as JSON.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QuarnKit/Check/Finding.h>

#include "Base/Json.h"

namespace quarn::tool {

/// What a check found in a file.
struct CheckReport {
    std::string file;
    std::string unit;
    std::uint64_t triangles = 0;
    std::vector<Finding> findings = {};

    /// Findings that are more than a note.
    [[nodiscard]] std::uint64_t problemCount() const;
};

/// A line for each finding, as in "wall.obj:12: text (hint)", and a last one that counts them.
[[nodiscard]] std::string reportText(const CheckReport& report);

[[nodiscard]] Json reportJson(const CheckReport& report);

}  // namespace quarn::tool
