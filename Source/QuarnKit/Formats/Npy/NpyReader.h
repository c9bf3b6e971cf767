/// \file
/// Reads NumPy's array format, `.npy`.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include <QuarnKit/Base/InputStream.h>
#include <QuarnKit/Formats/Npy/NpyHeader.h>

namespace quarn {

/// Reads the rows of an array of floats, in blocks, so that the memory used does not grow with the
/// array.
///
/// Reads the versions 1.0, 2.0 and 3.0 of the format. The size of a file has to be that of its
/// array. An array in Fortran order can be read only from a file, since the numbers of a row are
/// far apart in it. Not safe on several threads.
class NpyReader {
public:
    /// Reads the header.
    /// \throws Error that names the input if it is not an array of floats
    explicit NpyReader(InputStream source);

    [[nodiscard]] const NpyHeader& header() const { return arrayHeader; }

    /// Replaces \p numbers by those of the next rows, row after row: the rows that are available,
    /// at most \p maxRows. Waits for the first one.
    /// \return number of rows; 0 after the last one
    /// \throws Error if the input ends before its last row or continues after it
    /// \pre maxRows > 0
    std::uint64_t next(std::uint64_t maxRows, std::vector<double>& numbers);

    /// Returns the name of the input, as errors show it.
    [[nodiscard]] const std::string& name() const { return input.name(); }

private:
    void readHeader();
    void requireExactSize() const;
    void requireEnd();
    [[nodiscard]] std::uint64_t readRows(std::uint64_t maxRows);
    void readColumns(std::uint64_t rowCount);
    void convert(std::uint64_t rowCount, std::vector<double>& numbers) const;

    InputStream input;
    NpyHeader arrayHeader;
    std::uint64_t dataOffset = 0;  // of the array in its file, for Fortran order
    std::uint64_t rowsRead = 0;
    std::vector<char> bytes;  // of the rows read last
};

}  // namespace quarn
