#include <optional>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/IsFinite.h>
#include <QuarnKit/Batch/SingleQueries.h>

#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "Commands/Commands.h"
#include "Rows/HitRows.h"
#include "Rows/QueryResults.h"

namespace quarn::tool {

namespace {

struct IntersectOptions : QueryOptions {
    std::string rays = "-";
    bool extrapolates = false;
    std::optional<int> side;
};

// The parameter of a hit along its ray: 0 at the first position, 1 at the second one, negative
// before the first.
double parameterOf(const Intersection& hit, const Point<double, 3>& from, const Point<double, 3>& to) {
    const Point<double, 3> direction = to - from;
    return dot(hit.point - from, direction) / dot(direction, direction);
}

// The hits on the screen, or on its continuation, on one side or both.
IntersectionSet hitsOf(const IScreenGeometry& geometry, const Point<double, 3>& from,
                       const Point<double, 3>& to, const IntersectOptions& options) {
    if (!options.extrapolates) return geometry.intersect(from, to);
    return geometry.intersectExtrapolatedWithSpecifiedNormal(from, to, options.side.value_or(0));
}

bool hasBoundary(const IScreenGeometry& geometry) {
    IScreenGeometry::Polylines boundary;
    geometry.sampleBoundary(boundary);
    return !boundary.empty() && !boundary.front().empty();
}

class RayQuery {
public:
    RayQuery(const Screen& queriedScreen, const IntersectOptions& intersectOptions)
        : geometry(*queriedScreen.geometry),
          options(intersectOptions),
          isMesh(queriedScreen.mesh.has_value()),
          mayFallBack(isMesh && options.extrapolates && hasBoundary(geometry)) {}

    void add(std::int64_t ray, const Point<double, 3>& from, const Point<double, 3>& to,
             ResultRows& results) const {
        bool isHit = false;
        for (const Intersection& hit : hitsOf(geometry, from, to, options)) {
            if (!isFinite(hit.point) || (isFallback(hit) && !mayFallBack)) continue;
            addHit(ray, hit, parameterOf(hit, from, to), results);
            isHit = true;
        }
        if (!isHit) results.add(missRow(ray, "miss"), HasResult::No);
    }

private:
    // A mesh has no continuation. It returns the position of its boundary nearest to the ray, as a
    // hit without triangle.
    [[nodiscard]] bool isFallback(const Intersection& hit) const { return isMesh && hit.triangleIndex < 0; }

    void addHit(std::int64_t ray, const Intersection& hit, double t, ResultRows& results) const {
        if (isFallback(hit)) {
            const Cell none;
            const HitRow cells = {ray,          std::string_view("boundary"),
                                  hit.point[0], hit.point[1],
                                  hit.point[2], none,
                                  none,         none,
                                  none,         t};
            results.add(cells, HasResult::Yes);
            return;
        }
        const bool isOnScreen = !options.extrapolates || isMesh || geometry.isOnScreenSection(hit.point);
        results.add(hitRow(ray, withUV(hit, geometry), t, isOnScreen ? "hit" : "extrapolated"),
                    HasResult::Yes);
    }

    const IScreenGeometry& geometry;
    const IntersectOptions& options;
    bool isMesh;
    bool mayFallBack;
};

void run(const IntersectOptions& options) {
    if (options.side && !options.extrapolates)
        throw Error({.found = "found --side without --extrapolate", .expected = "both or none"});
    const Screen screen = openScreen(options.screen, options.maxMemory, options.obj);
    warnOfIgnoredCenter(screen, CenterQuery::Rays, options.unit);
    RowPipeline rays = openRows(options, options.rays, "a CSV file of rays", rayInput());
    QueryResults results(options, {options.screen, options.rays},
                         {.command = "intersect", .members = {{"screen", screen.file}}},
                         withPassedColumns(hitColumns("ray", {"t"}), rays.input()));
    const RayQuery rayQuery(screen, options);
    rays.run(
        [&](std::int64_t ray, std::span<const double> numbers, ResultRows& rows) {
            if (numbers.empty()) return rows.add(missRow(ray, kEmptyRow), HasResult::No);
            rayQuery.add(ray, pointAt(numbers, 0), pointAt(numbers, 3), rows);
        },
        results);
    results.finish();
}

}  // namespace

void registerIntersectCommand(Command& tool) {
    Command command = tool.addCommand(
        {.name = "intersect",
         .summary = "Find where rays hit the screen",
         .details = kRowDetails,
         .example = "quarnscreen intersect Samples/flat-wall.xml Samples/flat-wall-rays.csv"});
    IntersectOptions& options = command.onRun(run);
    addQueryOptions(command, options);
    addThreadsOption(command, options.threads);
    command.argument("RAYS FILE", options.rays,
                     "CSV or .npy with two positions a ray, fromX,fromY,fromZ,toX,toY,toZ, or by a header "
                     "also a direction "
                     "dX,dY,dZ; - is the standard input");
    command.flag(
        "--extrapolate", options.extrapolates, true,
        "Extrapolate beyond the screen: to hits on the continued surface, or to the position nearest to "
        "the ray on the boundary of a mesh");
    command.choice("--side SIGN", options.side, {{"+1", 1}, {"1", 1}, {"0", 0}, {"-1", -1}},
                   "With --extrapolate, side of the surface to hit: -1 is the front, 0 is any for meshes; "
                   "default 0");
}

}  // namespace quarn::tool
