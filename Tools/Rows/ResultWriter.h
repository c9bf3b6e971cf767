/// \file
/// Answers as CSV or JSON.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <QuarnKit/Base/OutputFile.h>

#include "Rows/ResultRows.h"

namespace quarn::tool {

/// The facts about a result that a JSON document has before its rows.
struct ResultHead {
    std::string command;
    std::vector<std::pair<std::string, std::string>> members = {};  ///< By their names, such as "screen".
    std::string unit = {};
};

/// Writes rows with named columns.
///
/// CSV goes out as it comes, under a header that names the unit of each length, as in "x[m]". JSON goes out in finish()
/// as one document whose "rows" are objects. Not safe on several threads.
class ResultWriter {
public:
    /// \param maxMemory bytes that the JSON document may need
    ResultWriter(OutputFile& output, ResultFormat resultFormat, std::uint64_t maxMemory,
                 const ResultHead& head, const std::vector<Column>& columns);

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

}  // namespace quarn::tool
