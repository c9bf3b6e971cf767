/// \file
/// How much memory the tool may use.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quarn {

/// Bytes from a size such as "500M": a whole number above 0, and K, M, G or T for powers of 1024.
[[nodiscard]] std::optional<std::uint64_t> parseMemorySize(std::string_view text);

/// A size for people, such as "1.5 GiB".
[[nodiscard]] std::string memorySizeText(std::uint64_t bytes);

/// Three quarters of the memory that the system could hand out at the moment.
[[nodiscard]] std::uint64_t defaultMemoryLimit();

}  // namespace quarn
