#include "Rows/PointRows.h"

#include <CLI/CLI.hpp>
#include <array>
#include <nlohmann/json.hpp>

#include "Base/ScreenInput.h"

namespace quarn::tool {

void addPointOptions(CLI::App& command, PointOptions& options) {
    addQueryOptions(command, options);
    addThreadsOption(command, options.threads);
    addCsvInput(command, "POINTS", options.points, "CSV with x,y,z; - is the standard input")
        .capture_default_str();
}

void runPointQuery(const std::string& command, const std::vector<Column>& columns,
                   const PointOptions& options, PointQuery query) {
    const Screen screen = openScreen(options.screen, options.maxMemory, options.obj);
    RowPipeline points = openRows(options, options.points, "a CSV file of points", {"x", "y", "z"});
    std::vector<Column> allColumns = positionColumns();
    allColumns.push_back({"status"});
    allColumns.insert(allColumns.end(), columns.begin(), columns.end());
    QueryResults results(options, {options.screen, options.points},
                         {{"command", command}, {"screen", screen.file}}, allColumns);
    points.run(
        [&](std::int64_t /*number*/, std::span<const double> numbers, ResultRows& rows) {
            std::array<Cell, 7> cells = {numbers[0], numbers[1], numbers[2]};
            const auto result = query(screen, pointAt(numbers, 0));
            cells[3] = std::string_view(result ? "found" : "none");
            for (std::size_t i = 0; result && i < 3; ++i) cells[4 + i] = (*result)[i];
            rows.add(cells, result ? HasResult::Yes : HasResult::No);
        },
        results);
    results.finish();
}

}  // namespace quarn::tool
