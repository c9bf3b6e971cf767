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

void registerBoundaryCommand(Command& tool) {
    Command command = tool.addCommand(
        {.name = "boundary",
         .summary = "Sample the screen's boundary",
         .details =
             "Each of the four edges is a polyline, from 1 to 4. A full circle has no sides, and an arc "
             "below\ntwo degrees no top and bottom; the numbers of the others do not change.",
         .example = "quarnscreen boundary Samples/cylinder-200.xml"});
    addResultOptions(command, command.onRun(run));
}

}  // namespace quarn::tool
