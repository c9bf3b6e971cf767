#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "Commands/Commands.h"
#include "Rows/PolylineRows.h"

namespace quarn::tool {

namespace {

struct GridOptions : QueryOptions {
    int density = 11;
};

void run(const GridOptions& options) {
    // The density is rounded up to an odd number. In both directions, each line has 21 positions,
    // and 3 more connect it to the next one.
    constexpr std::uint64_t kPositionsPerLine = 48;
    const std::uint64_t lines = static_cast<std::uint64_t>(options.density) + 1;
    refuseManyPositions("--density " + std::to_string(options.density), lines * kPositionsPerLine,
                        options.maxMemory);
    const Screen screen = openScreen(options.screen, options.maxMemory, options.obj);
    warnWithoutUV(screen);
    IScreenGeometry::Polylines grid;
    screen.geometry->sampleGrid(grid, options.density);
    writePolylines("grid", screen, grid, options);
}

}  // namespace

void registerGridCommand(Command& tool) {
    Command command = tool.addCommand(
        {.name = "grid",
         .summary = "Sample the lines of a regular grid on the screen, as one closed polyline",
         .details = "A mesh has a polyline for its boundary and one for each line inside of it. The parts of "
                    "a line in a "
                    "gap\nbetween the UVs of a mesh are extrapolated, so that no position is missing.",
         .example = "quarnscreen grid Samples/dome.xml --density 5"});
    GridOptions& options = command.onRun(run);
    addResultOptions(command, options);
    addCountOption(command, "--density", options.density,
                   "Lines in each direction, rounded up to an odd number");
}

}  // namespace quarn::tool
