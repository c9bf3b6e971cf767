#include <CLI/CLI.hpp>
#include <memory>

#include <QuarnKit/Base/IsFinite.h>

#include "Commands/Commands.h"
#include "Rows/PointRows.h"

namespace quarn::tool {

namespace {

std::optional<Point<double, 3>> normalAt(const Screen& screen, const Point<double, 3>& point) {
    const Point<double, 3> normal = screen.geometry->getScreenNormal(point);
    if (!isFinite(point) || !isFinite(normal) || normal == Point<double, 3>()) return std::nullopt;
    return normal;
}

}  // namespace

void registerNormalCommand(CLI::App& tool) {
    CLI::App& command = addCommand(tool, "normal", "Tell the surface's normal at positions",
                                   "quarnscreen normal Samples/dome.xml Samples/flat-wall-points.csv");
    command.footer("A mesh has a normal where it is, and the other screens also beyond their edges.\n\n" +
                   command.get_footer());
    const auto options = std::make_shared<PointOptions>();
    addPointOptions(command, *options);
    command.callback([options] { runPointQuery("normal", {{"nx"}, {"ny"}, {"nz"}}, *options, normalAt); });
}

}  // namespace quarn::tool
