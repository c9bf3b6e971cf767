/// \file
/// The tool's errors, and the one place that turns any error into a line and an exit code.
#pragma once

#include <cstdint>
#include <string>

namespace quarn {

/// What the process answers its caller.
enum class ExitCode {
    Success = 0,
    AnswerIsNo = 1,    ///< A required answer is missing, or a check found something.
    BadInput = 2,      ///< An argument or an input file is wrong.
    SystemFailed = 3,  ///< Memory, a file system or a stream failed.
};

/// Why the tool stops: what was found where, and what was expected there instead.
struct ToolError {
    ExitCode code = ExitCode::BadInput;
    std::string found = {};     ///< What is wrong, as the first half of a sentence.
    std::string expected = {};  ///< What would be right; empty where `found` says it all.
    std::string file = {};      ///< Input or output that it is about; empty for arguments.
    std::uint64_t line = 0;     ///< Line in that file, 0 for the file as a whole.
    std::string remedy = {};    ///< A command that helps; empty where none does.
};

/// An error that says \p action and why the last system call failed.
[[nodiscard]] ToolError systemError(const std::string& file, const std::string& action,
                                    ExitCode code = ExitCode::SystemFailed);

/// The exception that is being handled, of whatever family, as an error of the tool.
[[nodiscard]] ToolError currentError();

/// Writes the exception that is being handled as one line, and tells the exit code.
[[nodiscard]] ExitCode reportCurrentError() noexcept;

}  // namespace quarn
