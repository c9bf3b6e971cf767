/// \file
/// Quoting for command lines that people copy from messages.
#pragma once

#include <string>
#include <string_view>

namespace quarn::tool {

/// Returns a file name as one word of a shell command line, quoted if necessary.
[[nodiscard]] inline std::string shellQuote(std::string_view text) {
    constexpr std::string_view kPlain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-+=.,:/@%";
    // The tool would parse it as an option.
    if (text.starts_with('-')) return shellQuote("./" + std::string(text));
    if (!text.empty() && text.find_first_not_of(kPlain) == std::string_view::npos) return std::string(text);
    std::string word = "'";
    for (const char byte : text) word += byte == '\'' ? std::string(R"('\'')") : std::string(1, byte);
    return word + "'";
}

}  // namespace quarn::tool
