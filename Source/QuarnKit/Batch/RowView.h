/// \file
/// Rows of values in memory that the caller owns.
#pragma once

#include <cstddef>
#include <cstring>
#include <type_traits>

#include <QuarnScreen/Point.h>

namespace quarn {

/// A view of rows of N values each, with any distance between rows and between the values of a row,
/// as NumPy arrays have. It does not own the memory. An empty view as an output means that it is
/// not wanted.
///
/// Thread-safety: different rows may be read and written on different threads.
///
/// \code{.cpp}
/// std::array<double, 6> numbers = {1.0, 2.0, 3.0, 4.0, 5.0, 6.0};
/// const quarn::RowView<double, 3> rows(numbers.data(), 2);
/// rows.set(1, {7.0, 8.0, 9.0});
/// assert(rows.row(0)[2] == 3.0 && numbers[3] == 7.0);
/// \endcode
template <class T, std::size_t N>
class RowView {
public:
    using Value = std::remove_const_t<T>;
    using Row = std::conditional_t<N == 1, Value, Point<Value, N>>;

    RowView() = default;

    /// Views contiguous rows, one after the other.
    RowView(T* first, std::size_t rows) : RowView(first, rows, sizeof(T) * N, sizeof(T)) {}

    /// \param first first value of the first row
    /// \param rows number of rows
    /// \param betweenRows bytes from a row to the next one; 0 repeats one row, and may be negative
    /// \param betweenValues bytes from a value of a row to the next one
    RowView(T* first, std::size_t rows, std::ptrdiff_t betweenRows, std::ptrdiff_t betweenValues)
        : start(first), count(rows), rowStride(betweenRows), valueStride(betweenValues) {}

    [[nodiscard]] std::size_t size() const { return count; }
    [[nodiscard]] bool empty() const { return count == 0; }

    /// Returns the value of a row, or the point of its values.
    /// \pre index < size()
    [[nodiscard]] Row row(std::size_t index) const {
        if constexpr (N == 1) {
            return valueAt(index, 0);
        } else {
            Row result;
            for (std::size_t i = 0; i < N; ++i) result[i] = valueAt(index, i);
            return result;
        }
    }

    /// Replaces a row.
    /// \pre index < size()
    void set(std::size_t index, const Row& values) const requires(!std::is_const_v<T>) {
        if constexpr (N == 1)
            setValue(index, 0, values);
        else
            for (std::size_t i = 0; i < N; ++i) setValue(index, i, values[i]);
    }

private:
    using Byte = std::conditional_t<std::is_const_v<T>, const std::byte, std::byte>;

    [[nodiscard]] Byte* at(std::size_t row, std::size_t value) const {
        return reinterpret_cast<Byte*>(start) + static_cast<std::ptrdiff_t>(row) * rowStride +
               static_cast<std::ptrdiff_t>(value) * valueStride;
    }
    // Values may have any alignment, as in packed records.
    [[nodiscard]] Value valueAt(std::size_t row, std::size_t value) const {
        Value result;
        std::memcpy(&result, at(row, value), sizeof(Value));
        return result;
    }
    void setValue(std::size_t row, std::size_t value, const Value& newValue) const {
        std::memcpy(at(row, value), &newValue, sizeof(Value));
    }

    T* start = nullptr;
    std::size_t count = 0;
    std::ptrdiff_t rowStride = 0;
    std::ptrdiff_t valueStride = 0;
};

}  // namespace quarn
