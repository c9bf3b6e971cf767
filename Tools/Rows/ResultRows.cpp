#include "Rows/ResultRows.h"

#include <QuarnKit/Base/NumberText.h>

namespace quarn::tool {

namespace {

struct CsvText {
    std::string& text;
    void operator()(std::monostate /*nothing*/) const {}
    void operator()(double number) const { appendNumber(text, number); }
    void operator()(std::int64_t count) const { text += std::to_string(count); }
    void operator()(std::string_view word) const { text += word; }
};

void appendCsvRow(std::string& text, std::span<const Cell> cells) {
    for (const Cell& cell : cells) {
        std::visit(CsvText{text}, cell);
        text += ',';
    }
    text.back() = '\n';
}

void setMember(JsonRow& row, std::size_t index, std::monostate /*nothing*/) {
    row.set(index, nullptr);
}

template <class Value>
void setMember(JsonRow& row, std::size_t index, const Value& value) {
    row.set(index, value);
}

void appendJsonRow(std::string& text, std::span<const Cell> cells, JsonRow& row) {
    for (std::size_t i = 0; i < cells.size(); ++i)
        std::visit([&](const auto& value) { setMember(row, i, value); }, cells[i]);
    text += ",\n";
    row.appendTo(text);
}

std::vector<std::string> namesOf(const std::vector<Column>& columns) {
    std::vector<std::string> names;
    names.reserve(columns.size());
    for (const Column& column : columns) names.push_back(column.name);
    return names;
}

}  // namespace

ResultRows::ResultRows(ResultFormat format, const std::vector<Column>& columns) {
    if (format == ResultFormat::Json) jsonRow.emplace(namesOf(columns));
}

void ResultRows::add(std::span<const Cell> cells, HasResult hasResult) {
    jsonRow ? appendJsonRow(rows, cells, *jsonRow) : appendCsvRow(rows, cells);
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
