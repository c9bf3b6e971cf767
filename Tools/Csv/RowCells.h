/// \file
/// The cells of a row of comma-separated text.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quarn::tool {

/// The separator of cells that any number of blanks separates.
inline constexpr char kBlankSeparator = ' ';

/// Iterates over the cells of a row. A cell may be in quotes, where separators, line ends and
/// doubled quotes belong to its text.
class RowCells {
public:
    /// \param rowText a row without blanks around it; it has to outlive this object
    RowCells(std::string_view rowText, char cellSeparator) : rest(rowText), separator(cellSeparator) {}

    /// Reads the next cell.
    /// \param[out] cell its text without blanks around it, and with its quotes, if any
    /// \return false at the end of the row
    /// \throws Error if a cell in quotes has no closing quote
    [[nodiscard]] bool next(std::string_view& cell);

private:
    [[nodiscard]] std::size_t quotedLength() const;

    std::string_view rest;
    char separator;
    bool isAtEnd = false;
};

/// Returns all cells of a row; see RowCells.
[[nodiscard]] std::vector<std::string_view> cellsOf(std::string_view row, char separator);

[[nodiscard]] inline bool isQuoted(std::string_view cell) {
    return cell.starts_with('"');
}

/// Returns the text of a cell without its quotes.
[[nodiscard]] std::string textOf(std::string_view cell);

/// Returns the text between the quotes of a cell, where quotes may be doubled, or the cell itself.
[[nodiscard]] std::string_view withoutQuotes(std::string_view cell);

/// Appends a text to a row with commas, in quotes if it contains a comma, quote or line end.
void appendCommaText(std::string& row, std::string_view text);

/// Appends cells of a row with any separator to a row with commas, each after a comma.
void appendCommaCells(std::string& row, std::span<const std::string_view> cells);

}  // namespace quarn::tool
