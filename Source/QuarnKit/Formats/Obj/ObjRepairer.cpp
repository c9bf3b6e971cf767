#include "ObjRepairer.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <QuarnKit/Base/ByteOrderMarks.h>

#include "Base/ToolError.h"
#include "ObjCornerReader.h"
#include "ObjFaceNormals.h"
#include "ObjLogicalLines.h"
#include "ObjPrescan.h"
#include "ObjSameMesh.h"

namespace quarn {

namespace {

bool isVertexData(ObjLineKind kind) {
    return kind == ObjLineKind::Vertex || kind == ObjLineKind::UV || kind == ObjLineKind::Normal;
}

bool hasOddSpace(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char byte) { return byte != ' ' && isObjSpace(byte); });
}

class Mender {
public:
    Mender(const std::string& name, std::string_view given);

    MendedObj finish();

private:
    void add(const ObjRecord& record);
    void addVertexData(const ObjRecord& record, ObjLineKind kind);
    void addFace(const ObjRecord& record);
    void addAsComment(const ObjRecord& record);
    void addOther(const ObjRecord& record);
    void addAsItIs(const ObjRecord& record);
    std::string& addWithoutNul(std::string_view text);
    void addWords();
    void addTriangles(std::size_t cornerCount, std::uint64_t line);
    [[nodiscard]] bool isLayoutPlain(const ObjRecord& record);
    [[nodiscard]] bool takeCorners(const ObjRecord& record);

    MendedObj mended;
    ObjSurvey survey;
    ObjCornerReader reader;
    ObjFaceNormals normals;
    std::vector<std::string_view> words;
    std::vector<CornerNumbers> corners;
    std::vector<std::uint64_t> vertices;
    std::size_t normalsPlace = 0;
};

Mender::Mender(const std::string& name, std::string_view given)
    : survey(surveyObj(name, given)),
      reader(name, survey, mended.repairs),
      normals(survey.positions, survey.normalCount) {
    mended.text.reserve(given.size() + given.size() / 8);
    ObjRecords records(given);
    for (ObjRecord record; records.next(record);) add(record);
    if (mended.triangleLines.empty())
        throw ToolError{.found = "found no face of three corners in the OBJ text",
                        .expected = "one at least",
                        .file = name};
}

// Normals go before the faces where the text has none behind its first face, as they may not change the numbers of others.
MendedObj Mender::finish() {
    const std::string lines = normals.lines();
    if (!lines.empty()) {
        const bool isLineOpen = normalsPlace > 0 && mended.text[normalsPlace - 1] != '\n';
        mended.text.insert(normalsPlace, (isLineOpen ? "\n" : "") + lines);
    }
    return std::move(mended);
}

void Mender::add(const ObjRecord& record) {
    const std::uint64_t normalsBehind = std::max(survey.firstFaceLine - 1, survey.lastNormalLine);
    const ObjLineKind kind = kindOf(record);
    if (record.lineEnd == "\r") mended.repairs.note(ObjRepair::LineEnd, record.line);
    reader.pass(kind);
    if (isVertexData(kind))
        addVertexData(record, kind);
    else if (kind == ObjLineKind::Face)
        addFace(record);
    else if (kind == ObjLineKind::Misread)
        addAsComment(record);
    else
        addOther(record);
    if (record.line <= normalsBehind) normalsPlace = mended.text.size();
}

// Whether the library sees the words of a line of data as they are.
bool Mender::isLayoutPlain(const ObjRecord& record) {
    // It joins lines too, where a line feed alone ends them.
    const bool isJoinedHere =
        record.isContinued && (record.lineEnd.empty() || record.text.find('\r') != std::string_view::npos);
    if (isJoinedHere) mended.repairs.note(ObjRepair::JoinedLine, record.line);
    const bool isOdd = hasOddSpace(record.text);
    if (isOdd) mended.repairs.note(ObjRepair::OddSeparator, record.line);
    return !isJoinedHere && !isOdd;
}

void Mender::addVertexData(const ObjRecord& record, ObjLineKind kind) {
    bool isPlain = isLayoutPlain(record);
    words = record.words;
    const std::size_t numberCount = kind == ObjLineKind::UV ? 2 : 3;
    for (std::size_t i = 1; i < words.size() && i <= numberCount; ++i) {
        if (numberFormOf(words[i]) != ObjNumberForm::WithPlusSign) continue;
        mended.repairs.note(ObjRepair::PlusSign, record.line);
        words[i].remove_prefix(1);
        isPlain = false;
    }
    if (isPlain) return addAsItIs(record);
    addWords();
}

