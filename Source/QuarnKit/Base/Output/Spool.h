/// \file
/// Storage for an output that is not complete yet.
#pragma once

#include <string>
#include <string_view>

#include <QuarnKit/Base/FileHandle.h>

namespace quarn {

class OutputFile;

/// A sequence of bytes, in memory up to a few megabytes, and beyond that in a temporary file.
///
/// The file has no name, so that the system removes it when the process ends. Its folder is that of
/// the environment variable TMPDIR, or /tmp. Not safe on several threads.
class Spool {
public:
    /// Appends bytes.
    /// \throws Error if the temporary file cannot be written, as the other functions do
    void write(std::string_view bytes);

    /// Replaces the first bytes. \pre at least as many bytes were written
    void overwriteBeginning(std::string_view bytes);

    /// Writes all bytes to \p output. Nothing may be written after that.
    void copyTo(OutputFile& output);

private:
    void spill();
    void writeToFile(std::string_view bytes);
    void moveInFile(int whence);

    std::string buffer;  // bytes that are not in the file
    FileHandle file;     // open if the bytes exceed the memory
    std::string name;    // of the file, for errors
};

}  // namespace quarn
