/// \file
/// Numbers in OBJ texts that the library reads back unchanged.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quarn {

/// Returns the shortest number that OBJScreen reads as the float \p value. -0 is written as 0, as
/// which OBJScreen reads it.
///
/// Such a number exists for every float, although the reader does not convert correctly: this was
/// tested for all 2,139,095,039 positive floats.
/// \pre value is finite
[[nodiscard]] std::string objNumberText(float value);

/// Appends objNumberText() of \p value.
void appendObjNumber(std::string& text, float value);

/// Appends the digits of the number of a line, or of another integer.
void appendObjInteger(std::string& text, std::uint64_t value);

/// Appends a line of a keyword and numbers for each record.
template <std::size_t N>
void appendObjLines(std::string& text, const char* keyword,
                    const std::vector<std::array<float, N>>& records) {
    for (const auto& record : records) {
        text += keyword;
        for (const float number : record) appendObjNumber(text += ' ', number);
        text += '\n';
    }
}

}  // namespace quarn
