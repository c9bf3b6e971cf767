#include <optional>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/IsFinite.h>

#include "Base/ScreenInput.h"
#include "CommandLine/Options.h"
#include "Commands/Commands.h"
#include "Rows/ChannelPoints.h"
#include "Rows/Input/RowReader.h"
#include "Rows/QueryResults.h"

namespace quarn::tool {

namespace {

using Ray = ChannelPoints::Ray;

struct ChannelOptions : QueryOptions {
    std::string rays;
    std::string extraRays;
};

RowReader openRays(const std::string& path, const std::string& unit) {
    return {InputStream::openFileOrStandardInput(path, "a CSV file of rays"), rayInput(), unit};
}

// The ray of the current row; none if its cells are empty.
std::optional<Ray> rayOf(const RowReader& rays) {
    const std::span<const double> numbers = rays.numbers();
    if (numbers.empty()) return std::nullopt;
    return Ray{pointAt(numbers, 0), pointAt(numbers, 3)};
}

// The first extra ray that hits. Reads all of them, so that each invalid line is an error.
std::optional<Ray> firstHitOf(const ChannelOptions& options, const ChannelPoints& channel) {
    std::optional<Ray> first;
    if (options.extraRays.empty()) return first;
    RowReader rays = openRays(options.extraRays, options.unit);
    while (rays.next()) {
        const std::optional<Ray> ray = rayOf(rays);
        if (!first && ray && channel.hits(*ray)) first = ray;
    }
    return first;
}

// A row of the input, with copies of the cells that are passed on.
struct WaitingRow {
    std::optional<Ray> ray;
    std::vector<std::string> passedCells = {};
};

// A growing vector has its elements twice while it moves them, and reserves as many again.
constexpr std::uint64_t kMemoryPerWaitingRow = 3 * sizeof(WaitingRow);

std::uint64_t memoryOf(const WaitingRow& row) {
    std::uint64_t size = kMemoryPerWaitingRow;
    for (const std::string& cell : row.passedCells) size += sizeof(std::string) + cell.capacity();
    return size;
}

// The rows of a channel. Rays wait until the first of them hits, because no ray has a point before
// the side is known.
class ChannelRows {
public:
    ChannelRows(std::uint64_t memoryLimit, ChannelPoints& channelPoints, QueryResults& rows)
        : maxMemory(memoryLimit), channel(channelPoints), results(rows) {}

    void add(const RowReader& rays) {
        WaitingRow row{.ray = rayOf(rays)};
        row.passedCells.assign(rays.passedCells().begin(), rays.passedCells().end());
        if (!channel.hasSide() && row.ray && channel.hits(*row.ray)) channel.useSideOf(*row.ray);
        memory += memoryOf(row);
        waiting.push_back(std::move(row));
        if (channel.hasSide()) processWaiting();
        if (memory > maxMemory)
            throw Error({.found = std::to_string(waiting.size()) + " rays before the first that hits",
                         .expected = "fewer, or a larger --max-memory",
                         .file = rays.name()});
    }

    void processWaiting() {
        for (const WaitingRow& row : waiting) process(row);
        waiting.clear();
        memory = 0;
    }

private:
    void process(const WaitingRow& row) {
        const std::vector<std::string_view> passed(row.passedCells.begin(), row.passedCells.end());
        const auto point = row.ray ? channel.pointOf(*row.ray) : std::nullopt;
        ++rowCount;
        if (point && isFinite(*point))
            results.add({rowCount, std::string_view("hit"), (*point)[0], (*point)[1], (*point)[2]},
                        HasResult::Yes, passed);
        else
            results.add({rowCount, row.ray ? std::string_view("miss") : kEmptyRow, {}, {}, {}}, HasResult::No,
                        passed);
    }

    std::uint64_t maxMemory;
    ChannelPoints& channel;
    QueryResults& results;
    std::vector<WaitingRow> waiting;
    std::uint64_t memory = 0;  // estimate for the waiting rows
    std::int64_t rowCount = 0;
};

void run(const ChannelOptions& options) {
    if (options.rays == "-" && options.extraRays == "-")
        throw Error(
            {.found = "RAYS and --extra both on the standard input", .expected = "one of them in a file"});
    const Screen screen = openScreen(options.screen, options.maxMemory, options.obj);
    warnOfIgnoredCenter(screen, CenterQuery::Rays, options.unit);
    ChannelPoints channel(*screen.geometry);
    RowReader rays = openRays(options.rays, options.unit);
    const auto extraRay = firstHitOf(options, channel);

    std::vector<Column> columns = {{"ray"}, {"status"}};
    for (const Column& column : positionColumns()) columns.push_back(column);
    QueryResults results(options, {options.screen, options.rays, options.extraRays},
                         {.command = "channel", .members = {{"screen", screen.file}}},
                         withPassedColumns(columns, rays.input()));
    ChannelRows rows(options.maxMemory, channel, results);
    while (rays.next()) {
        rows.add(rays);
        if (!rays.hasBufferedRow()) results.flush();
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
         .details = kRowDetails,
         .example = "quarnscreen channel Samples/flat-wall.xml Samples/flat-wall-rays.csv"});
    ChannelOptions& options = command.onRun(run);
    addQueryOptions(command, options);
    command
        .argument("RAYS FILE", options.rays,
                  "CSV or .npy with two positions a ray, fromX,fromY,fromZ,toX,toY,toZ, or by a header also "
                  "a direction "
                  "dX,dY,dZ; - is the standard input")
        .required();
    command.option(
        "--extra FILE", options.extraRays,
        "CSV or .npy with further rays, used only to find the side of the screen that the channel shows");
}

}  // namespace quarn::tool
