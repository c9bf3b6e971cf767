#include "Rows/ResultRows.h"

#include <cmath>
#include <nlohmann/json.hpp>

#include <QuarnKit/Base/NumberText.h>

#include "Rows/ResultWriter.h"

namespace quarn::tool {

namespace {

struct CsvText {
    std::string& text;
    void operator()(std::monostate /*nothing*/) const {}
    void operator()(double number) const { appendNumber(text, number); }
    void operator()(std::int64_t count) const { text += std::to_string(count); }
    void operator()(std::string_view word) const { text += word; }
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

void appendCsvRow(std::string& text, std::span<const Cell> cells) {
    for (const Cell& cell : cells) {
        std::visit(CsvText{text}, cell);
        text += ',';
    }
    text.back() = '\n';
}

void appendJsonRow(std::string& text, std::span<const Cell> cells, const std::vector<Column>& columns) {
    nlohmann::ordered_json row;
    for (std::size_t i = 0; i < cells.size(); ++i) row[columns[i].name] = std::visit(JsonValue(), cells[i]);
    text += ",\n";
    text += jsonText(row);
}

}  // namespace

void ResultRows::add(std::span<const Cell> cells, HasResult hasResult) {
    format == ResultFormat::Csv ? appendCsvRow(rows, cells) : appendJsonRow(rows, cells, *columns);
    length = rows.size();
    ++count;
    if (hasResult == HasResult::No) ++missingResults;
}

void ResultRows::clear() {
    rows.clear();
    length = 0;
    count = 0;
    missingResults = 0;
}

}  // namespace quarn::tool
