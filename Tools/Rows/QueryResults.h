/// \file
/// The rows that a query command answers.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include <QuarnKit/Base/OutputFile.h>
#include <QuarnScreen/Point.h>

#include "Base/ProgressLine.h"
#include "Rows/CsvReader.h"
#include "Rows/QueryOptions.h"
#include "Rows/ResultWriter.h"
#include "Rows/RowPipeline.h"

namespace quarn::tool {

/// Writes a command's rows where and how the options say, and keeps count of those without an answer.
class QueryResults : public RowSink {
public:
    /// \param inputs files that the output must not replace
    /// \param head its unit is replaced by that of the options
    QueryResults(const QueryOptions& queryOptions, const std::vector<std::string>& inputs, ResultHead head,
                 std::vector<Column> columns);

    void add(const std::vector<Cell>& cells, HasResult hasResult);

    [[nodiscard]] ResultRows makeRows() const override { return {options.format, resultColumns}; }
    void write(const ResultRows& rows) override;
    void flush() override;

    /// Hands over what is there where the next row of \p input may keep the reader of the output waiting.
    void flushBeforeWaiting(const CsvReader& input);

    /// Completes the output. Stops with ExitCode::NegativeResult where an answer is required and missing.
    void finish();

private:
    const QueryOptions& options;
    std::string command;
    std::vector<Column> resultColumns;
    OutputFile output;
    ResultWriter writer;
    ResultRows oneRow;
    std::uint64_t rowCount = 0;
    std::uint64_t missingResultCount = 0;
    ProgressLine progress;
};

/// QueryResults each row of the file \p path, or of the standard input for "-", on as many threads as the options say.
/// \param expected what the file should be, as in "a CSV file of points"
/// \param columnNames what the numbers of a row are called in errors
[[nodiscard]] RowPipeline openRows(const QueryOptions& options, const std::string& path,
                                   const std::string& expected, std::vector<std::string> columnNames);

/// The columns of a position.
[[nodiscard]] std::vector<Column> positionColumns();

/// Three consecutive numbers of a row as a position.
[[nodiscard]] inline Point<double, 3> pointAt(std::span<const double> numbers, std::size_t first) {
    return {numbers[first], numbers[first + 1], numbers[first + 2]};
}

}  // namespace quarn::tool
