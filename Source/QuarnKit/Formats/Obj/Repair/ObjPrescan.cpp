#include "ObjPrescan.h"

#include <algorithm>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnKit/Formats/Obj/MissingFaces.h>
#include <QuarnScreen/Detail/Obj/ObjNumbers.h>

#include "ObjNumberForm.h"

namespace quarn {

namespace {

float coordinateOf(std::string_view word, const ObjLogicalLine& logicalLine, const std::string& name) {
    if (numberFormOf(word) == ObjNumberForm::NoNumber)
        throw Error({.found = "found " + quotedExcerpt(word) + " as a coordinate",
                     .expected = expectedNumberFor(word),
                     .file = name,
                     .line = logicalLine.line});
    return objNumberOf(word);
}

std::array<float, 3> coordinatesOf(const ObjLogicalLine& logicalLine, const std::string& name) {
    if (logicalLine.words.size() < 2)
        throw Error({.found = "found a vertex without coordinates",
                     .expected = R"("v" and three numbers)",
                     .file = name,
                     .line = logicalLine.line});
    // The library reads missing coordinates as 0, as other programs do.
    std::array<float, 3> position{};
    for (std::size_t i = 0; i < position.size() && i + 1 < logicalLine.words.size(); ++i)
        position.at(i) = coordinateOf(logicalLine.words[i + 1], logicalLine, name);
    return position;
}

bool isReadableUV(const ObjLogicalLine& logicalLine) {
    const auto end = logicalLine.words.begin() +
                     static_cast<std::ptrdiff_t>(std::min<std::size_t>(logicalLine.words.size(), 3));
    return logicalLine.words.size() > 1 &&
           std::all_of(logicalLine.words.begin() + 1, end,
                       [](std::string_view word) { return numberFormOf(word) != ObjNumberForm::NoNumber; });
}

}  // namespace

ObjLineKind kindOf(const ObjLogicalLine& logicalLine) {
    if (logicalLine.words.empty()) return ObjLineKind::Other;
    const std::string_view keyword = logicalLine.words.front();
    if (keyword == "v") return ObjLineKind::Vertex;
    if (keyword == "vt") return ObjLineKind::UV;
    if (keyword == "vn") return ObjLineKind::Normal;
    if (keyword == "f" || keyword == "fo") return ObjLineKind::Face;
    const bool isMisread = keyword.starts_with("vt") || keyword.starts_with("vn") || keyword.starts_with('f');
    return isMisread ? ObjLineKind::Misread : ObjLineKind::Other;
}

ObjPrescan prescanObj(const std::string& name, std::string_view text) {
    ObjPrescan prescan;
    ObjLogicalLines logicalLines(text);
    for (ObjLogicalLine logicalLine; logicalLines.next(logicalLine);) {
        const ObjLineKind kind = kindOf(logicalLine);
        if (kind == ObjLineKind::Vertex) prescan.positions.push_back(coordinatesOf(logicalLine, name));
        if (kind == ObjLineKind::UV) prescan.areUVsReadable.push_back(isReadableUV(logicalLine));
        if (kind == ObjLineKind::Normal) {
            ++prescan.normalCount;
            prescan.lastNormalLine = logicalLine.line;
        }
        if (kind == ObjLineKind::Face && prescan.firstFaceLine == 0) prescan.firstFaceLine = logicalLine.line;
    }
    if (prescan.positions.empty())
        throw Error({.found = "found no vertex in the OBJ text",
                     .expected = R"(lines that begin with "v")",
                     .file = name});
    if (prescan.firstFaceLine == 0) refuseMissingFaces(name, text);
    return prescan;
}

}  // namespace quarn
