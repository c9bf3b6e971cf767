#include <CLI/CLI.hpp>
#include <memory>

#include "Commands/Commands.h"
#include "Commands/Options.h"
#include "OutputFile.h"
#include "PlotMesh.h"
#include "PlotPage.h"
#include "ScreenReader.h"

namespace quarn {

namespace {

void run(const ScreenOptions& options) {
    const Screen screen = readScreen(options.screen, options.maxMemory, options.obj);
    OutputFile output(options.output, {options.screen});
    output.write(screen.mesh ? plotMeshPage(screen, options.unit) : plotPage(screen, options.unit));
    output.finish();
}

}  // namespace

void registerPlotCommand(CLI::App& tool) {
    CLI::App& command = addCommand(tool, "plot", "Draw a screen as an SVG page with four views",
                                   "quarnscreen plot Samples/flat-wall.xml -o flat-wall.svg");
    const auto options = std::make_shared<ScreenOptions>();
    addScreenOptions(command, *options);
    command.remove_option(command.get_option("--json"));  // a page has one format
    command.callback([options] { run(*options); });
}

}  // namespace quarn
