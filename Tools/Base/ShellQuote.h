/// \file
/// Words for command lines that people copy.
#pragma once

#include <string>
#include <string_view>

namespace quarn::tool {

/// The name of a file as one word of a shell's command line, in quotes where it needs them.
[[nodiscard]] inline std::string shellQuote(std::string_view text) {
    constexpr std::string_view kPlain =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-+=.,:/@%";
    // The tool would take it for an option.
    if (text.starts_with('-')) return shellQuote("./" + std::string(text));
    if (!text.empty() && text.find_first_not_of(kPlain) == std::string_view::npos) return std::string(text);
    std::string word = "'";
    for (const char byte : text) word += byte == '\'' ? std::string(R"('\'')") : std::string(1, byte);
    return word + "'";
}

}  // namespace quarn::tool
