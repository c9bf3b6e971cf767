/// \file
/// The output of the commands that write a row for each result.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include <QuarnKit/Base/OutputFile.h>
#include <QuarnScreen/Point.h>

#include "Base/ProgressLine.h"
#include "Csv/InputColumns.h"
#include "Rows/Input/RowInput.h"
#include "Rows/QueryOptions.h"
#include "Rows/ResultWriter.h"
#include "Rows/RowPipeline.h"

namespace quarn::tool {

/// Writes a command's rows to the output of its options, and counts those without a result.
class QueryResults : public RowSink {
public:
    /// \param inputs files that the output must not replace
    /// \throws Error if the output cannot be written
    /// \param head its unit is replaced by that of the options
    QueryResults(const QueryOptions& queryOptions, const std::vector<std::string>& inputs, ResultHead head,
                 std::vector<Column> columns);

    /// \param passedCells cells of the input that follow \p cells; see ResultRows
    void add(const std::vector<Cell>& cells, HasResult hasResult,
             std::span<const std::string_view> passedCells = {});

    [[nodiscard]] ResultRows makeRows() const override { return {format, resultColumns}; }
    void write(const ResultRows& rows) override;
    void flush() override;

    /// Completes the output.
    /// \throws NegativeResult if a required result is missing; Error if the output cannot be
    /// written
    void finish();

private:
    const QueryOptions& options;
    ResultFormat format;
    std::string command;
    std::vector<Column> resultColumns;
    OutputFile output;
    ResultWriter writer;
    ResultRows oneRow;
    std::uint64_t rowCount = 0;
    std::uint64_t missingResultCount = 0;
    ProgressLine progress;
};

/// Opens the file \p path, or the standard input for "-", for queries on the threads of the
/// options.
/// \param expected the kind of file, as in "a CSV file of points", for errors
/// \throws Error if the file cannot be opened, or as openRowInput()
[[nodiscard]] RowPipeline openRows(const QueryOptions& options, const std::string& path,
                                   const std::string& expected, const InputColumns& columns);

/// Returns the columns of a result, followed by those that the rows of \p input pass on to it.
[[nodiscard]] std::vector<Column> withPassedColumns(std::vector<Column> columns, RowInput& input);

/// Returns the columns of a position.
[[nodiscard]] std::vector<Column> positionColumns();

/// Returns three consecutive numbers of a row as a position.
[[nodiscard]] inline Point<double, 3> pointAt(std::span<const double> numbers, std::size_t first) {
    return {numbers[first], numbers[first + 1], numbers[first + 2]};
}

}  // namespace quarn::tool
