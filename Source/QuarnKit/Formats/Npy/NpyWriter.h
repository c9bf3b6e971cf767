/// \file
/// Writes NumPy's array format, `.npy`.
#pragma once

#include <cstdint>
#include <span>
#include <string>

#include <QuarnKit/Base/Output/CompleteOutput.h>

namespace quarn {

/// Writes an array of rows as `<f8` in C order, format version 1.0.
///
/// The header of an array states the number of its rows, which is known last: it is written in
/// finish(). The memory used does not grow with the array; see CompleteOutput. Not safe on several
/// threads.
class NpyWriter {
public:
    /// \param output it has to outlive the writer
    NpyWriter(OutputFile& output, std::uint64_t columns);

    /// Appends rows.
    /// \param numbers those of whole rows, row after row
    /// \throws Error if the output cannot be written, as finish() does
    void write(std::span<const double> numbers);

    /// Completes the array. The caller has to call OutputFile::finish() after that.
    void finish();

private:
    CompleteOutput out;
    std::uint64_t columnCount;
    std::uint64_t numberCount = 0;
    std::string bytes;  // of the rows written last
};

}  // namespace quarn
