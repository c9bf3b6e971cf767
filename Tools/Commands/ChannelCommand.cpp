#include <optional>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/IsFinite.h>

#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "Commands/Commands.h"
#include "Rows/ChannelPoints.h"
#include "Rows/CsvReader.h"
#include "Rows/QueryResults.h"

namespace quarn::tool {

namespace {

using Ray = ChannelPoints::Ray;

// A growing vector has its elements twice while it moves them, and reserves as many again.
constexpr std::uint64_t kMemoryPerWaitingRay = 3 * sizeof(Ray);

struct ChannelOptions : QueryOptions {
    std::string rays;
    std::string extraRays;
};

CsvReader openRays(const std::string& path) {
    return {InputStream::openFileOrStandardInput(path, "a CSV file of rays"),
            {"fromX", "fromY", "fromZ", "toX", "toY", "toZ"}};
}

Ray rayOf(const std::vector<double>& numbers) {
    return {pointAt(numbers, 0), pointAt(numbers, 3)};
}

// The first extra ray that hits. Reads all of them, so that each invalid line is an error.
std::optional<Ray> firstHitOf(const std::string& path, const ChannelPoints& channel) {
    std::optional<Ray> first;
    if (path.empty()) return first;
    CsvReader rays = openRays(path);
    std::vector<double> numbers;
    while (rays.next(numbers))
        if (!first && channel.hits(rayOf(numbers))) first = rayOf(numbers);
    return first;
}

// The rows of a channel. Rays wait until the first of them hits, because no ray has a point before
// the side is known.
class ChannelRows {
public:
    ChannelRows(std::uint64_t maxMemory, ChannelPoints& channelPoints, QueryResults& rows)
        : maxWaiting(maxMemory / kMemoryPerWaitingRay), channel(channelPoints), results(rows) {}

    void add(const Ray& ray, const std::string& inputName) {
        if (!channel.hasSide() && channel.hits(ray)) channel.useSideOf(ray);
        waiting.push_back(ray);
        if (channel.hasSide()) processWaiting();
        if (waiting.size() > maxWaiting)
            throw Error({.found = std::to_string(waiting.size()) + " rays before the first that hits",
                         .expected = "fewer, or a larger --max-memory",
                         .file = inputName});
    }

    void processWaiting() {
        for (const Ray& ray : waiting) {
            const auto point = channel.pointOf(ray);
            ++rowCount;
            if (point && isFinite(*point))
                results.add({rowCount, std::string_view("hit"), (*point)[0], (*point)[1], (*point)[2]},
                            HasResult::Yes);
            else
                results.add({rowCount, std::string_view("miss"), {}, {}, {}}, HasResult::No);
        }
        waiting.clear();
    }

private:
    std::uint64_t maxWaiting;
    ChannelPoints& channel;
    QueryResults& results;
    std::vector<Ray> waiting;
    std::int64_t rowCount = 0;
};

void run(const ChannelOptions& options) {
    if (options.rays == "-" && options.extraRays == "-")
        throw Error(
            {.found = "RAYS and --extra both on the standard input", .expected = "one of them in a file"});
    const Screen screen = openScreen(options.screen, options.maxMemory, options.obj);
    warnOfIgnoredCenter(screen, CenterQuery::Rays, options.unit);
    ChannelPoints channel(*screen.geometry);
    CsvReader rays = openRays(options.rays);
    const auto extraRay = firstHitOf(options.extraRays, channel);

    std::vector<Column> columns = {{"ray"}, {"status"}};
    for (const Column& column : positionColumns()) columns.push_back(column);
    QueryResults results(options, {options.screen, options.rays, options.extraRays},
                         {.command = "channel", .members = {{"screen", screen.file}}}, columns);
    ChannelRows rows(options.maxMemory, channel, results);
    std::vector<double> numbers;
    while (rays.next(numbers)) {
        rows.add(rayOf(numbers), rays.name());
        results.flushBeforeWaiting(rays);
    }
    if (!channel.hasSide() && extraRay) channel.useSideOf(*extraRay);
    rows.processWaiting();
    results.finish();
}

}  // namespace

void registerChannelCommand(Command& tool) {
    Command command = tool.addCommand(
        {.name = "channel",
         .summary = "Find where a channel's boundary rays meet the screen or its continuation",
         .example = "quarnscreen channel Samples/flat-wall.xml Samples/flat-wall-rays.csv"});
    ChannelOptions& options = command.onRun(run);
    addQueryOptions(command, options);
    command
        .argument("RAYS FILE", options.rays,
                  "CSV with two positions a ray, fromX,fromY,fromZ,toX,toY,toZ; - is the standard input")
        .required();
    command.option("--extra FILE", options.extraRays,
                   "CSV with further rays, used only to find the side of the screen that the channel shows");
}

}  // namespace quarn::tool
