/// \file
/// The bytes of a whole stream.
#pragma once

#include <istream>
#include <string>

namespace quarn::detail {

/// Reads a stream from its start to its end, wherever it stands, and puts it back there.
///
/// A stream whose fail, bad or end-of-file flag is set, or that cannot seek, counts as empty. Where fewer
/// bytes come than the end's position tells, the rest are NUL.
///
/// \param[out] text the bytes; what it held before is gone in any case
void readWholeStream(std::istream& in, std::string& text);

}  // namespace quarn::detail
