/// \file
/// The exit codes of the tool, and the one place that turns any error into a line and an exit code.
#pragma once

#include <string>

#include <QuarnKit/Base/Error.h>

namespace quarn::tool {

enum class ExitCode {
    Success = 0,
    NegativeResult = 1,  ///< A required result is missing, or a check found something.
    BadInput = 2,        ///< An argument or an input file is wrong.
    SystemFailure = 3,   ///< Memory, a file system or a stream failed.
};

/// A complete result that is not the one which the caller requires.
class NegativeResult : public Error {
public:
    using Error::Error;
};

/// Returns the command line of a remedy; empty if it is none or no command.
[[nodiscard]] std::string remedyCommand(const Remedy& remedy);

/// Writes the exception that is being handled as one line, and returns the exit code.
[[nodiscard]] ExitCode reportCurrentError() noexcept;

}  // namespace quarn::tool
