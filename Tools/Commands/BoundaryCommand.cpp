#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "Commands/Commands.h"
#include "Rows/PolylineRows.h"

namespace quarn::tool {

namespace {

void run(const QueryOptions& options) {
    const Screen screen = openScreen(options.screen, options.maxMemory, options.obj);
    IScreenGeometry::Polylines boundary;
    screen.geometry->sampleBoundary(boundary);
    writePolylines("boundary", screen, boundary, options);
}

}  // namespace

void registerBoundaryCommand(CLI::App& tool) {
    CLI::App& command = addCommand(tool, "boundary", "Walk once around the screen's outline",
                                   "quarnscreen boundary Samples/cylinder-200.xml");
    command.footer(
        "Each of the four edges is a polyline, from 1 to 4. A full circle has no sides, and an arc "
        "below\ntwo "
        "degrees no top and bottom; the numbers of the others stay.\n\n" +
        command.get_footer());
    const auto options = std::make_shared<QueryOptions>();
    addScreenOptions(command, *options);
    command.callback([options] { run(*options); });
}

}  // namespace quarn::tool
