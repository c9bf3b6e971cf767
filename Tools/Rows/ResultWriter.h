/// \file
/// Answers as CSV or JSON.
#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include <QuarnKit/Base/OutputFile.h>

#include "Rows/ResultRows.h"

namespace quarn::tool {

/// Writes rows with named columns.
///
/// CSV goes out as it comes, under a header that names the unit of each length, as in "x[m]". JSON goes out in finish()
/// as one document whose "rows" are objects. Not safe on several threads.
class ResultWriter {
public:
    /// \param maxMemory bytes that the JSON document may need
    /// \param head members of the JSON document that stand before its rows, among them "unit"
    ResultWriter(OutputFile& output, ResultFormat resultFormat, std::uint64_t maxMemory,
                 const nlohmann::ordered_json& head, const std::vector<Column>& columns);

    /// \param rows of the same format
    void write(const ResultRows& rows);

    /// Writes what is left; no row may follow.
    void finish();

private:
    OutputFile& out;
    ResultFormat format;
    std::uint64_t maxDocumentBytes;
    std::string document;  // JSON so far
    bool hasRows = false;
};

/// Text of a JSON value on its lines; bytes of strings that are not UTF-8 become U+FFFD.
[[nodiscard]] std::string jsonText(const nlohmann::ordered_json& value, int indent = -1);

}  // namespace quarn::tool
