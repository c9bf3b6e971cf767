/// \file
/// The parse of an OBJ file by another library.
#pragma once

#include <cstddef>
#include <string>

namespace quarn::bench {

/// Parses a file and returns how many triangles it has.
[[nodiscard]] std::size_t parseByTinyObj(const std::string& path);

}  // namespace quarn::bench
