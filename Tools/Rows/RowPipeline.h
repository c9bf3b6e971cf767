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

namespace quarn {

/// Adds the rows that answer one row of the input. Several threads call it at once.
/// \param number of the row, from 1
using RowAnswer =
    std::function<void(std::int64_t number, std::span<const double> numbers, AnswerRows& answers)>;

/// Takes the answers in their order. One thread calls it.
class RowSink {
public:
    RowSink() = default;
    RowSink(const RowSink&) = delete;
    RowSink& operator=(const RowSink&) = delete;
    virtual ~RowSink() = default;

    /// Empty rows of the sink's format.
    [[nodiscard]] virtual AnswerRows makeRows() const = 0;
    virtual void write(const AnswerRows& rows) = 0;
    /// Is called before the input may have to be waited for.
    virtual void flush() = 0;
};

/// Reads, answers and writes in blocks.
///
/// Each block holds the lines that are at hand, so that a caller who waits for an answer before the next question gets
/// it. What comes out, warnings of the log included, does not depend on the number of threads: where a line is wrong, or an answer fails, all answers
/// to the rows before it are written before the error is thrown. The memory used does not grow with the input.
class RowPipeline {
public:
    /// \param columnNames what the numbers of a row are called in errors
    RowPipeline(InputFile source, std::vector<std::string> columnNames, std::size_t threads);

    void run(const RowAnswer& answer, RowSink& sink);

private:
    // Some lines of a block. One thread reads them, and one answers them.
    struct Part {
        explicit Part(AnswerRows emptyRows) : answers(std::move(emptyRows)) {}

        std::string_view lines;
        CsvRows rows;
        std::int64_t rowsBefore = 0;
        AnswerRows answers;
        std::vector<std::string> warnings;
        std::exception_ptr error;  // why not all of the rows are answered
    };

    void split(std::string_view lines, const RowSink& sink);
    void countRows();
    void answerPart(Part& part, const RowAnswer& answer) const;
    void write(RowSink& sink);

    LineBlocks blocks;
    CsvFormat format;
    CsvHead head;
    WorkerTeam team;
    std::vector<Part> parts;      // kept for their memory
    std::size_t partCount = 0;    // parts of the block
    std::uint64_t lineCount = 0;  // lines that were written the answers of
    std::int64_t rowCount = 0;    // rows that were read
};

}  // namespace quarn
