/// \file
/// The error of an OBJ text without faces.
#pragma once

#include <string>
#include <string_view>

namespace quarn {

/// Throws the Error of an OBJ text without faces, which names the elements that it has instead.
/// \param name name of the text in the error
[[noreturn]] void refuseMissingFaces(const std::string& name, std::string_view text);

}  // namespace quarn
