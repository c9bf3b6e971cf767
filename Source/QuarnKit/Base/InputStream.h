/// \file
/// Files and streams that the tool reads.
#pragma once

#include <cstddef>
#include <string>

#include "FileHandle.h"

namespace quarn {

/// An input as a run of bytes. Not safe on several threads.
class InputStream {
public:
    /// Opens the file \p path. \p expected says in the error what it should be, as in "a CSV file".
    InputStream(const std::string& path, const std::string& expected);

    /// As the constructor, where "-" stands for the standard input.
    [[nodiscard]] static InputStream openFileOrStandardInput(const std::string& path,
                                                             const std::string& expected);

    /// Fills \p buffer as far as the input goes at the moment; 0 bytes at its end.
    [[nodiscard]] std::size_t read(char* buffer, std::size_t size);

    /// Whether read() would answer without waiting.
    [[nodiscard]] bool isReady() const;

    /// What error lines call it.
    [[nodiscard]] const std::string& name() const { return displayName; }

private:
    InputStream(FileHandle handle, std::string name);

    std::string displayName;
    FileHandle file;
};

}  // namespace quarn
