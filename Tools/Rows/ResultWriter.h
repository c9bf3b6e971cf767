/// \file
/// Results as CSV, JSON or a NumPy array. For commands that write rows.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <QuarnKit/Base/Output/CompleteOutput.h>
#include <QuarnKit/Base/OutputFile.h>
#include <QuarnKit/Formats/Npy/NpyWriter.h>

#include "Rows/ResultRows.h"

namespace quarn::tool {

/// The members of a JSON document before its rows.
struct ResultHead {
    std::string command;
    std::vector<std::pair<std::string, std::string>> members = {};  ///< Names and texts, as in "screen".
    std::string unit = {};
};

/// Throws an Error if the name of an output has the extension of another format.
/// \param extension extension of CSV, or of a report instead of it
void requireResultName(const std::string& path, ResultFormat format, const std::string& extension = "csv");

/// Writes rows with named columns.
///
/// Writes CSV immediately, under a header with the unit of each length, as in "x[m]". Writes JSON
/// as one document whose "rows" are objects, and an array with a row for each row; both reach a
/// stream only in finish(), so that an error leaves no part of them there. The memory used does not
/// grow with the output. Not safe on several threads.
class ResultWriter {
public:
    ResultWriter(OutputFile& output, ResultFormat format, const ResultHead& head,
                 const std::vector<Column>& columns);

    /// Appends rows of the same format.
    /// \throws Error if the output cannot be written
    void write(const ResultRows& rows);

    /// Writes the rest of the output. No row may follow.
    void finish();

private:
    OutputFile& out;
    std::optional<CompleteOutput> json;  // none for other formats
    std::optional<NpyWriter> npy;        // none for other formats
    bool hasRows = false;
};

}  // namespace quarn::tool
