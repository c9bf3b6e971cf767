#include <QuarnKit/Base/OutputFile.h>
#include <QuarnKit/Formats/OutputName.h>
#include <QuarnKit/Plot/Mesh/PlotMesh.h>
#include <QuarnKit/Plot/PlotPage.h>

#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "Commands/Commands.h"

namespace quarn::tool {

namespace {

struct PlotOptions : ScreenOptions {
    PlotColor color = PlotColor::Side;
};

void run(const PlotOptions& options) {
    const Screen screen = openScreen(options.screen, options.maxMemory, options.obj);
    OutputFile output(options.output, {options.screen});
    requireOutputName(options.output, {"svg"});
    output.write(screen.mesh ? plotMeshPage(*screen.geometry, screen.file, options.unit, options.color)
                             : plotPage(screen, options.unit, options.color));
    output.finish();
}

}  // namespace

void registerPlotCommand(Command& tool) {
    Command command =
        tool.addCommand({.name = "plot",
                         .summary = "Draw a screen, with a mesh's defects, as an SVG page with five views",
                         .example = "quarnscreen plot Samples/flat-wall.xml -o flat-wall.svg"});
    PlotOptions& options = command.onRun(run);
    addScreenInput(command, options);
    addMemoryOption(command, options.maxMemory);
    addOutputOption(command, options.output);
    command
        .choice("--color NAME", options.color, {{"side", PlotColor::Side}, {"stretch", PlotColor::Stretch}},
                "Meaning of the colors: the side of the surface, or its area over its area in UV")
        .defaultText("side");
}

}  // namespace quarn::tool
