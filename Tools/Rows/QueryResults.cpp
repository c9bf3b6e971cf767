#include "Rows/QueryResults.h"

#include <unistd.h>

#include <nlohmann/json.hpp>

#include <QuarnKit/Base/NumberText.h>

#include "Base/ToolError.h"

namespace quarn::tool {

namespace {

nlohmann::ordered_json withUnit(nlohmann::ordered_json head, const std::string& unit) {
    head["unit"] = unit;
    return head;
}

// Then they show by themselves how far the work is, and a line between them would be in the way.
bool areResultsOnTerminal(const QueryOptions& options) {
    return options.output == "-" && ::isatty(STDOUT_FILENO) != 0;
}

}  // namespace

QueryResults::QueryResults(const QueryOptions& queryOptions, const std::vector<std::string>& inputs,
                           const nlohmann::ordered_json& head, std::vector<Column> columns)
    : options(queryOptions),
      command(head.at("command").get<std::string>()),
      resultColumns(std::move(columns)),
      output(options.output, inputs),
      writer(output, options.format, options.maxMemory, withUnit(head, options.unit), resultColumns),
      oneRow(options.format, resultColumns),
      progress(!areResultsOnTerminal(options)) {}

void QueryResults::add(const std::vector<Cell>& cells, HasResult hasResult) {
    oneRow.clear();
    oneRow.add(cells, hasResult);
    write(oneRow);
}

void QueryResults::write(const ResultRows& rows) {
    writer.write(rows);
    rowCount += rows.rowCount();
    missingResultCount += rows.missingResultCount();
}

void QueryResults::flush() {
    output.flush();
    if (progress.isShown())
        progress.setStage(command + ": " + groupedCount(rowCount) + (rowCount == 1 ? " row" : " rows"));
}

void QueryResults::flushBeforeWaiting(const CsvReader& input) {
    if (!input.hasBufferedLine()) flush();
}

void QueryResults::finish() {
    writer.finish();
    output.finish();
    if (options.areResultsRequired && missingResultCount > 0)
        throw NegativeResult({.found = std::to_string(missingResultCount) + " of " +
                                       std::to_string(rowCount) + " rows without an answer",
                              .expected = "an answer in each"});
}

RowPipeline openRows(const QueryOptions& options, const std::string& path, const std::string& expected,
                     std::vector<std::string> columnNames) {
    return {InputStream::openFileOrStandardInput(path, expected), std::move(columnNames), options.threads};
}

std::vector<Column> positionColumns() {
    return {{"x", Quantity::Length}, {"y", Quantity::Length}, {"z", Quantity::Length}};
}

}  // namespace quarn::tool
