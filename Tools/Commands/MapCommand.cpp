#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "Commands/Commands.h"
#include "Rows/MapRows.h"
#include "Rows/QueryResults.h"

namespace quarn::tool {

namespace {

struct MapOptions : QueryOptions {
    std::string to;
    std::string points = "-";
    bool extrapolates = false;
};

std::vector<Column> columnsTo(bool to3D) {
    const std::vector<Column> uv = {{"u"}, {"v"}};
    std::vector<Column> columns = to3D ? uv : positionColumns();
    columns.push_back({"status"});
    for (const Column& column : to3D ? positionColumns() : uv) columns.push_back(column);
    return columns;
}

void run(const MapOptions& options) {
    const bool to3D = options.to == "3d";
    const Screen screen = openScreen(options.screen, options.maxMemory, options.obj);
    const std::vector<std::string> inputNames =
        to3D ? std::vector<std::string>{"u", "v"} : std::vector<std::string>{"x", "y", "z"};
    RowPipeline points = openRows(options, options.points, "a CSV file of points", inputNames);
    warnWithoutUV(screen);
    QueryResults results(options, {options.screen, options.points},
                         {{"command", "map"}, {"screen", screen.file}, {"to", options.to}}, columnsTo(to3D));

    points.run(mapRows(*screen.geometry, to3D ? MapTarget::Position : MapTarget::UV, options.extrapolates),
               results);
    results.finish();
}

}  // namespace

void registerMapCommand(CLI::App& tool) {
    CLI::App& command = addCommand(tool, "map", "Map UV to positions on the screen, or positions to UV",
                                   "quarnscreen map Samples/flat-wall.xml --to 3d Samples/flat-wall-uv.csv");
    const auto options = std::make_shared<MapOptions>();
    addQueryOptions(command, *options);
    addThreadsOption(command, options->threads);
    addCsvInput(command, "POINTS", options->points,
                "CSV with u,v for --to 3d or x,y,z for --to 2d; - is the standard input")
        .capture_default_str();
    command.add_option("--to", options->to, "What to map to")->required()->check(CLI::IsMember({"3d", "2d"}));
    command.add_flag("--extrapolate", options->extrapolates, "Answer beyond the screen too");
    command.callback([options] { run(*options); });
}

}  // namespace quarn::tool
