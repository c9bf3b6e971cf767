#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include <QuarnKit/Base/IsFinite.h>
#include <QuarnKit/Formats/ScreenReader.h>
#include <QuarnScreen/ScreenGeometry.h>

#include "CommandLine/Options.h"
#include "Commands/Commands.h"
#include "Rows/HitRows.h"
#include "Rows/QueryResults.h"

namespace quarn {

namespace {

struct NearestOptions : QueryOptions {
    std::string lines = "-";
    bool extrapolates = false;
};

void run(const NearestOptions& options) {
    const Screen screen = readScreen(options.screen, options.maxMemory, options.obj);
    RowPipeline lines =
        openRows(options, options.lines, "a CSV file of lines", {"x", "y", "z", "dx", "dy", "dz"});
    Answers answers(options, {options.screen, options.lines},
                    {{"command", "nearest"}, {"screen", screen.file}},
                    hitColumns("line", {"distance", Quantity::Length}));
    lines.run(
        [&](std::int64_t line, std::span<const double> numbers, AnswerRows& rows) {
            const Point<double, 3> from = pointAt(numbers, 0);
            Intersection hit;
            const bool isHit = ScreenGeometry::getClosestIntersection(
                from, pointAt(numbers, 3), screen.geometry.get(), hit, options.extrapolates);
            if (isHit && isFinite(hit.point))
                rows.add(hitCells(line, hit, length(hit.point - from)), Answered::Yes);
            else
                rows.add(missCells(line, "none"), Answered::No);
        },
        answers);
    answers.finish();
}

}  // namespace

void registerNearestCommand(CLI::App& tool) {
    CLI::App& command =
        addCommand(tool, "nearest", "Find the hit nearest to a position, both ways along a line",
                   "quarnscreen nearest Samples/flat-wall.xml Samples/flat-wall-lines.csv");
    const auto options = std::make_shared<NearestOptions>();
    addQueryOptions(command, *options);
    addThreadsOption(command, options->threads);
    addCsvInput(command, "LINES", options->lines,
                "CSV with a position and a direction, x,y,z,dx,dy,dz; - is the standard input")
        .capture_default_str();
    command.add_flag("--extrapolate", options->extrapolates, "Look for hits on the continued surface");
    command.callback([options] { run(*options); });
}

}  // namespace quarn
