#include "ObjRepairer.h"

#include <algorithm>
#include <array>
#include <new>
#include <optional>
#include <string_view>

#include <QuarnKit/Base/ByteOrderMarks.h>
#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Formats/Obj/ObjNumberText.h>
#include <QuarnKit/Mesh/EarClipping.h>
#include <QuarnScreen/Detail/Obj/ObjParser.h>
#include <QuarnScreen/OBJScreen.h>

#include "ObjCornerReader.h"
#include "ObjFaceNormals.h"
#include "ObjLogicalLines.h"
#include "ObjNumberForm.h"
#include "ObjPrescan.h"

namespace quarn {

namespace {

bool isVertexData(ObjLineKind kind) {
    return kind == ObjLineKind::Vertex || kind == ObjLineKind::UV || kind == ObjLineKind::Normal;
}

bool hasUnusualSpace(std::string_view text) {
    return std::any_of(text.begin(), text.end(),
                       [](char byte) { return static_cast<unsigned char>(byte) < ' ' && isObjSpace(byte); });
}

std::uint64_t feedCount(std::string_view text) {
    return static_cast<std::uint64_t>(std::count(text.begin(), text.end(), '\n'));
}

class Repairer {
public:
    Repairer(const std::string& name, std::string_view objText);

    RepairedObj finish();

private:
    void add(const ObjLogicalLine& logicalLine);
    void addByKind(const ObjLogicalLine& logicalLine, ObjLineKind kind);
    void mapLines(const ObjLogicalLine& logicalLine, std::size_t begin);
    void addVertexData(const ObjLogicalLine& logicalLine, ObjLineKind kind);
    void addFace(const ObjLogicalLine& logicalLine);
    void addAsComment(const ObjLogicalLine& logicalLine);
    void addOther(const ObjLogicalLine& logicalLine);
    void addUnchanged(const ObjLogicalLine& logicalLine);
    std::string& addWithoutNul(std::string_view text);
    void addWords();
    void addCorner(const ObjCornerIndices& corner, std::uint64_t faceNormal);
    [[nodiscard]] std::vector<PolygonTriangle> triangulate(std::uint64_t line);
    [[nodiscard]] bool isLayoutPlain(const ObjLogicalLine& logicalLine);
    [[nodiscard]] bool readCorners(const ObjLogicalLine& logicalLine);

