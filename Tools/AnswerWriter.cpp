#include "AnswerWriter.h"

#include <cmath>
#include <nlohmann/json.hpp>

#include "NumberText.h"
#include "ToolError.h"

namespace quarn {

namespace {

// A text that grows exists twice while it moves, and the output's buffer holds it once more at the end.
constexpr std::uint64_t kMemoryPerByte = 4;

struct CsvText {
    std::string operator()(std::monostate /*nothing*/) const { return {}; }
    std::string operator()(double number) const { return numberText(number); }
    std::string operator()(std::int64_t count) const { return std::to_string(count); }
    std::string operator()(std::string_view word) const { return std::string(word); }
};

struct JsonValue {
    nlohmann::ordered_json operator()(std::monostate /*nothing*/) const { return nullptr; }
    nlohmann::ordered_json operator()(double number) const {
        if (!std::isfinite(number)) return nullptr;
        return number;
    }
    nlohmann::ordered_json operator()(std::int64_t count) const { return count; }
    nlohmann::ordered_json operator()(std::string_view word) const { return word; }
};

std::string csvHeader(const std::vector<Column>& columns, const std::string& unit) {
    std::string header;
    for (const Column& column : columns) {
        if (!header.empty()) header += ',';
        header += column.quantity == Quantity::Length ? column.name + "[" + unit + "]" : column.name;
    }
    return header + "\n";
}

}  // namespace

AnswerWriter::AnswerWriter(OutputFile& output, AnswerFormat answerFormat, std::uint64_t maxMemory,
                           const nlohmann::ordered_json& head, std::vector<Column> answerColumns)
    : out(output),
      format(answerFormat),
      longestDocument(maxMemory / kMemoryPerByte),
      columns(std::move(answerColumns)) {
    if (format == AnswerFormat::Csv) {
        out.write(csvHeader(columns, head.at("unit").get<std::string>()));
        return;
    }
    document = jsonText(head);
    document.back() = ',';  // in the place of the closing brace
    document += "\"rows\":[";
}

void AnswerWriter::writeRow(const std::vector<Cell>& cells) {
    format == AnswerFormat::Csv ? writeCsvRow(cells) : writeJsonRow(cells);
    hasRows = true;
}

void AnswerWriter::writeCsvRow(const std::vector<Cell>& cells) {
    std::string row;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0) row += ',';
        row += std::visit(CsvText(), cells[i]);
    }
    row += '\n';
    out.write(row);
}

void AnswerWriter::writeJsonRow(const std::vector<Cell>& cells) {
    nlohmann::ordered_json row;
    for (std::size_t i = 0; i < cells.size(); ++i) row[columns[i].name] = std::visit(JsonValue(), cells[i]);
    document += hasRows ? ",\n" : "\n";
    document += jsonText(row);
    if (document.size() > longestDocument)
        throw ToolError{.found = "found more rows than one JSON document may hold within --max-memory",
                        .expected = "fewer rows, or CSV"};
}

void AnswerWriter::finish() {
    if (format == AnswerFormat::Csv) return;
    document += hasRows ? "\n]}\n" : "]}\n";
    out.write(document);
}

std::string jsonText(const nlohmann::ordered_json& value, int indent) {
    return value.dump(indent, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

}  // namespace quarn
