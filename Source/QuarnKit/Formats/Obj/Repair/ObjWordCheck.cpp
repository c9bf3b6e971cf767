#include "ObjWordCheck.h"

#include <algorithm>
#include <optional>
#include <string>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnScreen/Detail/Obj/ObjNumbers.h>

#include "ObjLogicalLines.h"
#include "ObjNumberForm.h"

namespace quarn {

namespace {

constexpr std::size_t kCoordinateCount = 3;
constexpr std::size_t kUVCount = 2;

// Moves over a run of digits and returns true if there was one.
bool skipDigits(const char*& p) {
    const char* const begin = p;
    while (detail::digitOf(*p) <= 9) ++p;
    return p != begin;
}

// Moves over a number without a plus sign; returns false for any other word.
bool skipPlainNumber(const char*& p) {
    if (*p == '-') ++p;
    const bool hasWhole = skipDigits(p);
    if (*p == '.') ++p;
    const bool hasFraction = p[-1] == '.' && skipDigits(p);
    if (!hasWhole && !hasFraction) return false;
    if (*p != 'e' && *p != 'E') return true;
    ++p;
    if (*p == '-' || *p == '+') ++p;
    return skipDigits(p);
}

// Returns true if the words of a line are plain numbers that the library splits and reads as any
// program does.
bool isPlainLine(const char* line, std::size_t keywordLength, std::size_t count) {
    const char* p = line + keywordLength;
    for (std::size_t i = 0; i < count; ++i) {
        if (*p != ' ') return false;
        p = detail::skipBlanks(p);
        if (!skipPlainNumber(p)) return false;
    }
    return *p == ' ' || *p == '\n' || (*p == '\r' && p[1] == '\n');
}

// How the library reads a line whose numbers are not plain.
enum class Reading { Correct, Misread, NoNumber };

struct LineReading {
    Reading reading = Reading::Correct;
    std::string word = {};  // the first that is no number; empty if there is none
};

// The line as the library ends it: at a line feed or NUL.
std::string_view lineAt(const char* line) {
    return {line, static_cast<std::size_t>(detail::lineEnd(line) - line)};
}

// Returns true if words of the line follow after its end for other programs: after a NUL, or after
// a backslash before a carriage return. They are not read here, since many lines could share them.
bool isCutOff(std::string_view line, const char* textEnd) {
    const char* const end = line.data() + line.size();
    return (*end == '\0' && end != textEnd) || line.ends_with('\\') || line.ends_with("\\\r");
}

// Compares the numbers of the library with those that the words of the line state.
LineReading readingOf(const char* begin, const char* textEnd, std::size_t count) {
    const std::string_view text = lineAt(begin);
    ObjLogicalLines logicalLines(text);
    ObjLogicalLine line;
    const std::size_t wordCount = logicalLines.next(line) ? line.words.size() : 0;
    const bool isCut = wordCount < count + 1 && isCutOff(text, textEnd);
    if (wordCount < 2) return {.reading = isCut ? Reading::Misread : Reading::NoNumber};
    const char* p = begin;
    bool isCorrect = !isCut;
    for (std::size_t i = 0; i < count; ++i) {
        p = detail::nextArgument(p);
        const std::string_view word = i + 1 < wordCount ? line.words[i + 1] : "0";
        if (numberFormOf(word) == ObjNumberForm::NoNumber)
            return {.reading = Reading::NoNumber, .word = std::string(word)};
        isCorrect = isCorrect && detail::scanFloatReference(p).value == objNumberOf(word);
    }
    return {.reading = isCorrect ? Reading::Correct : Reading::Misread};
}

// Returns the line of the vertex or UV with an index.
const char* findLine(std::string_view text, char secondByte, std::int32_t index) {
    const char* found = nullptr;
    forEachObjLine(text, [&](const char* line) {
        if (found == nullptr && *line == 'v' && line[1] == secondByte && index-- == 0) found = line;
    });
    return found;
}

Error errorAt(const ObjSourceText& text, const char* line, std::size_t count, const std::string& what) {
    const LineReading bad = readingOf(line, text.text.data() + text.text.size(), count);
    if (bad.reading == Reading::Misread)
        return Error({.found = "found " + quotedExcerpt(lineAt(line)),
                      .expected = "numbers without plus signs, separated by blanks",
                      .file = text.name,
                      .line = text.lineOf(line)});
    if (bad.word.empty())
        return Error({.found = "found a " + what + " without numbers",
                      .expected = count == kUVCount ? R"("vt" and two numbers)" : R"("v" and three numbers)",
                      .file = text.name,
                      .line = text.lineOf(line)});
    return Error({.found = "found " + quotedExcerpt(bad.word) + " as a " + what,
                  .expected = expectedNumberFor(bad.word),
                  .file = text.name,
                  .line = text.lineOf(line)});
}

}  // namespace

void ObjWordCheck::Lines::addMisread() {
    isMisread.resize(count + 1);
    isMisread.back() = true;
    ++count;
}

void ObjWordCheck::readLine(const char* line) {
    if (*line != 'v') return;
    const bool isUV = line[1] == 't';
    if (line[1] != ' ' && !isUV) return;
    Lines& lines = isUV ? uvs : vertices;
    const std::size_t count = isUV ? kUVCount : kCoordinateCount;
    if (isPlainLine(line, isUV ? 2 : 1, count)) return lines.addCorrect();
    const Reading reading = readingOf(line, text.data() + text.size(), count).reading;
    // A line after a NUL is a line for the library only.
    const bool isLine = line == text.data() || line[-1] != '\0';
    if (reading == Reading::NoNumber && !isUV && isLine && invalidVertex == nullptr) invalidVertex = line;
    reading == Reading::Correct ? lines.addCorrect() : lines.addMisread();
}

void ObjWordCheck::read(std::string_view objText) {
    text = objText;
    forEachObjLine(text, [&](const char* line) { readLine(line); });
}

void ObjWordCheck::requireNumbers(const ObjSourceText& objText,
                                  std::span<const detail::ObjFace> faces) const {
    if (invalidVertex != nullptr) throw errorAt(objText, invalidVertex, kCoordinateCount, "coordinate");
    if (vertices.isMisread.empty() && uvs.isMisread.empty()) return;
    std::optional<std::int32_t> vertex;
    std::optional<std::int32_t> uv;
    const auto include = [](std::optional<std::int32_t>& first, const Lines& lines, std::int32_t index) {
        if (lines.isMisreadAt(index)) first = std::min(first.value_or(index), index);
    };
    for (const detail::ObjFace& face : faces)
        for (const detail::ObjCorner& corner : face) {
            include(vertex, vertices, corner.vertex);
            include(uv, uvs, corner.textureCoordinate);
        }
    if (vertex) throw errorAt(objText, findLine(text, ' ', *vertex), kCoordinateCount, "coordinate");
    if (uv) throw errorAt(objText, findLine(text, 't', *uv), kUVCount, "UV");
}

}  // namespace quarn
