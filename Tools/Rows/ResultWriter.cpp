#include "Rows/ResultWriter.h"

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Formats/OutputName.h>

#include "Base/Json.h"
#include "Csv/RowCells.h"

namespace quarn::tool {

namespace {

// A growing text exists twice while it moves, and once more in the output's buffer at the end.
constexpr std::uint64_t kMemoryPerByte = 4;

std::string csvHeader(const std::vector<Column>& columns, const std::string& unit) {
    std::string header;
    for (const Column& column : columns) {
        if (!header.empty()) header += ',';
        appendCommaText(header,
                        column.quantity == Quantity::Length ? column.name + "[" + unit + "]" : column.name);
    }
    return header + "\n";
}

Json jsonHead(const ResultHead& head) {
    Json json = Json::object({{"command", head.command}});
    for (const auto& [name, text] : head.members) json.set(name, text);
    json.set("unit", head.unit);
    return json;
}

}  // namespace

void requireResultName(const std::string& path, ResultFormat format, const std::string& extension) {
    if (format == ResultFormat::Json)
        requireOutputName(path, {"json"}, ", or no --json");
    else
        requireOutputName(path, {extension}, extensionOf(path) == "json" ? ", or --json" : "");
}

ResultWriter::ResultWriter(OutputFile& output, ResultFormat resultFormat, std::uint64_t maxMemory,
                           const ResultHead& head, const std::vector<Column>& columns)
    : out(output), format(resultFormat), maxDocumentBytes(maxMemory / kMemoryPerByte) {
    if (format == ResultFormat::Csv) {
        out.write(csvHeader(columns, head.unit));
        return;
    }
    document = jsonHead(head).text();
    document.back() = ',';  // replaces the closing brace
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
        throw Error({.found = "found more rows than fit into one JSON document within --max-memory",
                     .expected = "fewer rows, or CSV"});
}

void ResultWriter::finish() {
    if (format == ResultFormat::Csv) return;
    document += hasRows ? "\n]}\n" : "]}\n";
    out.write(document);
}

}  // namespace quarn::tool
