/// \file
/// Small OBJ texts of the kinds that programs write, each of at most 4 KB.
#pragma once

#include <string>
#include <vector>

namespace quarn::test {

/// A curved sheet of triangles with shared vertices; the same with carriage returns, exponents and
/// quads with trailing blanks; and a text with groups, materials, comments, colors, continuations
/// and an n-gon.
[[nodiscard]] std::vector<std::string> sampleTexts();

}  // namespace quarn::test
