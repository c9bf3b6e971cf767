/// \file
/// Signals that end the process. For main().
#pragma once

namespace quarn::tool {

/// Makes each signal that ends the process, such as that of Ctrl-C, remove the unfinished output
/// files first. The exit status remains that of the signal. Signals that the caller ignores stay
/// ignored.
void cleanUpOnTermination();

}  // namespace quarn::tool
