/// \file
/// Answers to many rows of a CSV input, on several threads and in the order of the input.
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <span>
#include <string_view>
#include <vector>

#include <QuarnKit/Base/ThreadPool.h>

#include "Rows/CsvRows.h"
#include "Rows/LineBlockReader.h"
#include "Rows/ResultRows.h"

namespace quarn::tool {

/// Adds the rows that query one row of the input. Several threads call it at once.
/// \param number of the row, from 1
using RowQuery =
    std::function<void(std::int64_t number, std::span<const double> numbers, ResultRows& results)>;

/// Takes the results in their order. One thread calls it.
class RowSink {
public:
    RowSink() = default;
    RowSink(const RowSink&) = delete;
    RowSink& operator=(const RowSink&) = delete;
    virtual ~RowSink() = default;

    /// Empty rows of the sink's format.
    [[nodiscard]] virtual ResultRows makeRows() const = 0;
    virtual void write(const ResultRows& rows) = 0;
    /// Is called before the input may have to be waited for.
    virtual void flush() = 0;
};

/// Reads, results and writes in blocks.
///
/// Each block holds the lines that are at hand, so that a caller who waits for an query before the next question gets
/// it. What comes out, warnings of the log included, does not depend on the number of threads: where a line is wrong, or an query fails, all results
/// to the rows before it are written before the error is thrown. The memory used does not grow with the input.
class RowPipeline {
public:
    /// \param columnNames what the numbers of a row are called in errors
    RowPipeline(InputStream source, std::vector<std::string> columnNames, std::size_t threads);

    void run(const RowQuery& query, RowSink& sink);

private:
    // Some lines of a block. One thread reads them, and one results them.
    struct Chunk {
        explicit Chunk(ResultRows emptyRows) : results(std::move(emptyRows)) {}

        std::string_view lines;
        CsvRows rows;
        std::int64_t rowsBefore = 0;
        ResultRows results;
        std::vector<std::string> warnings;
        std::exception_ptr error;  // why not all of the rows are answered
    };

    void split(std::string_view lines, const RowSink& sink);
    void countRows();
    void queryChunk(Chunk& chunk, const RowQuery& query) const;
    void write(RowSink& sink);

    LineBlockReader blocks;
    CsvFormat format;
    CsvHead head;
    ThreadPool pool;
    std::vector<Chunk> chunks;    // kept for their memory
    std::size_t chunkCount = 0;   // chunks of the block
    std::uint64_t lineCount = 0;  // lines that were written the results of
    std::int64_t rowCount = 0;    // rows that were read
};

}  // namespace quarn::tool
