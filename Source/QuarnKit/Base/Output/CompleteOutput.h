/// \file
/// Outputs that appear as a whole or not at all.
#pragma once

#include <optional>
#include <string_view>

#include <QuarnKit/Base/Output/Spool.h>
#include <QuarnKit/Base/OutputFile.h>

namespace quarn {

/// Writes a document that would be useless without its end, or whose beginning is known last.
///
/// A file of its own name is written directly, since it appears only when it is complete. The bytes
/// of a stream, such as a pipe, cannot be taken back: they wait in a Spool. In both cases the
/// memory used does not grow with the output. Not safe on several threads.
class CompleteOutput {
public:
    /// \param output it has to outlive this object, and gets nothing from elsewhere
    explicit CompleteOutput(OutputFile& output) : out(output) {
        if (!out.isReplacedAtomically()) spool.emplace();
    }

    /// Appends bytes.
    /// \throws Error if the system reports a failure, as the other functions do
    void write(std::string_view bytes) { spool ? spool->write(bytes) : out.write(bytes); }

    /// Replaces the first bytes. \pre at least as many bytes were written
    void overwriteBeginning(std::string_view bytes) {
        spool ? spool->overwriteBeginning(bytes) : out.overwriteBeginning(bytes);
    }

    /// Passes all bytes to the output. The caller has to call OutputFile::finish() after that.
    void finish() {
        if (spool) spool->copyTo(out);
        spool.reset();
    }

private:
    OutputFile& out;
    std::optional<Spool> spool;  // none if the output is a file of its own name
};

}  // namespace quarn
