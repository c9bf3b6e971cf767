/// \file
/// Results as CSV or JSON. For commands that write rows.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <QuarnKit/Base/OutputFile.h>

#include "Rows/ResultRows.h"

namespace quarn::tool {

/// The members of a JSON document before its rows.
struct ResultHead {
    std::string command;
    std::vector<std::pair<std::string, std::string>> members = {};  ///< Names and texts, as in "screen".
    std::string unit = {};
};

/// Throws an Error if the name of an output has the extension of another format.
/// \param extension extension of results that are not JSON
void requireResultName(const std::string& path, ResultFormat format, const std::string& extension = "csv");

/// Writes rows with named columns.
///
/// Writes CSV immediately, under a header with the unit of each length, as in "x[m]". Writes JSON
/// in finish(), as one document whose "rows" are objects. Not safe on several threads.
class ResultWriter {
public:
    /// \param maxMemory limit for the JSON document in bytes
    ResultWriter(OutputFile& output, ResultFormat resultFormat, std::uint64_t maxMemory,
                 const ResultHead& head, const std::vector<Column>& columns);

    /// Appends rows of the same format.
    /// \throws Error if the JSON document exceeds its limit, or the output cannot be written
    void write(const ResultRows& rows);

    /// Writes the rest of the output. No row may follow.
    void finish();

private:
    OutputFile& out;
    ResultFormat format;
    std::uint64_t maxDocumentBytes;
    std::string document;  // the JSON document up to the last row
    bool hasRows = false;
};

}  // namespace quarn::tool
