#include "ObjCompaction.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include <QuarnKit/Base/ByteOrderMarks.h>
#include <QuarnKit/Formats/Obj/Repair/ObjCornerReader.h>

namespace quarn {

namespace {

// The lines of one kind: which ones faces refer to, and their new numbers.
class UsedLines {
public:
    void use(std::uint64_t number) {
        if (number == 0) return;
        if (number >= newNumbers.size()) newNumbers.resize(number + 1);
        newNumbers[number] = 1;
    }

    void assignNumbers() {
        std::uint64_t last = 0;
        for (std::uint64_t& number : newNumbers)
            if (number != 0) number = ++last;
    }

    // Returns 0 for a line that is not used.
    [[nodiscard]] std::uint64_t newNumber(std::uint64_t number) const {
        return number < newNumbers.size() ? newNumbers[number] : 0;
    }

private:
    std::vector<std::uint64_t> newNumbers;
};

class Compactor {
public:
    explicit Compactor(const ObjSource& objSource)
        : source(objSource), prescan(prescanObj(objSource.name, withoutUtf8Mark(objSource.text))) {}

    void findUsed();
    void write();
    // Returns the written text and its lines.
    [[nodiscard]] std::pair<std::string, ObjLineMap> take() { return {std::move(text), std::move(lineMap)}; }

private:
    void addData(const ObjLogicalLine& logicalLine, std::uint64_t newNumber);
    void addFace(const ObjLogicalLine& logicalLine, ObjCornerReader& reader);
    void addOther(const ObjLogicalLine& logicalLine);
    void addLine(std::string line, std::uint64_t sourceLine);

    // A line before the faces that names or paints them.
    struct Heading {
        std::string_view keyword;
        std::string_view text;
        std::uint64_t line;
    };

    const ObjSource& source;
    ObjPrescan prescan;
    ObjRepairs ignoredRepairs;
    UsedLines vertices;
    UsedLines uvs;
    UsedLines normals;
    std::vector<Heading> headings;  // since the last face
    std::string text;
    ObjLineMap lineMap;
};

void Compactor::findUsed() {
    ObjCornerReader reader(source.name, prescan, ignoredRepairs);
    ObjLogicalLines logicalLines(withoutUtf8Mark(source.text));
    for (ObjLogicalLine logicalLine; logicalLines.next(logicalLine);) {
        const ObjLineKind kind = kindOf(logicalLine);
        reader.countLine(kind);
        if (kind != ObjLineKind::Face) continue;
        for (std::size_t i = 1; i < logicalLine.words.size(); ++i) {
            const ObjCornerIndices corner = reader.read(logicalLine.words[i], logicalLine.line);
            vertices.use(corner.vertex);
            uvs.use(corner.uv);
            normals.use(corner.normal);
        }
    }
    for (UsedLines* const lines : {&vertices, &uvs, &normals}) lines->assignNumbers();
}

void Compactor::write() {
    ObjCornerReader reader(source.name, prescan, ignoredRepairs);
    std::array<std::uint64_t, 3> counts{};
    ObjLogicalLines logicalLines(withoutUtf8Mark(source.text));
    for (ObjLogicalLine logicalLine; logicalLines.next(logicalLine);) {
        const ObjLineKind kind = kindOf(logicalLine);
        reader.countLine(kind);
        if (kind == ObjLineKind::Vertex) addData(logicalLine, vertices.newNumber(++counts[0]));
        if (kind == ObjLineKind::UV) addData(logicalLine, uvs.newNumber(++counts[1]));
        if (kind == ObjLineKind::Normal) addData(logicalLine, normals.newNumber(++counts[2]));
        if (kind == ObjLineKind::Face) addFace(logicalLine, reader);
        if (kind == ObjLineKind::Other) addOther(logicalLine);
    }
}

void Compactor::addData(const ObjLogicalLine& logicalLine, std::uint64_t newNumber) {
    if (newNumber == 0) return;
    std::string line(logicalLine.words.front());
    for (std::size_t i = 1; i < logicalLine.words.size(); ++i)
        line.append(1, ' ').append(logicalLine.words[i]);
    addLine(std::move(line), logicalLine.line);
}

void Compactor::addFace(const ObjLogicalLine& logicalLine, ObjCornerReader& reader) {
    for (const Heading& heading : headings) addLine(std::string(heading.text), heading.line);
    headings.clear();
    std::string line = "f";
    for (std::size_t i = 1; i < logicalLine.words.size(); ++i) {
        const ObjCornerIndices corner = reader.read(logicalLine.words[i], logicalLine.line);
        line += ' ' + std::to_string(vertices.newNumber(corner.vertex)) + '/';
        if (corner.uv != 0) line += std::to_string(uvs.newNumber(corner.uv));
        line += '/' + std::to_string(normals.newNumber(corner.normal));
    }
    addLine(std::move(line), logicalLine.line);
}

void Compactor::addOther(const ObjLogicalLine& logicalLine) {
    if (logicalLine.words.empty()) return;
    const std::string_view keyword = logicalLine.words.front();
    if (keyword == "mtllib") addLine(std::string(logicalLine.text), logicalLine.line);
    constexpr std::array<std::string_view, 4> kHeadings = {"o", "g", "usemtl", "s"};
    const auto* const place = std::find(kHeadings.begin(), kHeadings.end(), keyword);
    if (place == kHeadings.end()) return;
    std::erase_if(headings, [&](const Heading& heading) { return heading.keyword == *place; });
    headings.push_back({.keyword = *place, .text = logicalLine.text, .line = logicalLine.line});
}

// A backslash at the end would join the next line, and a NUL would end a line.
void Compactor::addLine(std::string line, std::uint64_t sourceLine) {
    std::replace(line.begin(), line.end(), '\0', ' ');
    if (line.ends_with('\\')) line += ' ';
    text.append(line) += '\n';
    lineMap.append(source.lineMap.originalOf(sourceLine));
}

}  // namespace

void removeUnusedObjData(ObjSource& source) {
    Compactor compactor(source);
    compactor.findUsed();
    compactor.write();
    std::tie(source.text, source.lineMap) = compactor.take();
}

}  // namespace quarn
