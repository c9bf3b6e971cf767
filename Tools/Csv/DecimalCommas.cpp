#include "Csv/DecimalCommas.h"

#include <algorithm>
#include <string>

#include <QuarnKit/Base/NumberText.h>

#include "Csv/RowCells.h"

namespace quarn::tool {

namespace {

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

bool areDecimalCommas(std::string_view row, char separator) {
    bool hasDecimalComma = false;
    std::size_t count = 0;
    for (std::size_t start = 0; start <= row.size(); ++count) {
        const std::size_t end = std::min(row.find(separator, start), row.size());
        const std::string_view cell = row.substr(start, end - start);
        const bool isBlank = separator == kBlankSeparator && cell.empty();
        if (isDecimalComma(cell))
            hasDecimalComma = true;
        else if (!isBlank && !parseNumber(cell))
            return false;
        start = end + 1;
    }
    return hasDecimalComma && count > 1;
}

}  // namespace

bool isDecimalComma(std::string_view cell) {
    cell = trimmed(withoutQuotes(cell));
    const std::size_t comma = cell.find(',');
    if (comma == std::string_view::npos || comma == 0 || comma + 1 == cell.size()) return false;
    if (!isDigit(cell[comma - 1]) || !isDigit(cell[comma + 1])) return false;
    std::string number(cell);
    number[comma] = '.';
    return parseNumber(number).has_value();
}

bool hasDecimalCommas(std::string_view row) {
    return areDecimalCommas(row, ';') || areDecimalCommas(row, '\t') ||
           areDecimalCommas(row, kBlankSeparator);
}

}  // namespace quarn::tool
