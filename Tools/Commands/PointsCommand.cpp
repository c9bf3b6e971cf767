#include <CLI/CLI.hpp>
#include <limits>
#include <memory>
#include <nlohmann/json.hpp>

#include "Commands/Answers.h"
#include "Commands/Commands.h"
#include "Commands/Options.h"
#include "Commands/Polylines.h"
#include "ScreenReader.h"

namespace quarn {

namespace {

struct PointsOptions : QueryOptions {
    int columns = 5;
    int rows = 5;
};

void run(const PointsOptions& options) {
    const auto count = static_cast<std::uint64_t>(options.columns) * static_cast<std::uint64_t>(options.rows);
    refuseManyPositions(count, options.maxMemory);
    const Screen screen = readScreen(options.screen, options.maxMemory);
    const auto points = screen.geometry->getDefaultCalibrationPoints(options.columns, options.rows);

    std::vector<Column> columns = {{"column"}, {"row"}};
    for (const Column& column : positionColumns()) columns.push_back(column);
    Answers answers(options, {options.screen}, {{"command", "points"}, {"screen", screen.file}}, columns);
    std::int64_t index = 0;
    for (const Point<double, 3>& point : points) {
        answers.add({index / options.rows + 1, index % options.rows + 1, point[0], point[1], point[2]},
                    Answered::Yes);
        ++index;
    }
    answers.finish();
}

}  // namespace

void registerPointsCommand(CLI::App& tool) {
    CLI::App& command = addCommand(tool, "points", "Lay out positions to calibrate at",
                                   "quarnscreen points Samples/ruled.xml --columns 3 --rows 2");
    command.footer(
        "The positions stand column by column from the left, each column from the top. Those of a\ncylinder "
        "or a sphere are relative to its centre.\n\n" +
        command.get_footer());
    const auto options = std::make_shared<PointsOptions>();
    addScreenOptions(command, *options);
    addCountOption(command, "--columns", options->columns, "Columns of the layout");
    addCountOption(command, "--rows", options->rows, "Rows of the layout");
    command.callback([options] { run(*options); });
}

}  // namespace quarn
