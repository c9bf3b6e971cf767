/// \file
/// The bytes of an STL stream.
#pragma once

#include <istream>
#include <string>

namespace quarn::detail {

/// The bytes from where the stream stands to its end. They are taken from the stream's buffer whatever the state of the
/// stream is, and leave that as it was.
[[nodiscard]] std::string readRest(std::istream& in);

}  // namespace quarn::detail
