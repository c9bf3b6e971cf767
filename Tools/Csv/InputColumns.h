/// \file
/// The columns that commands read, and the names by which a header may call them.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quarn::tool {

/// Columns that belong together, such as the coordinates of a position: the names that they may
/// have, by preference.
using ColumnGroup = std::vector<std::vector<std::string>>;

/// The change of six numbers, after which the last three have the meaning that a command expects.
enum class RowConversion {
    None,
    DirectionToTarget,  ///< Adds the first position to the direction.
    TargetToDirection,  ///< Subtracts the first position from the second one.
};

/// One set of columns from which a command can read its numbers.
struct InputForm {
    std::vector<ColumnGroup> groups;
    RowConversion conversion = RowConversion::None;
};

/// Numbers in a row of the longest form.
inline constexpr std::size_t kMaxRowNumbers = 6;

/// The numbers that a command reads from each row, at most kMaxRowNumbers.
struct InputColumns {
    std::vector<std::string> names;  ///< Of the numbers, in their order without a header.
    std::vector<InputForm> forms;    ///< By preference.
};

[[nodiscard]] InputColumns uvInput();
[[nodiscard]] InputColumns positionInput();
/// Returns the columns of two positions, or of a position and a direction.
[[nodiscard]] InputColumns rayInput();
/// Returns the columns of a position and a direction, or of two positions.
[[nodiscard]] InputColumns lineInput();

/// A name of a header without its unit, as in "x" of "x[m]".
struct HeaderName {
    std::string_view name;
    std::string_view unit;  ///< Empty if there is none.
};

/// Splits a name such as "x[m]" or "x (m)".
[[nodiscard]] HeaderName splitHeaderName(std::string_view text);

/// Returns true if two names differ at most by case, blanks, and the characters "_", "-" and ".".
[[nodiscard]] bool isSameColumnName(std::string_view a, std::string_view b);

/// A form whose columns a header has.
struct ColumnMatch {
    RowConversion conversion = RowConversion::None;
    std::vector<std::size_t> cells = {};       ///< For each number, the index of its column.
    std::vector<std::string> firstNames = {};  ///< For each number, the preferred name of its column.
};

/// Returns the first form whose columns are all in a header; nothing if there is none.
/// \param header the names of the columns, without units
[[nodiscard]] std::optional<ColumnMatch> matchColumns(const InputColumns& columns,
                                                      std::span<const std::string_view> header);

/// Returns the names of all forms for an error, as in "fromX,fromY,fromZ (or originX..)".
[[nodiscard]] std::string knownNames(const InputColumns& columns);

}  // namespace quarn::tool
