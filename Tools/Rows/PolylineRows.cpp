#include "Rows/PolylineRows.h"

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/MemoryLimit.h>

#include "Rows/QueryResults.h"

namespace quarn::tool {

namespace {

// A growing vector has its elements twice while it moves them, and reserves as many again.
constexpr std::uint64_t kMemoryPerPosition = 3 * sizeof(Point<double, 3>);

}  // namespace

void refuseManyPositions(const std::string& options, std::uint64_t count, std::uint64_t maxMemory) {
    if (count > maxMemory / kMemoryPerPosition)
        throw Error({.found = "found " + options + " for " + std::to_string(count) +
                              " positions, which may need more than " + memorySizeText(maxMemory) +
                              " of memory",
                     .expected = "smaller numbers, or a larger --max-memory"});
}

void writePolylines(const std::string& command, const Screen& screen,
                    const IScreenGeometry::Polylines& polylines, const QueryOptions& options) {
    std::vector<Column> columns = {{"polyline"}};
    for (const Column& column : positionColumns()) columns.push_back(column);
    QueryResults results(options, {options.screen},
                         {.command = command, .members = {{"screen", screen.file}}}, columns);
    std::int64_t number = 0;
    for (const auto& polyline : polylines) {
        ++number;
        for (const Point<double, 3>& point : polyline)
            results.add({number, point[0], point[1], point[2]}, HasResult::Yes);
    }
    results.finish();
}

}  // namespace quarn::tool
