/// \file
/// Errors for words of a command line that the command does not have.
#pragma once

#include <string>
#include <vector>

#include <QuarnKit/Base/Error.h>

namespace quarn::tool {

/// The command that a command line names, and the names that may follow it.
struct NamedCommand {
    std::string name;                   ///< With the names before it, as in "quarnscreen make".
    std::vector<std::string> commands;  ///< Empty if it has only options and arguments.
    std::vector<std::string> options;
};

/// Returns the error for a word that \p command does not have, with the nearest one that it has.
[[nodiscard]] Error unknownWordError(const std::string& word, const NamedCommand& command);

/// Returns the error for a command line that ends before one of the commands.
[[nodiscard]] Error missingCommandError(const NamedCommand& command);

}  // namespace quarn::tool
