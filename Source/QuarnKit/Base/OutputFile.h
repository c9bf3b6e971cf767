/// \file
/// Files and streams to write.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "FileHandle.h"
#include "Output/UnfinishedFile.h"

namespace quarn {

/// The standard output, or a file that is replaced atomically.
///
/// A regular file is written under a temporary name in the same folder; finish() renames it. Until
/// then it is an UnfinishedFile. Devices and pipes are written directly. Not safe on several
/// threads.
class OutputFile {
public:
    /// Opens \p path, or the standard output if \p path is "-".
    /// \throws Error if the file cannot be written, or if it is one of \p inputs
    OutputFile(const std::string& path, const std::vector<std::string>& inputs);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    /// If finish() was not called, removes the unfinished file; bytes written to a stream stay.
    ~OutputFile();

    /// Appends text.
    /// \throws Error if the system reports a failure, as flush() and finish() do
    void write(std::string_view text);

    /// Passes all buffered text to the system.
    void flush();

    /// Passes all buffered text to the system, and gives a file its final name.
    void finish();

private:
    void openTemporary(const std::string& path);
    void writeUnbuffered(std::string_view rest);

    std::string name;           // in messages
    std::string target;         // path of the finished file; empty if nothing is renamed
    std::string temporaryName;  // path until then
    std::optional<UnfinishedFile> unfinished;
    FileHandle file;
    std::string buffer;
};

/// Throws an Error if the file \p path is one of \p inputs. OutputFile checks that too, after the
/// inputs were read; this function reports it before.
void refuseInputAsOutput(const std::string& path, const std::vector<std::string>& inputs);

}  // namespace quarn
