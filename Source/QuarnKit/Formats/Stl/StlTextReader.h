/// \file
/// Reads the text form of STL files.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace quarn {

using StlCorners = std::array<std::array<float, 3>, 3>;

/// Calls \p visit with the corners of each triangle of an STL text: one solid or several, in
/// letters of either case. A loop of more than three corners becomes a fan. Words of two parts such
/// as "end solid", and text after "endfacet" on its line, are accepted.
///
/// The triangles of a text that ends within a solid are visited. Throws an Error with the line for
/// an unexpected word or number.
/// \param name name of the text in error messages
/// \return the line at which the text ends within a solid; 0 for a whole text
[[nodiscard]] std::uint64_t forEachStlTextTriangle(const std::string& name, std::string_view text,
                                                   const std::function<void(const StlCorners&)>& visit);

}  // namespace quarn
