/// \file
/// The text form of STL files.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace quarn {

using StlCorners = std::array<std::array<float, 3>, 3>;

/// Calls \p visit with the corners of each triangle of an STL text: one solid or several, in letters of either case. A
/// loop of more than three corners becomes a fan.
///
/// A text that ends within a solid gives the triangles up to there. Stops with a Error, which names the line, at a word
/// or number that does not belong there.
/// \param name what error lines call the text
/// \return the line where the text ends within a solid; 0 where it is whole
[[nodiscard]] std::uint64_t forEachStlTextTriangle(const std::string& name, std::string_view text,
                                                   const std::function<void(const StlCorners&)>& visit);

}  // namespace quarn
