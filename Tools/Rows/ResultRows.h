/// \file
/// Rows of results in the format of the output.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "Base/Json.h"

namespace quarn::tool {

enum class ResultFormat {
    Csv,
    Json,
    Npy,  ///< An array of NumPy.
};

/// The kind of a column's numbers.
enum class Quantity { Plain, Length };

struct Column {
    std::string name;
    Quantity quantity = Quantity::Plain;
};

/// The status of a row whose input has no numbers.
inline constexpr std::string_view kEmptyRow = "empty";

/// One value of a row: none, a number, a count or a word.
using Cell = std::variant<std::monostate, double, std::int64_t, std::string_view>;

/// States if a row has the result of its query.
enum class HasResult { No, Yes };

/// Consecutive rows, stored as text, or as numbers for an array.
///
/// A missing value is an empty cell in CSV, null in JSON and NaN in an array; a number that is not
/// finite is also null in JSON. A word is a status, which arrays state by its statusNumber().
/// Different objects may be used on different threads.
class ResultRows {
public:
    ResultRows(ResultFormat resultFormat, const std::vector<Column>& columns);

    /// Sets the cells of the input that follow the cells of each further row, as they are in a CSV
    /// row. JSON gets numbers without quotes as numbers, null for empty cells and for numbers that
    /// are not finite, and the rest as text. An array gets NaN for cells that are not numbers.
    void setPassedCells(std::span<const std::string_view> cells);

    /// \pre as many cells as columns, together with those that are passed on
    void add(std::span<const Cell> cells, HasResult hasResult);

    void clear();

    /// Returns the rows: lines of CSV, or JSON objects, each after a comma and a line feed.
    [[nodiscard]] std::string_view text() const { return std::string_view(rows).substr(0, length); }
    /// Returns the rows of an array, one after the other.
    [[nodiscard]] std::span<const double> numbers() const { return rowNumbers; }
    [[nodiscard]] std::uint64_t rowCount() const { return count; }
    [[nodiscard]] std::uint64_t missingResultCount() const { return missingResults; }

private:
    void setPassedNumbers(std::span<const std::string_view> cells);
    void addNumbers(std::span<const Cell> cells);

    ResultFormat format;
    std::optional<JsonRow> jsonRow;        // for JSON
    std::vector<std::string> passedCells;  // for JSON
    std::string passedText;                // for CSV, with a comma before each cell
    std::vector<double> passedNumbers;     // for an array
    std::vector<double> rowNumbers;        // of an array
    std::string rows;
    std::size_t length = 0;  // of the complete rows in it
    std::uint64_t count = 0;
    std::uint64_t missingResults = 0;
};

}  // namespace quarn::tool
