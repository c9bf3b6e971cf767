#include "Reports/AlignedText.h"

#include <algorithm>

namespace quarn::tool {

std::string AlignedText::text() const {
    std::size_t width = 0;
    for (const auto& [key, value] : lines) width = std::max(width, key.size());
    std::string result;
    for (const auto& [key, value] : lines) {
        result += key;
        result += ':';
        result.append(width - key.size() + 1, ' ');
        result += value;
        result += '\n';
    }
    return result;
}

}  // namespace quarn::tool
