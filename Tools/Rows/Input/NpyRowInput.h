/// \file
/// Rows of a NumPy array in blocks.
#pragma once

#include <string>
#include <vector>

#include <QuarnKit/Formats/Npy/NpyReader.h>

#include "Rows/Input/RowInput.h"

namespace quarn::tool {

/// Reads an array whose columns are the numbers of a command, in their order without a header. NaN
/// is a missing value: a row of nothing else is empty.
class NpyRowInput : public RowInput {
public:
    /// \param blockBytes size of a block in the input
    /// \throws Error if the input is not an array of these columns
    NpyRowInput(InputStream source, const InputColumns& columns, std::size_t blockBytes);

    [[nodiscard]] std::size_t nextBlock() override;
    void parse(std::size_t part, CsvRows& rows) const override;
    [[nodiscard]] std::size_t numberCount() const override { return width; }
    [[nodiscard]] std::vector<PassedColumn> passColumns(
        const std::vector<std::string>& /*namesInUse*/) override {
        return {};
    }
    [[nodiscard]] std::uint64_t headLineCount() const override { return 0; }
    [[nodiscard]] Error noRowsError() const override;
    [[nodiscard]] const std::string& name() const override { return reader.name(); }

private:
    NpyReader reader;
    std::string rowText;  // the names of the columns
    std::size_t width;    // numbers of a row
    std::size_t blockRows;
    std::vector<double> block;
};

}  // namespace quarn::tool
