/// \file
/// Scripts that complete the tool's command lines.
#pragma once

#include <string>

#include "CommandLine/CommandLine.h"

namespace quarn::tool {

/// Each of these functions returns the script of one shell: it completes commands, options, words
/// that are values, and files.
[[nodiscard]] std::string bashCompletion(const Command& tool);
[[nodiscard]] std::string zshCompletion(const Command& tool);
[[nodiscard]] std::string fishCompletion(const Command& tool);

}  // namespace quarn::tool
