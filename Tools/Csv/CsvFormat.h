/// \file
/// The format of the rows of a CSV input: which cells contain numbers, and which are passed on.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <QuarnKit/Base/Error.h>

#include "Csv/InputColumns.h"

namespace quarn::tool {

struct CsvRows;

/// The header of a CSV input.
struct CsvHeader {
    std::vector<std::string> names;  ///< Of all columns; the name of a column may be empty.
    ColumnMatch match;               ///< The columns that the command reads.
};

/// A column of the input that is passed on to the result.
struct PassedColumn {
    std::string name;
    bool hasUnit = false;  ///< True if its header has the unit of all lengths; the name has none.
};

/// Parses rows of a fixed count of cells. Safe on any number of threads.
class CsvFormat {
public:
    /// Creates the format of rows without a header, whose cells are all numbers.
    CsvFormat(std::vector<std::string> numberNames, char cellSeparator);

    /// Creates the format of the rows below a header.
    CsvFormat(CsvHeader header, char cellSeparator);

    /// Returns the count of numbers in a row.
    [[nodiscard]] std::size_t numberCount() const { return numberCells.size(); }
    [[nodiscard]] char separatorOfCells() const { return separator; }
    /// Returns true if the columns have names, from a header.
    [[nodiscard]] bool hasNames() const { return hasHeader; }

    /// Selects the cells to pass on: those of all columns with a name, except names that the
    /// result uses itself. A column that the command reads is passed on under its preferred name
    /// if the result uses only its own. Without a header, no cell is passed on.
    /// \return the selected columns in their order
    [[nodiscard]] std::vector<PassedColumn> passColumns(const std::vector<std::string>& namesInUse);

    /// Appends the row of \p line.
    /// \return false if the line contains no row: it is blank or begins with #
    /// \throws Error without file and line if the line is not valid; then \p rows is unchanged
    bool parse(std::string_view line, CsvRows& rows) const;

    /// Returns the error of an input without rows, without file.
    [[nodiscard]] Error noRowsError() const;

private:
    // What a cell contains. Names are apart from this, which is read for each cell of each row.
    struct CellUse {
        std::size_t number = 0;  // index of its number, if the command reads it
        bool isRead = false;
        bool isPassed = false;
    };

    [[nodiscard]] bool skipSeparator(const char*& position, const char* last) const;
    [[nodiscard]] bool parseFast(std::string_view text, double* numbers, CsvRows& rows) const;
    void parseCells(std::string_view text, double* numbers, CsvRows& rows) const;
    [[nodiscard]] double parseCell(std::size_t index, std::string_view cell) const;
    void convert(double* numbers) const;
    [[nodiscard]] bool hasOnlyEmptyNumbers(const std::vector<std::string_view>& row) const;
    [[nodiscard]] bool isNameOfCell(std::string_view name) const;
    [[nodiscard]] std::string rowText() const;

    std::vector<CellUse> cells;
    std::vector<std::string> names;           // of the cells
    std::vector<std::string> preferredNames;  // of the cells; empty for those that are not read
    std::vector<std::size_t> numberCells;     // for each number, the index of its cell
    RowConversion conversion = RowConversion::None;
    bool hasHeader = false;
    char separator;
};

}  // namespace quarn::tool
