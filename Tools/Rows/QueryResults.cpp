#include "Rows/QueryResults.h"

#include <unistd.h>

#include <QuarnKit/Base/NumberText.h>
#include <QuarnKit/Formats/OutputName.h>

#include "Base/ErrorReport.h"

namespace quarn::tool {

namespace {

ResultHead withUnit(ResultHead head, const std::string& unit) {
    head.unit = unit;
    return head;
}

// The name of an array's file is enough to select the format.
ResultFormat formatOf(const QueryOptions& options) {
    const bool isNamedNpy = options.format == ResultFormat::Csv && extensionOf(options.output) == "npy";
    return isNamedNpy ? ResultFormat::Npy : options.format;
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
      format(formatOf(options)),
      command(head.command),
      resultColumns(std::move(columns)),
      output(options.output, inputs),
      writer(output, format, withUnit(std::move(head), options.unit), resultColumns),
      oneRow(format, resultColumns),
      progress(visibilityFor(options)) {
    requireResultName(options.output, format);
}

void QueryResults::add(const std::vector<Cell>& cells, HasResult hasResult,
                       std::span<const std::string_view> passedCells) {
    oneRow.clear();
    oneRow.setPassedCells(passedCells);
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

void QueryResults::finish() {
    writer.finish();
    output.finish();
    if (options.areResultsRequired && missingResultCount > 0)
        throw NegativeResult({.found = std::to_string(missingResultCount) + " of " +
                                       std::to_string(rowCount) + " rows have no result",
                              .expected = "a result in each"});
}

RowPipeline openRows(const QueryOptions& options, const std::string& path, const std::string& expected,
                     const InputColumns& columns) {
    // A name that cannot be written is reported before any input is awaited.
    refuseInputAsOutput(options.output, {path});
    requireResultName(options.output, formatOf(options));
    return {InputStream::openFileOrStandardInput(path, expected), columns, options.unit, options.threads};
}

std::vector<Column> withPassedColumns(std::vector<Column> columns, RowInput& input) {
    std::vector<std::string> names;
    names.reserve(columns.size());
    for (const Column& column : columns) names.push_back(column.name);
    for (const PassedColumn& passed : input.passColumns(names))
        columns.push_back({passed.name, passed.hasUnit ? Quantity::Length : Quantity::Plain});
    return columns;
}

std::vector<Column> positionColumns() {
    return {{"x", Quantity::Length}, {"y", Quantity::Length}, {"z", Quantity::Length}};
}

}  // namespace quarn::tool
