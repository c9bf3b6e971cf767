#include "Rows/PointRows.h"

#include <array>

#include "Base/ScreenInput.h"

namespace quarn::tool {

void runPointQuery(const std::string& command, const std::vector<Column>& columns,
                   const PointOptions& options, PointQuery query) {
    const Screen screen = openScreen(options.screen, options.maxMemory, options.obj);
    RowPipeline points = openRows(options, options.points, "a CSV file of points", positionInput());
    std::vector<Column> allColumns = positionColumns();
    allColumns.push_back({"status"});
    allColumns.insert(allColumns.end(), columns.begin(), columns.end());
    QueryResults results(options, {options.screen, options.points},
                         {.command = command, .members = {{"screen", screen.file}}},
                         withPassedColumns(allColumns, points.input()));
    points.run(
        [&](std::int64_t /*number*/, std::span<const double> numbers, ResultRows& rows) {
            if (numbers.empty()) {
                const Cell none;
                rows.add(std::array<Cell, 7>{none, none, none, kEmptyRow}, HasResult::No);
                return;
            }
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
