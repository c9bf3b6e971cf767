#include "Rows/CsvReader.h"

namespace quarn::tool {

namespace {

constexpr std::size_t kBlockSize = 65536;

}  // namespace

CsvReader::CsvReader(InputStream source, std::vector<std::string> columnNames)
    : blocks(std::move(source), kBlockSize), format(std::move(columnNames)) {}

bool CsvReader::next(std::vector<double>& numbers) {
    numbers.clear();
    for (;;) {
        if (lines.empty()) {
            if (!blocks.next(lines)) return false;
            line += head.skip(lines);
            continue;
        }
        ++line;
        try {
            if (format.parse(takeLine(lines), numbers)) return true;
        } catch (const Error& error) {
            throw error.at(name(), line);
        }
    }
}

}  // namespace quarn::tool
