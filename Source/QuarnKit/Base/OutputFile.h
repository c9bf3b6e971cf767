/// \file
/// Files and streams that the tool writes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "FileHandle.h"

namespace quarn {

/// The standard output, or a file that appears whole or not at all.
///
/// A regular file is written under a temporary name beside its own, and gets its own name in finish().
/// Devices and pipes are written as they stand. Not safe on several threads.
class OutputFile {
public:
    /// Opens \p path, where "-" stands for the standard output. Refuses a path that is one of \p inputs.
    OutputFile(const std::string& path, const std::vector<std::string>& inputs);
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;
    /// Without finish(): an unfinished file vanishes; what was written to a stream stays.
    ~OutputFile();

    void write(std::string_view text);

    /// Hands over what was written so far.
    void flush();

    /// Hands over everything, and gives a file its name.
    void finish();

private:
    void openTemporary(const std::string& path);

    std::string name;           // as error lines call it
    std::string target;         // path that the finished file gets; empty where nothing is renamed
    std::string temporaryName;  // path until then
    FileHandle file;
    std::string buffer;
};

}  // namespace quarn
