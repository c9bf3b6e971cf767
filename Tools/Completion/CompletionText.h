/// \file
/// Texts of which completion scripts consist. For the completions of the shells.
#pragma once

#include <string>
#include <vector>

#include "CommandLine/CommandLine.h"

namespace quarn::tool {

[[nodiscard]] inline std::string joined(const std::vector<std::string>& words, const std::string& separator) {
    std::string text;
    for (const std::string& word : words) text += text.empty() ? word : separator + word;
    return text;
}

[[nodiscard]] inline std::vector<std::string> namesOf(const std::vector<Command>& commands) {
    std::vector<std::string> names;
    names.reserve(commands.size());
    for (const Command& command : commands) names.push_back(command.name());
    return names;
}

/// Returns the names of the commands that have commands.
[[nodiscard]] inline std::vector<std::string> namesOfParents(const Command& tool) {
    std::vector<std::string> names;
    for (const Command& command : tool.commands())
        if (!command.commands().empty()) names.push_back(command.name());
    return names;
}

/// Returns the text with \p escape before each character that is one of \p special.
[[nodiscard]] inline std::string escaped(const std::string& text, const std::string& special,
                                         const std::string& escape) {
    std::string result;
    for (const char c : text) {
        if (special.find(c) != std::string::npos) result += escape;
        result += c;
    }
    return result;
}

}  // namespace quarn::tool
