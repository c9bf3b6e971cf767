#include <QuarnKit/Base/IsFinite.h>

#include "CommandLine/Options.h"
#include "Commands/Commands.h"
#include "Rows/PointRows.h"

namespace quarn::tool {

namespace {

// Sine of the angle below which two directions are equal.
constexpr double kSameDirection = 1e-9;

// A mesh returns zero if it has no result. Zero is a result only if the origin lies on the mesh,
// and the position above it.
bool isValidResult(const Screen& screen, const Point<double, 3>& point, const Point<double, 3>& closest) {
    if (!screen.mesh || closest != Point<double, 3>()) return true;
    const Point<double, 3> normal = screen.geometry->getScreenNormal(closest);
    return normal != Point<double, 3>() && length(cross(normal, point)) <= kSameDirection * length(point);
}

std::optional<Point<double, 3>> closestTo(const Screen& screen, const Point<double, 3>& point) {
    if (!isFinite(point)) return std::nullopt;
    const Point<double, 3> closest = screen.geometry->getClosestPoint(point);
    if (!isFinite(closest) || !isValidResult(screen, point, closest)) return std::nullopt;
    return closest;
}

void run(const PointOptions& options) {
    runPointQuery(
        "closest",
        {{"closestX", Quantity::Length}, {"closestY", Quantity::Length}, {"closestZ", Quantity::Length}},
        options, closestTo);
}

}  // namespace

void registerClosestCommand(Command& tool) {
    Command command = tool.addCommand(
        {.name = "closest",
         .summary = "Find the position on the screen closest to each position",
         .details =
             std::string(kRowDetails) +
             "\nThe result is closest in UV, and not always in space. On a mesh it is the projection onto "
             "the triangle\nwith the nearest centroid; there is none if the projection lies outside of "
             "the triangle.",
         .example = "quarnscreen closest Samples/flat-wall.xml Samples/flat-wall-points.csv"});
    addPointOptions(command, command.onRun(run));
}

}  // namespace quarn::tool
