/// \file
/// Answers as CSV or JSON.
#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "OutputFile.h"

namespace quarn {

enum class AnswerFormat { Csv, Json };

/// What the numbers of a column count.
enum class Quantity { Plain, Length };

struct Column {
    std::string name;
    Quantity quantity = Quantity::Plain;
};

/// One value of a row: nothing, a number, a count or a word.
using Cell = std::variant<std::monostate, double, std::int64_t, std::string_view>;

/// Writes rows with named columns.
///
/// CSV goes out row by row under a header that names the unit of each length, as in "x[m]"; what is not there
/// is an empty cell. JSON goes out in finish() as one document whose "rows" are objects; what is not there,
/// and what is not finite, is null. Not safe on several threads.
class AnswerWriter {
public:
    /// \param maxMemory bytes that the JSON document may need
    /// \param head members of the JSON document that stand before its rows, among them "unit"
    AnswerWriter(OutputFile& output, AnswerFormat answerFormat, std::uint64_t maxMemory,
                 const nlohmann::ordered_json& head, std::vector<Column> answerColumns);

    /// \pre as many cells as columns
    void writeRow(const std::vector<Cell>& cells);

    /// Writes what is left; no row may follow.
    void finish();

private:
    void writeCsvRow(const std::vector<Cell>& cells);
    void writeJsonRow(const std::vector<Cell>& cells);

    OutputFile& out;
    AnswerFormat format;
    std::uint64_t longestDocument;
    std::vector<Column> columns;
    std::string document;  // JSON so far
    bool hasRows = false;
};

/// Text of a JSON value on its lines; bytes of strings that are not UTF-8 become U+FFFD.
[[nodiscard]] std::string jsonText(const nlohmann::ordered_json& value, int indent = -1);

}  // namespace quarn
