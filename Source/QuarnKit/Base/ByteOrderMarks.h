/// \file
/// The bytes in front of a text that tell its encoding.
#pragma once

#include <string_view>

namespace quarn {

/// Of UTF-8, where some programs write it.
inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// Whether the text is marked as UTF-16, of either order of bytes.
[[nodiscard]] inline bool isMarkedUtf16(std::string_view text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

}  // namespace quarn
