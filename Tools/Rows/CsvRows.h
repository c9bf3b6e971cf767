/// \file
/// Rows of numbers from lines of comma-separated text.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <QuarnKit/Base/Error.h>

namespace quarn::tool {

/// Takes the first line off \p lines, and hands it out without its line feed.
[[nodiscard]] std::string_view takeLine(std::string_view& lines);

/// How a line becomes a row: a fixed count of numbers with commas between them, and blanks around them. Safe on any
/// number of threads.
class CsvFormat {
public:
    /// \param columnNames what the numbers of a row are called in errors
    explicit CsvFormat(std::vector<std::string> columnNames) : columns(std::move(columnNames)) {}

    [[nodiscard]] std::size_t columnCount() const { return columns.size(); }

    /// Appends the numbers of \p line, or stops with a Error without file and line.
    /// \return false where it holds no row: it is blank or begins with #
    bool parse(std::string_view line, std::vector<double>& numbers) const;

private:
    bool parseFast(std::string_view text, std::vector<double>& numbers) const;
    void parseCells(std::string_view text, std::vector<double>& numbers) const;

    std::vector<std::string> columns;
};

/// The beginning of a CSV input: a byte order mark, and a header where the first cell is no number.
class CsvHead {
public:
    /// Takes what stands before the first row off \p lines. \return how many lines that were
    std::uint64_t skip(std::string_view& lines);

private:
    bool isAtBeginning = true;
    bool isPassed = false;
};

/// The rows of some lines.
struct CsvRows {
    std::vector<double> numbers;      ///< Row after row.
    std::uint64_t lineCount = 0;      ///< Lines that were read, with the one that is wrong.
    std::optional<Error> error = {};  ///< What is wrong with the last of them.

    /// Replaces all by the rows of \p lines, as far as the first line that is wrong.
    void read(std::string_view lines, const CsvFormat& format);
};

}  // namespace quarn::tool