// Reads the corners of a face and tells whether they can stay as they are.
bool Mender::takeCorners(const ObjRecord& record) {
    corners.clear();
    vertices.clear();
    bool isPlain = true;
    for (std::size_t i = 1; i < record.words.size(); ++i) {
        corners.push_back(reader.read(record.words[i], record.line));
        vertices.push_back(corners.back().vertex);
        isPlain = isPlain && corners.back().isPlain;
    }
    return isPlain;
}

void Mender::addFace(const ObjRecord& record) {
    if (record.words.size() < 4) {
        mended.repairs.note(ObjRepair::ShortFace, record.line);
        return addAsComment(record);
    }
    bool isPlain = isLayoutPlain(record);
    isPlain = takeCorners(record) && isPlain;
    addTriangles(corners.size(), record.line);
    if (!record.comment.empty()) mended.repairs.note(ObjRepair::TrailingComment, record.line);
    if (record.lineEnd.empty()) mended.repairs.note(ObjRepair::FinalLineFeed, record.line);
    if (isPlain && record.comment.empty() && !record.lineEnd.empty()) return addAsItIs(record);

    const bool needsNormal = std::any_of(corners.begin(), corners.end(),
                                         [](const CornerNumbers& corner) { return corner.normal == 0; });
    const std::uint64_t faceNormal = needsNormal ? normals.numberFor(vertices) : 0;
    if (!record.comment.empty()) addWithoutNul(record.comment) += '\n';
    mended.text += 'f';
    for (const CornerNumbers& corner : corners) {
        mended.text += ' ' + std::to_string(corner.vertex) + '/';
        if (corner.uv != 0) mended.text += std::to_string(corner.uv);
        mended.text += '/' + std::to_string(corner.normal != 0 ? corner.normal : faceNormal);
    }
    mended.text += '\n';
}

void Mender::addTriangles(std::size_t cornerCount, std::uint64_t line) {
    mended.triangleLines.insert(mended.triangleLines.end(), cornerCount - 2, line);
}

void Mender::addAsComment(const ObjRecord& record) {
    if (kindOf(record) == ObjLineKind::Misread) mended.repairs.note(ObjRepair::UnknownLine, record.line);
    mended.text += "# ";
    words = record.words;
    addWords();
}

// A backslash at the end of a name or comment would join the next line to it, and a NUL would end it.
void Mender::addOther(const ObjRecord& record) {
    const bool hasNul = record.text.find('\0') != std::string_view::npos;
    const bool joins = record.text.ends_with('\\') && (record.lineEnd == "\n" || record.lineEnd == "\r");
    if (!joins && !hasNul) return addAsItIs(record);
    if (hasNul) mended.repairs.note(ObjRepair::OddSeparator, record.line);
    if (joins) mended.repairs.note(ObjRepair::FinalBackslash, record.line);
    addWithoutNul(record.text) += record.text.ends_with('\\') ? " \n" : "\n";
}

// The library takes what follows a NUL for a line of its own.
std::string& Mender::addWithoutNul(std::string_view text) {
    for (const char byte : text) mended.text += byte == '\0' ? ' ' : byte;
    return mended.text;
}

void Mender::addAsItIs(const ObjRecord& record) {
    mended.text += record.text;
    mended.text += record.lineEnd == "\r" ? "\n" : record.lineEnd;
}

void Mender::addWords() {
    for (const std::string_view& word : words) {
        if (&word != &words.front()) mended.text += ' ';
        mended.text += word;
    }
    if (mended.text.ends_with('\\')) mended.text += ' ';
    mended.text += '\n';
}

void refuseUTF16(const std::string& name, const std::string& text) {
    if (isMarkedUtf16(text))
        throw ToolError{.found = "found UTF-16 text", .expected = "an OBJ text in UTF-8", .file = name};
}

// Whether the library does not load a text with such a fault at all.
bool isRefused(const ObjRepairs& repairs) {
    constexpr std::array kRefused = {ObjRepair::FinalLineFeed, ObjRepair::ShortFace,
                                     ObjRepair::BadNormalReference, ObjRepair::MissingNormal};
    const auto tallies = repairs.tallies();
    return std::any_of(tallies.begin(), tallies.end(), [&](const ObjRepairs::Tally& tally) {
        return std::find(kRefused.begin(), kRefused.end(), tally.repair) != kRefused.end();
    });
}

}  // namespace

MendedObj mendObj(const std::string& name, const std::string& text) {
    refuseUTF16(name, text);
    std::string_view given = text;
    const bool hasMark = given.starts_with(kUtf8Mark);
    if (hasMark) given.remove_prefix(kUtf8Mark.size());
    MendedObj mended = Mender(name, given).finish();
    if (hasMark) mended.repairs.note(ObjRepair::ByteOrderMark, 1);
    if (mended.text != text && !isRefused(mended.repairs) && areSameMesh(text, mended.text)) {
        mended.text = text;
        mended.repairs = {};
    }
    return mended;
}

}  // namespace quarn
