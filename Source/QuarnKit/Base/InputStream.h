/// \file
/// Files and streams to read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "FileHandle.h"

namespace quarn {

/// The part of a file that was not read yet.
struct FileRest {
    std::uint64_t begin = 0;  ///< Offset of the next byte in the file.
    std::uint64_t size = 0;   ///< Bytes up to the end of the file.
};

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

    /// Reads as many bytes as \p prefix at most, as long as they equal it. The bytes are read again
    /// by read().
    /// \return true if the input continues with \p prefix
    /// \throws Error as read()
    [[nodiscard]] bool startsWith(std::string_view prefix);

    /// Returns the rest of a regular file, and nothing for a stream such as a pipe.
    [[nodiscard]] std::optional<FileRest> rest() const;

    /// Reads bytes of a regular file, without an effect on read().
    /// \param offset of the first byte in the file
    /// \throws Error if the system reports a failure, or the file ends before
    void readAt(std::uint64_t offset, char* buffer, std::size_t size) const;

    /// Returns true if read() would return without waiting.
    [[nodiscard]] bool isReady() const;

    /// Returns the name of the input for messages.
    [[nodiscard]] const std::string& name() const { return displayName; }

private:
    InputStream(FileHandle handle, std::string name);

    std::string displayName;
    FileHandle file;
    std::string unread;  // bytes that startsWith() has read, and read() has not
};

}  // namespace quarn
