#include "ObjSelection.h"

#include <algorithm>
#include <cstdint>

#include <QuarnKit/Base/ByteOrderMarks.h>
#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/PrintableText.h>

#include "NearestNames.h"
#include "ObjPartNames.h"
#include "ObjParts.h"

namespace quarn {

namespace {

// Enough names to recognize a file by, on one line.
constexpr std::size_t kMaxListedNames = 5;

class PartMatcher {
public:
    explicit PartMatcher(const std::vector<std::string>& wantedNames)
        : wanted(wantedNames), areFound(wantedNames.size(), false) {
        match();
    }

    // Reads a line, and returns true if it is a face of no wanted object or group.
    bool isUnwantedFace(const ObjLogicalLine& logicalLine);
    // Returns the first name that matches nothing; null if there is none.
    [[nodiscard]] const std::string* missingName() const;
    [[nodiscard]] std::uint64_t wantedFaces() const { return faceCount; }

private:
    void match();

    const std::vector<std::string>& wanted;
    std::vector<bool> areFound;
    ObjPartNames names;
    std::vector<std::size_t> matches;
    std::uint64_t faceCount = 0;
};

void PartMatcher::match() {
    matches.clear();
    for (std::size_t i = 0; i < wanted.size(); ++i)
        if (names.contains(wanted[i])) matches.push_back(i);
}

bool PartMatcher::isUnwantedFace(const ObjLogicalLine& logicalLine) {
    const bool isNamed = names.read(logicalLine);
    if (isNamed) match();
    const bool isFace = isObjFaceLine(logicalLine);
    // The default group exists only if it has a face.
    if (isNamed || isFace)
        for (const std::size_t index : matches)
            if (isFace || wanted[index] != kDefaultObjGroup) areFound[index] = true;
    if (isFace && !matches.empty()) ++faceCount;
    return isFace && matches.empty();
}

const std::string* PartMatcher::missingName() const {
    const auto place = std::find(areFound.begin(), areFound.end(), false);
    return place == areFound.end() ? nullptr : &wanted[static_cast<std::size_t>(place - areFound.begin())];
}

// Continued lines keep their line ends.
void blank(std::string& text, std::string_view line) {
    const auto begin = text.begin() + (line.data() - text.data());
    std::replace_if(
        begin, begin + static_cast<std::ptrdiff_t>(line.size()),
        [](char byte) { return byte != '\n' && byte != '\r'; }, ' ');
}

// As in: one of "Wall", "Floor" and 3 more.
std::string namesText(const std::string& wanted, const std::vector<ObjPart>& parts) {
    std::vector<std::string> names;
    names.reserve(parts.size());
    for (const ObjPart& part : parts) names.push_back(part.name);
    std::sort(names.begin(), names.end());
    names.erase(std::unique(names.begin(), names.end()), names.end());
    const std::vector<std::string> nearest = nearestNames(wanted, names, kMaxListedNames);
    std::string text;
    for (const std::string& name : nearest) text += (text.empty() ? "" : ", ") + quotedExcerpt(name);
    if (names.size() == 1) return text;
    const std::size_t others = names.size() - nearest.size();
    return "one of " + text + (others == 0 ? "" : " and " + std::to_string(others) + " more");
}

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : ", ") + quotedExcerpt(name);
    return text;
}

void requireFaces(const ObjSource& source, const std::vector<std::string>& names) {
    PartMatcher matcher(names);
    ObjLogicalLines logicalLines(withoutUtf8Mark(source.text));
    for (ObjLogicalLine logicalLine; logicalLines.next(logicalLine);)
        static_cast<void>(matcher.isUnwantedFace(logicalLine));
    if (const std::string* const missing = matcher.missingName())
        throw Error({.found = "found no object or group " + quotedExcerpt(*missing),
                     .expected = namesText(*missing, listObjParts(source.name, source.text)),
                     .file = source.name});
    if (matcher.wantedFaces() == 0)
        throw Error({.found = "found no face in the object or group " + joined(names),
                     .expected = "one with faces",
                     .file = source.name});
}

}  // namespace

void selectObjParts(ObjSource& source, const std::vector<std::string>& names) {
    if (names.empty()) return;
    requireFaces(source, names);
    PartMatcher matcher(names);
    ObjLogicalLines logicalLines(withoutUtf8Mark(source.text));
    for (ObjLogicalLine logicalLine; logicalLines.next(logicalLine);)
        if (matcher.isUnwantedFace(logicalLine)) blank(source.text, logicalLine.text);
}

}  // namespace quarn
