#include "ObjLogicalLines.h"

#include <algorithm>

namespace quarn {

namespace {

std::string_view withoutSpaceInFront(std::string_view text) {
    std::size_t begin = 0;
    while (begin < text.size() && isObjSpace(text[begin])) ++begin;
    return text.substr(begin);
}

// Names and comments may end with a backslash that joins nothing, as in the path of a folder.
bool isContinuedLine(std::string_view line) {
    if (!line.ends_with('\\')) return false;
    const std::string_view text = withoutSpaceInFront(line);
    return text.starts_with('v') || text.starts_with('f');
}

std::size_t lineLength(std::string_view text) {
    const auto* const end = std::find_if(text.data(), text.data() + text.size(),
                                         [](char byte) { return byte == '\n' || byte == '\r'; });
    return static_cast<std::size_t>(end - text.data());
}

void splitWords(std::string_view text, ObjRecord& record) {
    record.words.clear();
    record.comment = {};
    for (text = withoutSpaceInFront(text); !text.empty(); text = withoutSpaceInFront(text)) {
        if (text.front() == '#') {
            record.comment = text;
            return;
        }
        // Some programs write a comment without a blank in front of it.
        const bool isKeyword = record.words.empty();
        std::size_t length = 1;
        while (length < text.size() && !isObjSpace(text[length]) && (isKeyword || text[length] != '#'))
            ++length;
        record.words.push_back(text.substr(0, length));
        text.remove_prefix(length);
    }
}

}  // namespace

std::string_view ObjRecords::takeLine(std::string_view& lineEnd) {
    ++lineCount;
    const std::string_view line = rest.substr(0, lineLength(rest));
    rest.remove_prefix(line.size());
    lineEnd = rest.substr(0, rest.starts_with("\r\r\n") ? 3 : rest.starts_with("\r\n") ? 2 : 1);
    rest.remove_prefix(lineEnd.size());
    return line;
}

// Backslashes and line ends become blanks in the copy that the words are cut from.
void ObjRecords::joinLines(ObjRecord& record) {
    joined = record.text;
    const char* const begin = record.text.data();
    while (joined.ends_with('\\')) {
        joined.back() = ' ';
        if (rest.empty()) {
            record.lineEnd = {};
            break;
        }
        joined += takeLine(record.lineEnd);
    }
    record.text = {begin, static_cast<std::size_t>(rest.data() - begin) - record.lineEnd.size()};
}

bool ObjRecords::next(ObjRecord& record) {
    if (rest.empty()) return false;
    record.text = takeLine(record.lineEnd);
    record.line = lineCount;
    record.isContinued = isContinuedLine(record.text);
    if (record.isContinued) joinLines(record);
    splitWords(record.isContinued ? std::string_view(joined) : record.text, record);
    return true;
}

}  // namespace quarn
