/// \file
/// Byte order marks: the bytes before a text that identify its encoding.
#pragma once

#include <string_view>

namespace quarn {

/// Byte order mark of UTF-8, which some programs write.
inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// Returns \p text without a byte order mark of UTF-8 at its start.
[[nodiscard]] inline std::string_view withoutUtf8Mark(std::string_view text) {
    if (text.starts_with(kUtf8Mark)) text.remove_prefix(kUtf8Mark.size());
    return text;
}

/// Returns true if \p text begins with a byte order mark of UTF-16, little-endian or big-endian.
[[nodiscard]] inline bool isMarkedUtf16(std::string_view text) {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

}  // namespace quarn
