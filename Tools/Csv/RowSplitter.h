/// \file
/// The ends of rows, where cells in quotes may contain line feeds.
#pragma once

#include <cstddef>
#include <string_view>

namespace quarn::tool {

/// States if cells may be in quotes. Without them, a row is a line, and found much faster.
enum class QuotedCells { No, Yes };

/// Splits lines into rows. A comment is a row of its own.
struct RowSplitter {
    char separator = ',';
    QuotedCells quotedCells = QuotedCells::No;

    /// Returns the length of the first rows of \p lines that have at least \p minBytes bytes
    /// together, with the line feed of the last one; npos if that one is not complete.
    [[nodiscard]] std::size_t lengthOfRows(std::string_view lines, std::size_t minBytes) const;

    /// Returns the length of all complete rows at the beginning of \p lines.
    [[nodiscard]] std::size_t lengthOfCompleteRows(std::string_view lines) const;

    /// Removes the first row from \p lines, and returns it without its line feed.
    [[nodiscard]] std::string_view takeRow(std::string_view& lines) const;
};

/// Returns true if the text of a row is neither blank nor a comment.
[[nodiscard]] inline bool hasCells(std::string_view trimmedRow) {
    return !trimmedRow.empty() && !trimmedRow.starts_with('#');
}

}  // namespace quarn::tool
