/// \file
/// Rows of results as text.
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

enum class ResultFormat { Csv, Json };

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

/// Consecutive rows, stored as text.
///
/// A missing value is an empty cell in CSV and null in JSON; a number that is not finite is also
/// null in JSON. Different objects may be used on different threads.
class ResultRows {
public:
    ResultRows(ResultFormat format, const std::vector<Column>& columns);

    /// Sets the cells of the input that follow the cells of each further row, as they are in a CSV
    /// row. JSON gets numbers without quotes as numbers, null for empty cells and for numbers that
    /// are not finite, and the rest as text.
    void setPassedCells(std::span<const std::string_view> cells);

    /// \pre as many cells as columns, together with those that are passed on
    void add(std::span<const Cell> cells, HasResult hasResult);

    void clear();

    /// Returns the rows: lines of CSV, or JSON objects, each after a comma and a line feed.
    [[nodiscard]] std::string_view text() const { return std::string_view(rows).substr(0, length); }
    [[nodiscard]] std::uint64_t rowCount() const { return count; }
    [[nodiscard]] std::uint64_t missingResultCount() const { return missingResults; }

private:
    std::optional<JsonRow> jsonRow;        // none for CSV
    std::vector<std::string> passedCells;  // for JSON
    std::string passedText;                // for CSV, with a comma before each cell
    std::string rows;
    std::size_t length = 0;  // of the complete rows in it
    std::uint64_t count = 0;
    std::uint64_t missingResults = 0;
};

}  // namespace quarn::tool
