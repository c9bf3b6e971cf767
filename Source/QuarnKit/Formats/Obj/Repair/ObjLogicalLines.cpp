#include "ObjLogicalLines.h"

#include <algorithm>
#include <array>

namespace quarn {

namespace {

std::string_view withoutLeadingSpace(std::string_view text) {
    std::size_t begin = 0;
    while (begin < text.size() && isObjSpace(text[begin])) ++begin;
    return text.substr(begin);
}

// A backslash at the end of a name or comment joins nothing, as in the path of a folder.
bool isContinuedLine(std::string_view line) {
    if (!line.ends_with('\\')) return false;
    const std::string_view text = withoutLeadingSpace(line);
    return text.starts_with('v') || text.starts_with('f');
}

// Returns true if the "#" at an index of a word begins the rest of a number that is not finite, as
// in 1.#IND, -1.#QNAN and 1#INF.
bool isPartOfNumber(std::string_view text, std::size_t at) {
    const auto isDigit = [&](std::size_t i) { return text[i] >= '0' && text[i] <= '9'; };
    const std::string_view rest = text.substr(at + 1);
    if (at >= 2 && text[at - 1] == '.' && isDigit(at - 2))
        return !rest.empty() && rest.front() >= 'A' && rest.front() <= 'Z';
    constexpr std::array<std::string_view, 5> kNames = {"IND", "INF", "NAN", "QNAN", "SNAN"};
    return at >= 1 && isDigit(at - 1) &&
           std::any_of(kNames.begin(), kNames.end(),
                       [&](std::string_view name) { return rest.starts_with(name); });
}

void splitWords(std::string_view text, ObjLogicalLine& logicalLine) {
    logicalLine.words.clear();
    logicalLine.comment = {};
    for (text = withoutLeadingSpace(text); !text.empty(); text = withoutLeadingSpace(text)) {
        if (text.front() == '#') {
            logicalLine.comment = text;
            return;
        }
        // Some programs write no blank before a comment.
        const bool isKeyword = logicalLine.words.empty();
        std::size_t length = 1;
        while (length < text.size() && !isObjSpace(text[length]) &&
               (isKeyword || text[length] != '#' || isPartOfNumber(text, length)))
            ++length;
        logicalLine.words.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
}

}  // namespace

std::string_view ObjLogicalLines::takeLine(std::string_view& lineEnd) {
    ++lineCount;
    // Searched once for each line feed, since a text of carriage returns may have none.
    if (rest.data() > nextFeed) nextFeed = rest.data() + std::min(rest.size(), rest.find('\n'));
    std::string_view line = rest.substr(0, static_cast<std::size_t>(nextFeed - rest.data()));
    line = line.substr(0, line.find('\r'));
    rest.remove_prefix(line.size());
    lineEnd = rest.substr(0, rest.starts_with("\r\r\n") ? 3 : rest.starts_with("\r\n") ? 2 : 1);
    rest.remove_prefix(lineEnd.size());
    return line;
}

// Backslashes and line ends become blanks in the copy that is split into words.
void ObjLogicalLines::joinLines(ObjLogicalLine& logicalLine) {
    joined = logicalLine.text;
    const char* const begin = logicalLine.text.data();
    while (joined.ends_with('\\')) {
        joined.back() = ' ';
        if (rest.empty()) {
            logicalLine.lineEnd = {};
            break;
        }
        joined += takeLine(logicalLine.lineEnd);
    }
    logicalLine.text = {begin, static_cast<std::size_t>(rest.data() - begin) - logicalLine.lineEnd.size()};
}

bool ObjLogicalLines::next(ObjLogicalLine& logicalLine) {
    if (rest.empty()) return false;
    logicalLine.text = takeLine(logicalLine.lineEnd);
    logicalLine.line = lineCount;
    logicalLine.isContinued = isContinuedLine(logicalLine.text);
    if (logicalLine.isContinued) joinLines(logicalLine);
    splitWords(logicalLine.isContinued ? std::string_view(joined) : logicalLine.text, logicalLine);
    return true;
}

}  // namespace quarn
