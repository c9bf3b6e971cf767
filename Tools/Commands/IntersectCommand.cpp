#include <CLI/CLI.hpp>
#include <memory>
#include <nlohmann/json.hpp>

#include "Commands/Answers.h"
#include "Commands/Commands.h"
#include "Commands/HitCells.h"
#include "Commands/Options.h"
#include "Csv.h"
#include "Finite.h"
#include "ScreenReader.h"

namespace quarn {

namespace {

struct IntersectOptions : QueryOptions {
    std::string rays = "-";
};

// Where a hit lies along its ray: 0 at its first position, 1 at its second one, negative behind the first.
double parameterOf(const Intersection& hit, const Point<double, 3>& from, const Point<double, 3>& to) {
    const Point<double, 3> direction = to - from;
    return dot(hit.point - from, direction) / dot(direction, direction);
}

void answerRay(const IScreenGeometry& geometry, std::int64_t ray, const std::vector<double>& numbers,
               Answers& answers) {
    const Point<double, 3> from = pointAt(numbers, 0);
    const Point<double, 3> to = pointAt(numbers, 3);
    bool isHit = false;
    for (const Intersection& hit : geometry.intersect(from, to)) {
        if (!isFinite(hit.point)) continue;
        answers.add(hitCells(ray, withUV(hit, geometry), parameterOf(hit, from, to)), Answered::Yes);
        isHit = true;
    }
    if (!isHit) answers.add(missCells(ray, "miss"), Answered::No);
}

void run(const IntersectOptions& options) {
    const Screen screen = readScreen(options.screen, options.maxMemory);
    CsvReader rays(InputFile::orStandardInput(options.rays, "a CSV file of rays"),
                   {"fromX", "fromY", "fromZ", "toX", "toY", "toZ"});
    Answers answers(options, {options.screen, options.rays},
                    {{"command", "intersect"}, {"screen", screen.file}}, hitColumns("ray", {"t"}));
    std::vector<double> numbers;
    for (std::int64_t ray = 1; rays.next(numbers); ++ray) {
        answerRay(*screen.geometry, ray, numbers, answers);
        answers.flushBeforeWaiting(rays);
    }
    answers.finish();
}

}  // namespace

void registerIntersectCommand(CLI::App& tool) {
    CLI::App& command = addCommand(tool, "intersect", "Find where rays hit the screen",
                                   "quarnscreen intersect Samples/flat-wall.xml Samples/flat-wall-rays.csv");
    const auto options = std::make_shared<IntersectOptions>();
    addQueryOptions(command, *options);
    addCsvInput(command, "RAYS", options->rays,
                "CSV with two positions a ray, fromX,fromY,fromZ,toX,toY,toZ; - is the standard input")
        .capture_default_str();
    command.callback([options] { run(*options); });
}

}  // namespace quarn
