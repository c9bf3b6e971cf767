/// \file
/// Checks that the extension of an output's name is that of its format.
#pragma once

#include <string>
#include <vector>

namespace quarn {

/// Returns the extension of a file name in lower case, without the dot; empty if there is none.
[[nodiscard]] std::string extensionOf(const std::string& path);

/// Throws an Error if \p path has the extension of another format than the written one. A name
/// without extension, or with an unknown one, is valid for every format.
/// \param extensions those of the written format, such as "obj"
/// \param alternative what else the user can do, as in ", or another option"; may be empty
void requireOutputName(const std::string& path, const std::vector<std::string>& extensions,
                       const std::string& alternative = {});

}  // namespace quarn
