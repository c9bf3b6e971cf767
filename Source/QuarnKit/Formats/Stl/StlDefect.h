/// \file
/// Finds defects that keep the library from loading an STL file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quarn {

struct StlDefect {
    std::string name;   ///< A stable word, as for a finding.
    std::string found;  ///< The contents that were found, and those that are valid.
    std::string expected;
    std::uint64_t triangle = 0;  ///< Its number from 1; 0 for a defect of the whole file.
    bool isRepairable = false;   ///< True if the file can be converted to a mesh.
};

/// Returns the first defect for which the library would not load the text, or misread it: the text
/// form, fewer triangles than the header declares, no triangle, and numbers that are not finite.
[[nodiscard]] std::optional<StlDefect> findStlDefect(std::string_view text);

}  // namespace quarn
