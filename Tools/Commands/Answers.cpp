#include "Commands/Answers.h"

#include <nlohmann/json.hpp>

#include "ToolError.h"

namespace quarn {

namespace {

nlohmann::ordered_json withUnit(nlohmann::ordered_json head, const std::string& unit) {
    head["unit"] = unit;
    return head;
}

}  // namespace

Answers::Answers(const QueryOptions& queryOptions, const std::vector<std::string>& inputs,
                 const nlohmann::ordered_json& head, std::vector<Column> columns)
    : options(queryOptions),
      output(options.output, inputs),
      writer(output, options.format, options.maxMemory, withUnit(head, options.unit), std::move(columns)) {}

void Answers::add(const std::vector<Cell>& cells, Answered answered) {
    writer.writeRow(cells);
    ++rowCount;
    if (answered == Answered::No) ++unansweredCount;
}

void Answers::flushBeforeWaiting(const CsvReader& input) {
    if (!input.hasBufferedLine()) output.flush();
}

void Answers::finish() {
    writer.finish();
    output.finish();
    if (options.areAnswersRequired && unansweredCount > 0)
        throw ToolError{.code = ExitCode::AnswerIsNo,
                        .found = std::to_string(unansweredCount) + " of " + std::to_string(rowCount) +
                                 " rows without an answer",
                        .expected = "an answer in each"};
}

std::vector<Column> positionColumns() {
    return {{"x", Quantity::Length}, {"y", Quantity::Length}, {"z", Quantity::Length}};
}

}  // namespace quarn
