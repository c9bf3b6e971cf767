/// \file
/// The header of NumPy's array format, `.npy`.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quarn {

/// The bytes that every `.npy` file begins with.
inline constexpr std::string_view kNpyMagic = "\x93NUMPY";

/// The type of an array's elements.
enum class NpyNumber {
    Float64,           ///< `<f8`
    Float64BigEndian,  ///< `>f8`
    Float32,           ///< `<f4`
};

/// The order of an array's elements in the file.
enum class NpyOrder {
    RowMajor,     ///< C order.
    ColumnMajor,  ///< Fortran order.
};

/// The contents of a header. An array of one dimension is a single row.
struct NpyHeader {
    NpyNumber number = NpyNumber::Float64;
    NpyOrder order = NpyOrder::RowMajor;
    std::uint64_t rowCount = 0;
    std::uint64_t columnCount = 1;

    /// Returns the size of an element.
    [[nodiscard]] std::uint64_t numberBytes() const { return number == NpyNumber::Float32 ? 4 : 8; }
    [[nodiscard]] std::uint64_t rowBytes() const { return columnCount * numberBytes(); }
    /// Returns the size of all elements, which fits into 64 bits after parseNpyHeader().
    [[nodiscard]] std::uint64_t dataBytes() const { return rowCount * rowBytes(); }
};

/// Parses the text of a header, such as
/// "{'descr': '<f8', 'fortran_order': False, 'shape': (5, 3), }".
/// \throws Error without file if the text has another form, or an array that is not supported
[[nodiscard]] NpyHeader parseNpyHeader(std::string_view text);

/// The size of the beginning of a file that npyBeginning() returns. The elements follow it.
inline constexpr std::size_t kNpyBeginningBytes = 128;

/// Returns the beginning of a file of format version 1.0 with an array of `<f8` in C order: its
/// magic bytes and its header. All sizes of arrays need the same number of bytes.
[[nodiscard]] std::string npyBeginning(std::uint64_t rowCount, std::uint64_t columnCount);

}  // namespace quarn
