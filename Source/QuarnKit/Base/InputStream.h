/// \file
/// Files and streams to read.
#pragma once

#include <cstddef>
#include <string>

#include "FileHandle.h"

namespace quarn {

/// An input as a sequence of bytes. Not safe on several threads.
class InputStream {
public:
    /// Opens the file \p path.
    /// \param expected kind of file for error messages, such as "a CSV file"
    /// \throws Error if the file cannot be opened or is a directory
    InputStream(const std::string& path, const std::string& expected);

    /// Opens the file \p path like the constructor, or the standard input if \p path is "-".
    [[nodiscard]] static InputStream openFileOrStandardInput(const std::string& path,
                                                             const std::string& expected);

    /// Reads the bytes that are available, at most \p size of them; waits for the first one.
    /// \return number of bytes; 0 at the end of the input
    /// \throws Error if the system reports a failure
    [[nodiscard]] std::size_t read(char* buffer, std::size_t size);

    /// Returns the size of a regular file at the moment; 0 for other inputs.
    [[nodiscard]] std::uint64_t fileSize() const;

    /// Returns true if read() would return without waiting.
    [[nodiscard]] bool isReady() const;

    /// Returns the name of the input for messages.
    [[nodiscard]] const std::string& name() const { return displayName; }

private:
    InputStream(FileHandle handle, std::string name);

    std::string displayName;
    FileHandle file;
};

}  // namespace quarn
