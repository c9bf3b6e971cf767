#include "Commands/PointCommand.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "Csv.h"

namespace quarn {

void addPointOptions(CLI::App& command, PointOptions& options) {
    addQueryOptions(command, options);
    addCsvInput(command, "POINTS", options.points, "CSV with x,y,z; - is the standard input")
        .capture_default_str();
}

void answerPoints(const std::string& command, const std::vector<Column>& columns, const PointOptions& options,
                  PointAnswer answer) {
    const Screen screen = readScreen(options.screen, options.maxMemory, options.obj);
    CsvReader points(InputFile::orStandardInput(options.points, "a CSV file of points"), {"x", "y", "z"});
    std::vector<Column> allColumns = positionColumns();
    allColumns.push_back({"status"});
    allColumns.insert(allColumns.end(), columns.begin(), columns.end());
    Answers answers(options, {options.screen, options.points},
                    {{"command", command}, {"screen", screen.file}}, allColumns);
    std::vector<double> numbers;
    while (points.next(numbers)) {
        std::vector<Cell> cells(numbers.begin(), numbers.end());
        const auto result = answer(screen, pointAt(numbers, 0));
        cells.emplace_back(std::string_view(result ? "found" : "none"));
        for (std::size_t i = 0; i < 3; ++i) cells.push_back(result ? Cell((*result)[i]) : Cell());
        answers.add(cells, result ? Answered::Yes : Answered::No);
        answers.flushBeforeWaiting(points);
    }
    answers.finish();
}

}  // namespace quarn
