#include <QuarnKit/Base/IsFinite.h>
#include <QuarnScreen/ScreenGeometry.h>

#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "Commands/Commands.h"
#include "Rows/HitRows.h"
#include "Rows/QueryResults.h"

namespace quarn::tool {

namespace {

struct NearestOptions : QueryOptions {
    std::string lines = "-";
    bool extrapolates = false;
};

void run(const NearestOptions& options) {
    const Screen screen = openScreen(options.screen, options.maxMemory, options.obj);
    warnOfIgnoredCenter(screen, CenterQuery::Rays, options.unit);
    RowPipeline lines = openRows(options, options.lines, "a CSV file of lines", lineInput());
    QueryResults results(
        options, {options.screen, options.lines},
        {.command = "nearest", .members = {{"screen", screen.file}}},
        withPassedColumns(hitColumns("line", {"distance", Quantity::Length}), lines.input()));
    lines.run(
        [&](std::int64_t line, std::span<const double> numbers, ResultRows& rows) {
            if (numbers.empty()) return rows.add(missRow(line, kEmptyRow), HasResult::No);
            const Point<double, 3> from = pointAt(numbers, 0);
            Intersection hit;
            const bool isHit = ScreenGeometry::getClosestIntersection(
                from, pointAt(numbers, 3), screen.geometry.get(), hit, options.extrapolates);
            if (isHit && isFinite(hit.point))
                rows.add(hitRow(line, hit, length(hit.point - from)), HasResult::Yes);
            else
                rows.add(missRow(line, "none"), HasResult::No);
        },
        results);
    results.finish();
}

}  // namespace

void registerNearestCommand(Command& tool) {
    Command command =
        tool.addCommand({.name = "nearest",
                         .summary = "Find the hit nearest to a position, in both directions of a line",
                         .details = kRowDetails,
                         .example = "quarnscreen nearest Samples/flat-wall.xml Samples/flat-wall-lines.csv"});
    NearestOptions& options = command.onRun(run);
    addQueryOptions(command, options);
    addThreadsOption(command, options.threads);
    command.argument("LINES FILE", options.lines,
                     "CSV or .npy with a position and a direction, x,y,z,dx,dy,dz, or by a header also "
                     "fromX,fromY,fromZ, or "
                     "toX,toY,toZ instead of the direction; - is the standard input");
    command.flag("--extrapolate", options.extrapolates, true, "Extrapolate to hits on the continued surface");
}

}  // namespace quarn::tool
