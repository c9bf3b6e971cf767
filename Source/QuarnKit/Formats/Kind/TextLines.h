/// \file
/// Lines and words of a text of an unknown kind.
#pragma once

#include <algorithm>
#include <string_view>

#include <QuarnKit/Base/NumberText.h>

namespace quarn {

/// Removes the first line of a text, and returns it without its line end: LF, CR or both.
inline std::string_view takeTextLine(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = text.substr(0, end);
    const std::size_t endSize = text.substr(end).starts_with("\r\n") ? 2 : 1;
    text.remove_prefix(std::min(end + endSize, text.size()));
    return line;
}

/// Returns the text up to the first separator.
[[nodiscard]] inline std::string_view firstTextWord(std::string_view text,
                                                    std::string_view separators = " \t\r\n") {
    return text.substr(0, text.find_first_of(separators));
}

/// Returns true if two words are equal, with ASCII letters of either case.
[[nodiscard]] inline bool isSameWord(std::string_view word, std::string_view other) {
    const auto lower = [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
    };
    return std::equal(word.begin(), word.end(), other.begin(), other.end(),
                      [&](char a, char b) { return lower(a) == lower(b); });
}

/// Returns the first line that is neither blank nor a comment after "#"; empty if there is none.
[[nodiscard]] inline std::string_view firstDataLine(std::string_view text) {
    while (!text.empty()) {
        const std::string_view line = trimmed(takeTextLine(text));
        if (!line.empty() && !line.starts_with('#')) return line;
    }
    return {};
}

}  // namespace quarn
