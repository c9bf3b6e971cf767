#include <QuarnKit/Sampling/CalibrationPoints.h>

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

std::vector<Column> resultColumns() {
    std::vector<Column> columns = {{"column"}, {"row"}, {"status"}};
    for (const Column& column : positionColumns()) columns.push_back(column);
    columns.push_back({"u"});
    columns.push_back({"v"});
    return columns;
}

std::string_view statusOf(const CalibrationPoint& point) {
    if (!point.place) return "boundary";
    return point.position ? "on_screen" : "outside";
}

std::vector<Cell> rowOf(const CalibrationPoint& point) {
    std::vector<Cell> cells(8);
    cells[2] = statusOf(point);
    for (std::size_t i = 0; point.position && i < 3; ++i) cells[3 + i] = (*point.position)[i];
    if (!point.place) return cells;
    cells[0] = point.place->column;
    cells[1] = point.place->row;
    cells[6] = point.place->uv[0];
    cells[7] = point.place->uv[1];
    return cells;
}

void run(const PointsOptions& options) {
    const auto count = static_cast<std::uint64_t>(options.columns) * static_cast<std::uint64_t>(options.rows);
    refuseManyPositions(
        "--columns " + std::to_string(options.columns) + " and --rows " + std::to_string(options.rows), count,
        options.maxMemory);
    const Screen screen = openScreen(options.screen, options.maxMemory, options.obj);
    warnWithoutUV(screen);
    warnOfIgnoredCenter(screen, CenterQuery::CalibrationPoints, options.unit);
    QueryResults results(options, {options.screen},
                         {.command = "points", .members = {{"screen", screen.file}}}, resultColumns());
    visitCalibrationPoints(*screen.geometry, options.columns, options.rows,
                           [&](const CalibrationPoint& point) {
                               results.add(rowOf(point), point.position ? HasResult::Yes : HasResult::No);
                           });
    results.finish();
}

}  // namespace

void registerPointsCommand(Command& tool) {
    Command command = tool.addCommand(
        {.name = "points",
         .summary = "List calibration positions",
         .details =
             "Positions are listed column by column from the left, each column from the top; those of a "
             "mesh row by\nrow. A place beyond a mesh or in a gap between its UVs has the status outside "
             "and no position. A mesh\nwithout UV has positions along its boundary, with the status "
             "boundary and without columns and rows.\nPositions of a cylinder or sphere are relative to "
             "its center.",
         .example = "quarnscreen points Samples/ruled.xml --columns 3 --rows 2"});
    PointsOptions& options = command.onRun(run);
    addResultOptions(command, options);
    addCountOption(command, "--columns", options.columns, "Columns of the layout");
    addCountOption(command, "--rows", options.rows, "Rows of the layout");
}

}  // namespace quarn::tool
