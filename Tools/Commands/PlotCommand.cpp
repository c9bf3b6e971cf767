#include <CLI/CLI.hpp>
#include <memory>

#include <QuarnKit/Base/OutputFile.h>
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
    output.write(screen.mesh ? plotMeshPage(*screen.geometry, screen.file, options.unit, options.color)
                             : plotPage(screen, options.unit, options.color));
    output.finish();
}

}  // namespace

void registerPlotCommand(CLI::App& tool) {
    CLI::App& command =
        addCommand(tool, "plot", "Draw a screen, with the faults of a mesh, as an SVG page with four views",
                   "quarnscreen plot Samples/flat-wall.xml -o flat-wall.svg");
    const auto options = std::make_shared<PlotOptions>();
    addScreenOptions(command, *options);
    command.remove_option(command.get_option("--json"));  // a page has one format
    command
        .add_option_function<std::string>(
            "--color",
            [options](const std::string& text) {
                options->color = text == "stretch" ? PlotColor::Stretch : PlotColor::Side;
            },
            "What colours tell: the side of the surface, or its area over its area in UV")
        ->check(CLI::IsMember({"side", "stretch"}))
        ->type_name("NAME")
        ->default_str("side");
    command.callback([options] { run(*options); });
}

}  // namespace quarn::tool
