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

enum class PointOrder {
    ByColumn,
    ByRow,
    Unknown,  // positions are missing, and it is not known which ones
};

// Analytic screens list all positions by column. Meshes list them by row, and omit those beyond the
// mesh.
PointOrder orderOf(const Screen& screen, std::uint64_t pointCount, std::uint64_t fullCount) {
    if (!screen.mesh) return PointOrder::ByColumn;
    return pointCount == fullCount ? PointOrder::ByRow : PointOrder::Unknown;
}

Place placeOf(std::int64_t index, PointOrder order, const PointsOptions& options) {
    if (order == PointOrder::Unknown) return {};
    if (order == PointOrder::ByRow) return {index % options.columns + 1, index / options.columns + 1};
    return {index / options.rows + 1, index % options.rows + 1};
}

void run(const PointsOptions& options) {
    const auto count = static_cast<std::uint64_t>(options.columns) * static_cast<std::uint64_t>(options.rows);
    refuseManyPositions(
        "--columns " + std::to_string(options.columns) + " and --rows " + std::to_string(options.rows), count,
        options.maxMemory);
    const Screen screen = openScreen(options.screen, options.maxMemory, options.obj);
    warnWithoutUV(screen);
    warnOfIgnoredCenter(screen, CenterQuery::CalibrationPoints, options.unit);
    const auto points = screen.geometry->getDefaultCalibrationPoints(options.columns, options.rows);

    std::vector<Column> columns = {{"column"}, {"row"}};
    for (const Column& column : positionColumns()) columns.push_back(column);
    QueryResults results(options, {options.screen},
                         {.command = "points", .members = {{"screen", screen.file}}}, columns);
    const PointOrder order = orderOf(screen, points.size(), count);
    std::int64_t index = 0;
    for (const Point<double, 3>& point : points) {
        const auto [column, row] = placeOf(index, order, options);
        results.add({column, row, point[0], point[1], point[2]}, HasResult::Yes);
        ++index;
    }
    results.finish();
}

}  // namespace

void registerPointsCommand(Command& tool) {
    Command command = tool.addCommand(
        {.name = "points",
         .summary = "List calibration positions",
         .details =
             "Positions are listed column by column from the left, each column from the top; those of a "
             "mesh row by\nrow. Positions beyond a mesh are omitted, and then the numbers of columns and "
             "rows are empty. Positions\nof a cylinder or sphere are relative to its center.",
         .example = "quarnscreen points Samples/ruled.xml --columns 3 --rows 2"});
    PointsOptions& options = command.onRun(run);
    addScreenOptions(command, options);
    addCountOption(command, "--columns", options.columns, "Columns of the layout");
    addCountOption(command, "--rows", options.rows, "Rows of the layout");
}

}  // namespace quarn::tool
