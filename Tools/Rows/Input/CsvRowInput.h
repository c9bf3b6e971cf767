/// \file
/// Rows of a CSV input in blocks.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Csv/CsvHead.h"
#include "Csv/LineBlockReader.h"
#include "Rows/Input/RowInput.h"

namespace quarn::tool {

/// Reads CSV; see readCsvHead() for its possible forms.
class CsvRowInput : public RowInput {
public:
    /// Reads the input up to its first row; the parameters are those of openRowInput().
    CsvRowInput(InputStream source, const InputColumns& columns, const std::string& unit,
                std::size_t blockBytes)
        : blocks(std::move(source), blockBytes), head(readCsvHead(blocks, columns, unit)) {}

    [[nodiscard]] std::size_t nextBlock() override;
    void parse(std::size_t part, CsvRows& rows) const override;
    [[nodiscard]] std::size_t numberCount() const override { return head.format.numberCount(); }
    [[nodiscard]] std::vector<PassedColumn> passColumns(const std::vector<std::string>& namesInUse) override {
        return head.format.passColumns(namesInUse);
    }
    [[nodiscard]] std::uint64_t headLineCount() const override { return head.lineCount; }
    [[nodiscard]] Error noRowsError() const override { return head.format.noRowsError().at(name(), 0); }
    [[nodiscard]] const std::string& name() const override { return blocks.name(); }

private:
    LineBlockReader blocks;
    CsvHead head;
    std::vector<std::string_view> parts;  // of the block, each with whole rows
};

}  // namespace quarn::tool
