/// \file
/// Rows of numbers from lines of comma-separated text. For the readers of CSV inputs.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <QuarnKit/Base/Error.h>

namespace quarn::tool {

/// Removes the first line from \p lines, and returns it without its line feed.
[[nodiscard]] std::string_view takeLine(std::string_view& lines);

/// The format of a row: a fixed count of numbers, separated by commas and optional blanks. Safe on
/// any number of threads.
class CsvFormat {
public:
    /// \param columnNames names of a row's numbers, for errors
    explicit CsvFormat(std::vector<std::string> columnNames) : columns(std::move(columnNames)) {}

    [[nodiscard]] std::size_t columnCount() const { return columns.size(); }

    /// Appends the numbers of \p line.
    /// \return false if the line contains no row: it is blank or begins with #
    /// \throws Error without file and line if the line is not valid
    bool parse(std::string_view line, std::vector<double>& numbers) const;

private:
    bool parseFast(std::string_view text, std::vector<double>& numbers) const;
    void parseCells(std::string_view text, std::vector<double>& numbers) const;

    std::vector<std::string> columns;
};

/// The beginning of a CSV input: an optional byte order mark, and an optional header.
class CsvHead {
public:
    /// Removes the text before the first row from \p lines.
    /// \return the number of removed lines
    std::uint64_t skip(std::string_view& lines);

private:
    bool isAtBeginning = true;
    bool isPassed = false;
};

/// The rows of several lines.
struct CsvRows {
    std::vector<double> numbers;      ///< Row after row.
    std::uint64_t lineCount = 0;      ///< Number of parsed lines, including an invalid one.
    std::optional<Error> error = {};  ///< The error of the last line, if it is not valid.

    /// Replaces the contents by the rows of \p lines, up to the first line that is not valid.
    void read(std::string_view lines, const CsvFormat& format);
};

}  // namespace quarn::tool
