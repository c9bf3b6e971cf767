/// \file
/// The exit codes of the tool, and the conversion of any exception to an error line and an exit
/// code.
#pragma once

#include <string>

#include <QuarnKit/Base/Error.h>

namespace quarn::tool {

enum class ExitCode {
    Success = 0,
    NegativeResult = 1,  ///< A required result is missing, or a check reported findings.
    BadInput = 2,        ///< An argument or an input file is wrong.
    SystemFailure = 3,   ///< Memory, a file system or a stream failed.
};

/// Reports a result that is complete, but not the one that the options require.
class NegativeResult : public Error {
public:
    using Error::Error;
};

/// Returns the command line that carries out a remedy; empty if there is none.
[[nodiscard]] std::string remedyCommand(const Remedy& remedy);

/// Writes the current exception as one line, and returns the exit code.
/// \pre called from a catch block
[[nodiscard]] ExitCode reportCurrentError() noexcept;

}  // namespace quarn::tool
