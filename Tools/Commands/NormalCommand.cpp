#include <QuarnKit/Base/IsFinite.h>

#include "CommandLine/Options.h"
#include "Commands/Commands.h"
#include "Rows/PointRows.h"

namespace quarn::tool {

namespace {

std::optional<Point<double, 3>> normalAt(const Screen& screen, const Point<double, 3>& point) {
    const Point<double, 3> normal = screen.geometry->getScreenNormal(point);
    if (!isFinite(point) || !isFinite(normal) || normal == Point<double, 3>()) return std::nullopt;
    return normal;
}

void run(const PointOptions& options) {
    runPointQuery("normal", {{"nx"}, {"ny"}, {"nz"}}, options, normalAt);
}

}  // namespace

void registerNormalCommand(Command& tool) {
    Command command = tool.addCommand(
        {.name = "normal",
         .summary = "Compute the surface normal at positions",
         .details =
             std::string(kRowDetails) +
             "\nA mesh has normals only at positions on it; other screens also have them beyond their edges.",
         .example = "quarnscreen normal Samples/dome.xml Samples/flat-wall-points.csv"});
    addPointOptions(command, command.onRun(run));
}

}  // namespace quarn::tool
