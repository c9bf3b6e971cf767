#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "Commands/Commands.h"
#include "Rows/MapRows.h"
#include "Rows/QueryResults.h"

namespace quarn::tool {

namespace {

struct MapOptions : QueryOptions {
    MapTarget target = MapTarget::Position;
    std::string points = "-";
    BeyondScreen beyond = BeyondScreen::Reject;
};

std::vector<Column> columnsFor(MapTarget target) {
    const std::vector<Column> uv = {{"u"}, {"v"}};
    std::vector<Column> columns = target == MapTarget::Position ? uv : positionColumns();
    columns.push_back({"status"});
    for (const Column& column : target == MapTarget::Position ? positionColumns() : uv)
        columns.push_back(column);
    return columns;
}

void run(const MapOptions& options) {
    const bool to3D = options.target == MapTarget::Position;
    const Screen screen = openScreen(options.screen, options.maxMemory, options.obj);
    RowPipeline points =
        openRows(options, options.points, "a CSV file of points", to3D ? uvInput() : positionInput());
    warnWithoutUV(screen);
    QueryResults results(options, {options.screen, options.points},
                         {.command = "map", .members = {{"screen", screen.file}, {"to", to3D ? "3d" : "2d"}}},
                         withPassedColumns(columnsFor(options.target), points.input()));
    points.run(mapRows(*screen.geometry, options.target, options.beyond), results);
    results.finish();
}

}  // namespace

void registerMapCommand(Command& tool) {
    Command command = tool.addCommand(
        {.name = "map",
         .summary = "Map UV to positions on the screen, or positions to UV",
         .details = kRowDetails,
         .example = "quarnscreen map Samples/flat-wall.xml --to 3d Samples/flat-wall-uv.csv"});
    MapOptions& options = command.onRun(run);
    addQueryOptions(command, options);
    addThreadsOption(command, options.threads);
    command.argument("POINTS FILE", options.points,
                     "CSV or .npy with u,v for --to 3d or x,y,z for --to 2d; - is the standard input");
    command
        .choice("--to TEXT", options.target, {{"3d", MapTarget::Position}, {"2d", MapTarget::UV}},
                "What to map to")
        .required();
    command.flag("--extrapolate", options.beyond, BeyondScreen::Extrapolate, "Extrapolate beyond the screen");
}

}  // namespace quarn::tool
