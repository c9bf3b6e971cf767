#include "ObjSourceText.h"

#include <algorithm>

#include <QuarnScreen/OBJScreen.h>

namespace quarn {

std::uint64_t ObjSourceText::lineOf(const char* place) const {
    const auto offset = static_cast<std::size_t>(place - text.data());
    const auto joined =
        std::lower_bound(joinedLines.begin(), joinedLines.end(), offset) - joinedLines.begin();
    const auto feeds = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(offset), '\n');
    return lineMap.originalOf(static_cast<std::uint64_t>(joined + feeds) + 1);
}

ObjSourceText joinObjLines(std::string name, std::string& text) {
    std::vector<std::size_t> joined;
    for (std::size_t at = text.find(kObjLineJoin); at != std::string::npos;
         at = text.find(kObjLineJoin, at + kObjLineJoin.size()))
        joined.push_back(at + 1);
    if (!joined.empty()) OBJScreen::replaceNewLineEscapeSequencesWithBlanks(text);
    return {.name = std::move(name), .text = text, .joinedLines = std::move(joined)};
}

bool isAtLineEnd(const char* p) {
    return *p == '\n' || *p == '\0' || (*p == '\r' && (p[1] == '\n' || p[1] == '\0'));
}

std::string_view wordAt(const char* p) {
    const char* end = p;
    while (*end != ' ' && *end != '\t' && *end != '\r' && *end != '\n' && *end != '\0') ++end;
    return {p, static_cast<std::size_t>(end - p)};
}

}  // namespace quarn
