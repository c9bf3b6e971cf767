/// \file
/// What keeps the library from loading an STL file.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quarn {

struct StlDefect {
    std::string name;   ///< A stable word, as of a finding.
    std::string found;  ///< What is there, and what should be.
    std::string expected;
    std::uint64_t triangle = 0;  ///< Its number from 1; 0 where the trouble is not that of one.
    bool isRepairable = false;   ///< Whether the command convert makes a mesh of the file.
};

/// The first reason for which the library would not load the text, or load what is not meant: the text form, fewer triangles
/// than the header tells of, none at all, and numbers that are not finite.
[[nodiscard]] std::optional<StlDefect> findStlDefect(std::string_view text);

}  // namespace quarn
