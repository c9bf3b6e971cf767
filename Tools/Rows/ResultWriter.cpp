#include "Rows/ResultWriter.h"

#include <QuarnKit/Formats/OutputName.h>

#include "Base/Json.h"
#include "Csv/RowCells.h"

namespace quarn::tool {

namespace {

std::string csvHeader(const std::vector<Column>& columns, const std::string& unit) {
    std::string header;
    for (const Column& column : columns) {
        if (!header.empty()) header += ',';
        appendCommaText(header,
                        column.quantity == Quantity::Length ? column.name + "[" + unit + "]" : column.name);
    }
    return header + "\n";
}

// The document up to its first row.
std::string jsonBeginning(const ResultHead& head) {
    Json json = Json::object({{"command", head.command}});
    for (const auto& [name, text] : head.members) json.set(name, text);
    json.set("unit", head.unit);
    std::string beginning = json.text();
    beginning.back() = ',';  // replaces the closing brace
    return beginning + "\"rows\":[";
}

}  // namespace

void requireResultName(const std::string& path, ResultFormat format, const std::string& extension) {
    if (format == ResultFormat::Json)
        requireOutputName(path, {"json"}, ", or no --json");
    else if (format == ResultFormat::Npy)
        requireOutputName(path, {"npy"}, ", or no --npy");
    else
        requireOutputName(path, {extension}, extensionOf(path) == "json" ? ", or --json" : "");
}

ResultWriter::ResultWriter(OutputFile& output, ResultFormat format, const ResultHead& head,
                           const std::vector<Column>& columns)
    : out(output) {
    if (format == ResultFormat::Json)
        json.emplace(out).write(jsonBeginning(head));
    else if (format == ResultFormat::Npy)
        npy.emplace(out, columns.size());
    else
        out.write(csvHeader(columns, head.unit));
}

void ResultWriter::write(const ResultRows& rows) {
    if (npy) return npy->write(rows.numbers());
    if (!json) return out.write(rows.text());
    // The first row has no comma before it.
    json->write(rows.text().substr(hasRows || rows.text().empty() ? 0 : 1));
    hasRows = hasRows || rows.rowCount() > 0;
}

void ResultWriter::finish() {
    if (npy) npy->finish();
    if (!json) return;
    json->write(hasRows ? "\n]}\n" : "]}\n");
    json->finish();
}

}  // namespace quarn::tool
