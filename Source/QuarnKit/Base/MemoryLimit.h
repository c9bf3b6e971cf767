/// \file
/// Limits of memory.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quarn {

/// Parses a size such as "500M": a whole number above 0, and K, M, G or T for powers of 1024.
/// \return bytes; nothing if the text has another form or the size exceeds 64 bits
[[nodiscard]] std::optional<std::uint64_t> parseMemorySize(std::string_view text);

/// Formats a size for people, such as "1.5 GiB".
[[nodiscard]] std::string memorySizeText(std::uint64_t bytes);

/// Returns three quarters of the memory that the system can allocate at the moment, in bytes.
[[nodiscard]] std::uint64_t defaultMemoryLimit();

}  // namespace quarn
