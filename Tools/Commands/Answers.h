/// \file
/// The rows that a query command answers.
#pragma once

#include <cmath>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include <QuarnScreen/Point.h>

#include "AnswerWriter.h"
#include "Commands/Options.h"
#include "Csv.h"
#include "OutputFile.h"

namespace quarn {

/// Whether a row holds what was asked for.
enum class Answered { No, Yes };

/// Writes a command's rows where and how the options say, and keeps count of those without an answer.
class Answers {
public:
    /// \param inputs files that the output must not replace
    /// \param head members of the JSON document before "unit" and the rows, as in "command"
    Answers(const QueryOptions& queryOptions, const std::vector<std::string>& inputs,
            const nlohmann::ordered_json& head, std::vector<Column> columns);

    void add(const std::vector<Cell>& cells, Answered answered);

    /// Hands over what is there where the next row of \p input may keep the reader of the output waiting.
    void flushBeforeWaiting(const CsvReader& input);

    /// Completes the output. Stops with ExitCode::AnswerIsNo where an answer is required and missing.
    void finish();

private:
    const QueryOptions& options;
    OutputFile output;
    AnswerWriter writer;
    std::uint64_t rowCount = 0;
    std::uint64_t unansweredCount = 0;
};

/// The columns of a position.
[[nodiscard]] std::vector<Column> positionColumns();

/// Three consecutive numbers of a row as a position.
[[nodiscard]] inline Point<double, 3> pointAt(const std::vector<double>& numbers, std::size_t first) {
    return {numbers.at(first), numbers.at(first + 1), numbers.at(first + 2)};
}

}  // namespace quarn