    RepairedObj result;
    ObjPrescan prescan;
    ObjCornerReader reader;
    ObjFaceNormals normals;
    std::vector<std::string_view> words;
    std::vector<ObjCornerIndices> corners;
    std::vector<std::uint64_t> vertices;
    std::vector<Point<double, 3>> positions;
    std::size_t normalsPlace = 0;
    std::uint64_t normalsLine = 1;
};

Repairer::Repairer(const std::string& name, std::string_view objText)
    : prescan(prescanObj(name, objText)),
      reader(name, prescan, result.repairs),
      normals(prescan.positions, prescan.normalCount) {
    // Corners without normals get the numbers of theirs. Bytes that are reserved in vain take no
    // memory.
    result.text.reserve(objText.size() + objText.size() / (prescan.normalCount == 0 ? 2 : 8));
    ObjLogicalLines logicalLines(objText);
    for (ObjLogicalLine logicalLine; logicalLines.next(logicalLine);) add(logicalLine);
    if (result.triangleLines.empty())
        throw Error({.found = "found no face of three corners in the OBJ text",
                     .expected = "at least one",
                     .file = name});
}

// If the text has no normal after its first face, the new normals precede the faces. They must not
// change the numbers of others.
RepairedObj Repairer::finish() {
    const std::string lines = normals.lines();
    if (lines.empty()) return std::move(result);
    const std::string_view text = result.text;
    std::string whole;
    whole.reserve(text.size() + lines.size() + 1);
    whole += text.substr(0, normalsPlace);
    if (!whole.empty() && !whole.ends_with('\n')) whole += '\n';
    whole += lines;
    whole += text.substr(normalsPlace);
    result.text = std::move(whole);
    result.lineMap.insert(normalsLine, normals.addedCount());
    return std::move(result);
}

void Repairer::add(const ObjLogicalLine& logicalLine) {
    const std::uint64_t lastLineBeforeNormals = std::max(prescan.firstFaceLine - 1, prescan.lastNormalLine);
    const ObjLineKind kind = kindOf(logicalLine);
    if (logicalLine.lineEnd == "\r") result.repairs.note(ObjRepair::LineEnd, logicalLine.line);
    reader.countLine(kind);
    const std::size_t begin = result.text.size();
    addByKind(logicalLine, kind);
    mapLines(logicalLine, begin);
    if (logicalLine.line > lastLineBeforeNormals) return;
    normalsPlace = result.text.size();
    normalsLine = result.lineMap.lineCount() + 1;
}

void Repairer::addByKind(const ObjLogicalLine& logicalLine, ObjLineKind kind) {
    if (isVertexData(kind))
        addVertexData(logicalLine, kind);
    else if (kind == ObjLineKind::Face)
        addFace(logicalLine);
    else if (kind == ObjLineKind::Misread)
        addAsComment(logicalLine);
    else
        addOther(logicalLine);
}

// Continued lines that are unchanged keep their line feeds. All lines as which a line is rewritten,
// such as a comment and a face, have its number.
void Repairer::mapLines(const ObjLogicalLine& logicalLine, std::size_t begin) {
    const std::string_view added = std::string_view(result.text).substr(begin);
    const std::uint64_t lines = feedCount(added) + (added.empty() || added.ends_with('\n') ? 0 : 1);
    const bool isUnchanged = added.starts_with(logicalLine.text);
    for (std::uint64_t i = 0; i < lines; ++i)
        result.lineMap.append(isUnchanged ? logicalLine.line + i : logicalLine.line);
}

// Returns true if the library splits a line of data into the same words.
bool Repairer::isLayoutPlain(const ObjLogicalLine& logicalLine) {
    // The library also joins lines, if a line feed alone ends them.
    const bool isJoinedHere =
        logicalLine.isContinued &&
        (logicalLine.lineEnd.empty() || logicalLine.text.find('\r') != std::string_view::npos);
    if (isJoinedHere) result.repairs.note(ObjRepair::JoinedLine, logicalLine.line);
    const bool isUnusual = hasUnusualSpace(logicalLine.text);
    if (isUnusual) result.repairs.note(ObjRepair::OddSeparator, logicalLine.line);
    return !isJoinedHere && !isUnusual;
}

void Repairer::addVertexData(const ObjLogicalLine& logicalLine, ObjLineKind kind) {
    bool isPlain = isLayoutPlain(logicalLine);
    words = logicalLine.words;
    const std::size_t numberCount = kind == ObjLineKind::UV ? 2 : 3;
    for (std::size_t i = 1; i < words.size() && i <= numberCount; ++i) {
        if (numberFormOf(words[i]) != ObjNumberForm::WithPlusSign) continue;
        result.repairs.note(ObjRepair::PlusSign, logicalLine.line);
        words[i].remove_prefix(1);
        isPlain = false;
    }
    if (isPlain) return addUnchanged(logicalLine);
    addWords();
}

// Reads the corners of a face and returns true if they can stay unchanged.
bool Repairer::readCorners(const ObjLogicalLine& logicalLine) {
    corners.clear();
    vertices.clear();
    bool isPlain = true;
    for (std::size_t i = 1; i < logicalLine.words.size(); ++i) {
        corners.push_back(reader.read(logicalLine.words[i], logicalLine.line));
        vertices.push_back(corners.back().vertex);
        isPlain = isPlain && corners.back().isPlain;
    }
    return isPlain;
}

void Repairer::addFace(const ObjLogicalLine& logicalLine) {
    if (logicalLine.words.size() < 4) {
        result.repairs.note(ObjRepair::ShortFace, logicalLine.line);
        return addAsComment(logicalLine);
    }
    bool isPlain = isLayoutPlain(logicalLine);
    isPlain = readCorners(logicalLine) && isPlain;
    const std::vector<PolygonTriangle> triangles = triangulate(logicalLine.line);
    if (!logicalLine.comment.empty()) result.repairs.note(ObjRepair::TrailingComment, logicalLine.line);
    if (logicalLine.lineEnd.empty()) result.repairs.note(ObjRepair::FinalLineFeed, logicalLine.line);
    if (isPlain && triangles.empty() && logicalLine.comment.empty() && !logicalLine.lineEnd.empty())
        return addUnchanged(logicalLine);

    const bool needsNormal = std::any_of(corners.begin(), corners.end(),
                                         [](const ObjCornerIndices& corner) { return corner.normal == 0; });
    const std::uint64_t faceNormal = needsNormal ? normals.numberFor(vertices) : 0;
    if (!logicalLine.comment.empty()) addWithoutNul(logicalLine.comment) += '\n';
    if (triangles.empty()) {
        result.text += 'f';
        for (const ObjCornerIndices& corner : corners) addCorner(corner, faceNormal);
        result.text += '\n';
    }
    for (const PolygonTriangle& triangle : triangles) {
        result.text += 'f';
        for (const std::uint32_t corner : triangle) addCorner(corners[corner], faceNormal);
        result.text += '\n';
    }
}

void Repairer::addCorner(const ObjCornerIndices& corner, std::uint64_t faceNormal) {
    appendObjInteger(result.text += ' ', corner.vertex);
    result.text += '/';
    if (corner.uv != 0) appendObjInteger(result.text, corner.uv);
    appendObjInteger(result.text += '/', corner.normal != 0 ? corner.normal : faceNormal);
}

// Adds the lines of the triangles of a face. Returns the triangles if they differ from the fan.
std::vector<PolygonTriangle> Repairer::triangulate(std::uint64_t line) {
    const auto first = static_cast<std::uint32_t>(result.triangleLines.size());
    result.triangleLines.insert(result.triangleLines.end(), corners.size() - 2, line);
    if (corners.size() == 3) return {};
    positions.clear();
    for (const std::uint64_t vertex : vertices) {
        const auto& [x, y, z] = prescan.positions[vertex - 1];
        positions.emplace_back(x, y, z);
    }
    if (!isFanFolded(positions)) return {};
    std::vector<PolygonTriangle> triangles = clipEars(positions);
    (triangles.empty() ? result.selfIntersectingFaces : result.concaveFaces).push_back(first);
    if (!triangles.empty()) result.repairs.note(ObjRepair::ConcaveFace, line);
    return triangles;
}

void Repairer::addAsComment(const ObjLogicalLine& logicalLine) {
    if (kindOf(logicalLine) == ObjLineKind::Misread)
        result.repairs.note(ObjRepair::UnknownLine, logicalLine.line);
    result.text += "# ";
    words = logicalLine.words;
    addWords();
}

// A backslash at the end of a name or comment would join the next line to it, and a NUL would end
// it.
void Repairer::addOther(const ObjLogicalLine& logicalLine) {
    const bool hasNul = logicalLine.text.find('\0') != std::string_view::npos;
    const bool joins =
        logicalLine.text.ends_with('\\') && (logicalLine.lineEnd == "\n" || logicalLine.lineEnd == "\r");
    if (!joins && !hasNul) return addUnchanged(logicalLine);
    if (hasNul) result.repairs.note(ObjRepair::OddSeparator, logicalLine.line);
    if (joins) result.repairs.note(ObjRepair::FinalBackslash, logicalLine.line);
    addWithoutNul(logicalLine.text) += logicalLine.text.ends_with('\\') ? " \n" : "\n";
}

// The library reads a new line after a NUL.
std::string& Repairer::addWithoutNul(std::string_view text) {
    for (const char byte : text) result.text += byte == '\0' ? ' ' : byte;
    return result.text;
}

void Repairer::addUnchanged(const ObjLogicalLine& logicalLine) {
    result.text += logicalLine.text;
    result.text += logicalLine.lineEnd == "\r" ? "\n" : logicalLine.lineEnd;
}

void Repairer::addWords() {
    for (const std::string_view& word : words) {
        if (&word != &words.front()) result.text += ' ';
        result.text += word;
    }
    if (result.text.ends_with('\\')) result.text += ' ';
    result.text += '\n';
}

void refuseUTF16(const std::string& name, std::string_view text) {
    if (isMarkedUtf16(text))
        throw Error({.found = "found UTF-16 text", .expected = "an OBJ text in UTF-8", .file = name});
}

// Returns true if the library does not load a text that needs one of the repairs.
bool isRefused(const ObjRepairs& repairs) {
    constexpr std::array kRefused = {ObjRepair::FinalLineFeed, ObjRepair::ShortFace,
                                     ObjRepair::BadNormalReference, ObjRepair::MissingNormal};
    const auto tallies = repairs.tallies();
    return std::any_of(tallies.begin(), tallies.end(), [&](const ObjRepairs::Tally& tally) {
        return std::find(kRefused.begin(), kRefused.end(), tally.repair) != kRefused.end();
    });
}

bool hasValidReferences(const detail::ObjFace& face, const detail::ObjVertexData& data) {
    return std::all_of(face.begin(), face.end(), [&](const detail::ObjCorner& corner) {
        return detail::isObjIndexInRange(corner.vertex, data.vertices.size()) &&
               detail::isObjIndexInRange(corner.normal, data.normalCount);
    });
}

// Returns the data that the library reads from a text; nothing if it does not load the text.
std::optional<detail::ObjData> parseAsLibrary(std::string text) {
    OBJScreen::replaceNewLineEscapeSequencesWithBlanks(text);
    try {
        detail::ObjData objData = detail::parseObj(text);
        const bool isLoadable = std::all_of(
            objData.faces.begin(), objData.faces.end(),
            [&](const detail::ObjFace& face) { return hasValidReferences(face, objData.vertexData); });
        if (isLoadable) return objData;
    } catch (const std::bad_alloc&) {
        // A NUL ends a face line.
    }
    return {};
}

std::optional<std::array<float, 2>> uvOf(const detail::ObjData& objData, const detail::ObjCorner& corner) {
    const auto& uvs = objData.vertexData.textureCoordinates;
    if (!detail::isObjIndexInRange(corner.textureCoordinate, uvs.size())) return {};
    return uvs[static_cast<std::size_t>(corner.textureCoordinate)];
}

const std::array<float, 3>& positionAt(const detail::ObjData& objData, const detail::ObjCorner& corner) {
    return objData.vertexData.vertices[static_cast<std::size_t>(corner.vertex)];
}

// Returns true if the triangles have the same positions and UVs in the same order.
bool areSameMesh(const detail::ObjData& a, const detail::ObjData& b) {
    const auto isSameCorner = [&](const detail::ObjCorner& ofA, const detail::ObjCorner& ofB) {
        return positionAt(a, ofA) == positionAt(b, ofB) && uvOf(a, ofA) == uvOf(b, ofB);
    };
    return std::equal(a.faces.begin(), a.faces.end(), b.faces.begin(), b.faces.end(),
                      [&](const detail::ObjFace& ofA, const detail::ObjFace& ofB) {
                          return std::equal(ofA.begin(), ofA.end(), ofB.begin(), isSameCorner);
                      });
}

// Undoes the repairs if the library reads the original text as the same mesh.
void restoreIfSame(const std::string& original, RepairedObj& repaired) {
    auto originalData = parseAsLibrary(original);
    if (!originalData) return;
    repaired.objData = parseAsLibrary(repaired.text);
    if (!repaired.objData || !areSameMesh(*originalData, *repaired.objData)) return;
    repaired.objData = std::move(originalData);
    repaired.text = original;
    repaired.repairs = {};
    repaired.lineMap = {};
}

}  // namespace

RepairedObj repairObj(const std::string& name, const std::string& text) {
    std::string_view objText = text;
    // Programs that join files leave several marks.
    while (objText.starts_with(kUtf8Mark)) objText.remove_prefix(kUtf8Mark.size());
    const bool hasMark = objText.size() != text.size();
    refuseUTF16(name, objText);
    RepairedObj result = Repairer(name, objText).finish();
    if (hasMark) result.repairs.note(ObjRepair::ByteOrderMark, 1);
    if (result.text != text && !isRefused(result.repairs)) restoreIfSame(text, result);
    return result;
}

std::optional<Notice> selfIntersectionNotice(const std::string& name, const RepairedObj& obj) {
    const std::vector<std::uint32_t>& faces = obj.selfIntersectingFaces;
    if (faces.empty()) return {};
    return Notice{.level = NoticeLevel::Warning,
                  .text = "found " + selfIntersectionText(faces.size()),
                  .file = name,
                  .line = obj.triangleLines[faces.front()]};
}

}  // namespace quarn
