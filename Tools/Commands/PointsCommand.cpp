#include <limits>

#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "Commands/Commands.h"
#include "Rows/PolylineRows.h"
#include "Rows/QueryResults.h"

namespace quarn::tool {

namespace {

struct PointsOptions : QueryOptions {
    int columns = 5;
    int rows = 5;
};

struct Place {
    Cell column;
    Cell row;
};

// Meshes go row by row, and leave out positions beyond them: then nothing tells which ones are there.
Place placeOf(std::int64_t index, bool areAllThere, bool isMesh, const PointsOptions& options) {
    if (!isMesh) return {index / options.rows + 1, index % options.rows + 1};
    if (!areAllThere) return {};
    return {index % options.columns + 1, index / options.columns + 1};
}

void run(const PointsOptions& options) {
    const auto count = static_cast<std::uint64_t>(options.columns) * static_cast<std::uint64_t>(options.rows);
    refuseManyPositions(count, options.maxMemory);
    const Screen screen = openScreen(options.screen, options.maxMemory, options.obj);
    warnWithoutUV(screen);
    const auto points = screen.geometry->getDefaultCalibrationPoints(options.columns, options.rows);

    std::vector<Column> columns = {{"column"}, {"row"}};
    for (const Column& column : positionColumns()) columns.push_back(column);
    QueryResults results(options, {options.screen},
                         {.command = "points", .members = {{"screen", screen.file}}}, columns);
    std::int64_t index = 0;
    for (const Point<double, 3>& point : points) {
        const auto [column, row] = placeOf(index, points.size() == count, screen.mesh.has_value(), options);
        results.add({column, row, point[0], point[1], point[2]}, HasResult::Yes);
        ++index;
    }
    results.finish();
}

}  // namespace

void registerPointsCommand(Command& tool) {
    Command command = tool.addCommand(
        {.name = "points",
         .summary = "Lay out positions to calibrate at",
         .details =
             "The positions stand column by column from the left, each column from the top; those of a "
             "mesh\nrow by row, without those beyond it, and then without their numbers. Those of a "
             "cylinder or a\nsphere are relative to its centre.",
         .example = "quarnscreen points Samples/ruled.xml --columns 3 --rows 2"});
    PointsOptions& options = command.onRun(run);
    addScreenOptions(command, options);
    addCountOption(command, "--columns", options.columns, "Columns of the layout");
    addCountOption(command, "--rows", options.rows, "Rows of the layout");
}

}  // namespace quarn::tool
