/// \file
/// Where the library's log goes.
#pragma once

namespace quarn::tool {

/// Makes the library's warnings lines on the standard error stream, one for a warning that comes several
/// times in a row. Nothing else of the log goes anywhere,
/// and no configuration file is read.
void installLogOutput();

}  // namespace quarn::tool
