/// \file
/// Queries for many rows of an input, on several threads, with results in the order of the
/// input.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include <QuarnKit/Base/ThreadPool.h>

#include "Csv/CsvRows.h"
#include "Rows/Input/RowInput.h"
#include "Rows/ResultRows.h"

namespace quarn::tool {

/// Adds the result rows of one row of the input. Several threads call it at once.
/// \param number number of the input row, from 1
/// \param numbers those of the row; none if all of their cells are empty
using RowQuery =
    std::function<void(std::int64_t number, std::span<const double> numbers, ResultRows& results)>;

/// Receives the results in the order of the input, on one thread.
class RowSink {
public:
    RowSink() = default;
    RowSink(const RowSink&) = delete;
    RowSink& operator=(const RowSink&) = delete;
    virtual ~RowSink() = default;

    /// Returns empty rows of the sink's format.
    [[nodiscard]] virtual ResultRows makeRows() const = 0;
    virtual void write(const ResultRows& rows) = 0;
    /// Called before the pipeline may have to wait for input.
    virtual void flush() = 0;
};

/// Reads, computes and writes in blocks.
///
/// Each block contains the rows that are available, so that a caller who waits for a result before
/// writing the next row gets it. The output, including the log's warnings, does not depend on the
/// number of threads: if a line is not valid or a query fails, all results of the rows before it
/// are written before the error is thrown. The memory used does not grow with the input.
class RowPipeline {
public:
    /// Reads the input up to its first row.
    /// \param unit the unit of all lengths
    /// \throws Error as openRowInput()
    RowPipeline(InputStream source, const InputColumns& columns, const std::string& unit,
                std::size_t threads);

    /// Returns the input, whose columns to pass on may be selected before run().
    [[nodiscard]] RowInput& input() { return *rowInput; }

    /// Runs the query for each row.
    /// \throws Error if a line is not valid or there is no row, and every exception of the query
    /// and the sink
    void run(const RowQuery& query, RowSink& sink);

private:
    // A part of a block. One thread parses them, and one runs their queries.
    struct Chunk {
        explicit Chunk(ResultRows emptyRows) : results(std::move(emptyRows)) {}

        CsvRows rows;
        std::int64_t rowsBefore = 0;
        ResultRows results;
        std::vector<std::string> warnings;
        std::exception_ptr error;  // of a query; the rows after it have no result
    };

    void countRows();
    void queryChunk(Chunk& chunk, const RowQuery& query) const;
    void queryRows(Chunk& chunk, const RowQuery& query) const;
    void write(RowSink& sink);

    std::unique_ptr<RowInput> rowInput;
    ThreadPool pool;
    std::vector<Chunk> chunks;   // reused for their memory
    std::size_t chunkCount = 0;  // chunks of the block
    std::uint64_t lineCount;     // lines whose results were written
    std::int64_t rowCount = 0;   // rows that were parsed
};

}  // namespace quarn::tool
