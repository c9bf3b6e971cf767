#include "Rows/QueryResults.h"

#include <unistd.h>

#include <QuarnKit/Base/NumberText.h>

#include "Base/ToolError.h"

namespace quarn::tool {

namespace {

ResultHead withUnit(ResultHead head, const std::string& unit) {
    head.unit = unit;
    return head;
}

// Results on a terminal show the progress by themselves, and a progress line would appear between
// them.
ProgressVisibility visibilityFor(const QueryOptions& options) {
    const bool areResultsOnTerminal = options.output == "-" && ::isatty(STDOUT_FILENO) != 0;
    return areResultsOnTerminal ? ProgressVisibility::Hidden : ProgressVisibility::Shown;
}

}  // namespace

QueryResults::QueryResults(const QueryOptions& queryOptions, const std::vector<std::string>& inputs,
                           ResultHead head, std::vector<Column> columns)
    : options(queryOptions),
      command(head.command),
      resultColumns(std::move(columns)),
      output(options.output, inputs),
      writer(output, options.format, options.maxMemory, withUnit(std::move(head), options.unit),
             resultColumns),
      oneRow(options.format, resultColumns),
      progress(visibilityFor(options)) {
    requireResultName(options.output, options.format);
}

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
                                       std::to_string(rowCount) + " rows have no result",
                              .expected = "a result in each"});
}

RowPipeline openRows(const QueryOptions& options, const std::string& path, const std::string& expected,
                     std::vector<std::string> columnNames) {
    return {InputStream::openFileOrStandardInput(path, expected), std::move(columnNames), options.threads};
}

std::vector<Column> positionColumns() {
    return {{"x", Quantity::Length}, {"y", Quantity::Length}, {"z", Quantity::Length}};
}

}  // namespace quarn::tool
