#include "Rows/ResultWriter.h"

#include <nlohmann/json.hpp>

#include <QuarnKit/Base/Error.h>

namespace quarn::tool {

namespace {

// A text that grows exists twice while it moves, and the output's buffer holds it once more at the end.
constexpr std::uint64_t kMemoryPerByte = 4;

std::string csvHeader(const std::vector<Column>& columns, const std::string& unit) {
    std::string header;
    for (const Column& column : columns) {
        if (!header.empty()) header += ',';
        header += column.quantity == Quantity::Length ? column.name + "[" + unit + "]" : column.name;
    }
    return header + "\n";
}

}  // namespace

ResultWriter::ResultWriter(OutputFile& output, ResultFormat resultFormat, std::uint64_t maxMemory,
                           const nlohmann::ordered_json& head, const std::vector<Column>& columns)
    : out(output), format(resultFormat), maxDocumentBytes(maxMemory / kMemoryPerByte) {
    if (format == ResultFormat::Csv) {
        out.write(csvHeader(columns, head.at("unit").get<std::string>()));
        return;
    }
    document = jsonText(head);
    document.back() = ',';  // in the place of the closing brace
    document += "\"rows\":[";
}

void ResultWriter::write(const ResultRows& rows) {
    if (format == ResultFormat::Csv) {
        out.write(rows.text());
        return;
    }
    // The first row has no comma before it.
    document += rows.text().substr(hasRows || rows.text().empty() ? 0 : 1);
    hasRows = hasRows || rows.rowCount() > 0;
    if (document.size() > maxDocumentBytes)
        throw Error({.found = "found more rows than one JSON document may hold within --max-memory",
                     .expected = "fewer rows, or CSV"});
}

void ResultWriter::finish() {
    if (format == ResultFormat::Csv) return;
    document += hasRows ? "\n]}\n" : "]}\n";
    out.write(document);
}

std::string jsonText(const nlohmann::ordered_json& value, int indent) {
    return value.dump(indent, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace quarn::tool
