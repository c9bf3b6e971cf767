#include "Rows/QueryResults.h"

#include <unistd.h>

#include <nlohmann/json.hpp>

#include <QuarnKit/Base/NumberText.h>

#include "Base/ToolError.h"

namespace quarn {

namespace {

nlohmann::ordered_json withUnit(nlohmann::ordered_json head, const std::string& unit) {
    head["unit"] = unit;
    return head;
}

// Then they show by themselves how far the work is, and a line between them would be in the way.
bool areAnswersOnTerminal(const QueryOptions& options) {
    return options.output == "-" && ::isatty(STDOUT_FILENO) != 0;
}

}  // namespace

Answers::Answers(const QueryOptions& queryOptions, const std::vector<std::string>& inputs,
                 const nlohmann::ordered_json& head, std::vector<Column> columns)
    : options(queryOptions),
      command(head.at("command").get<std::string>()),
      answerColumns(std::move(columns)),
      output(options.output, inputs),
      writer(output, options.format, options.maxMemory, withUnit(head, options.unit), answerColumns),
      oneRow(options.format, answerColumns),
      clock(!areAnswersOnTerminal(options)) {}

void Answers::add(const std::vector<Cell>& cells, Answered answered) {
    oneRow.clear();
    oneRow.add(cells, answered);
    write(oneRow);
}

void Answers::write(const AnswerRows& rows) {
    writer.write(rows);
    rowCount += rows.rowCount();
    unansweredCount += rows.unansweredCount();
}

void Answers::flush() {
    output.flush();
    if (clock.isShown())
        clock.enter(command + ": " + groupedCount(rowCount) + (rowCount == 1 ? " row" : " rows"));
}

void Answers::flushBeforeWaiting(const CsvReader& input) {
    if (!input.hasBufferedLine()) flush();
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

RowPipeline openRows(const QueryOptions& options, const std::string& path, const std::string& expected,
                     std::vector<std::string> columnNames) {
    return {InputFile::orStandardInput(path, expected), std::move(columnNames), options.threads};
}

std::vector<Column> positionColumns() {
    return {{"x", Quantity::Length}, {"y", Quantity::Length}, {"z", Quantity::Length}};
}

}  // namespace quarn
