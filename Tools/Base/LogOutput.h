/// \file
/// Destination of the library's log. For main().
#pragma once

namespace quarn::tool {

/// Writes the library's warnings as lines on the standard error stream, repeated warnings once.
/// Discards the rest of the log, and reads no configuration file.
void installLogOutput();

}  // namespace quarn::tool
