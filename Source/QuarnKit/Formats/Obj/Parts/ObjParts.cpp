#include "ObjParts.h"

#include <algorithm>
#include <limits>
#include <map>

#include <QuarnKit/Base/ByteOrderMarks.h>
#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Formats/Obj/Repair/ObjCornerReader.h>

#include "ObjPartNames.h"

namespace quarn {

namespace {

// Bounds of the memory and the time for a text that is made to exceed them.
constexpr std::size_t kMaxParts = 1000000;
constexpr std::size_t kMaxGroupsOfFace = 256;

class PartLister {
public:
    explicit PartLister(std::string objName) : name(std::move(objName)) {}

    void add(const ObjLogicalLine& logicalLine);
    [[nodiscard]] std::vector<ObjPart> finish();

private:
    // The faces between two lines "o" or "g" belong to the same parts.
    struct Section {
        std::vector<std::size_t> parts;
        std::vector<std::uint32_t> vertices;  // numbers from 1; 0 for none
    };

    void beginSection(std::uint64_t line);
    std::size_t partOf(ObjPartKind kind, std::string_view partName, std::uint64_t line);
    void addFace(const ObjLogicalLine& logicalLine);
    void countVertices();

    std::string name;
    ObjPartNames names;
    std::map<std::pair<ObjPartKind, std::string>, std::size_t, std::less<>> indexes;
    std::vector<ObjPart> parts;
    std::vector<Section> sections;
    std::vector<std::size_t> current;  // parts of the next face
    bool isSectionOpen = false;
    std::uint64_t vertexCount = 0;
};

void PartLister::add(const ObjLogicalLine& logicalLine) {
    if (names.read(logicalLine)) return beginSection(logicalLine.line);
    if (kindOf(logicalLine) == ObjLineKind::Vertex) ++vertexCount;
    if (isObjFaceLine(logicalLine)) addFace(logicalLine);
}

void PartLister::beginSection(std::uint64_t line) {
    if (names.groups().size() > kMaxGroupsOfFace)
        throw Error({.found = "found " + std::to_string(names.groups().size()) + " groups in one line",
                     .expected = "at most " + std::to_string(kMaxGroupsOfFace),
                     .file = name,
                     .line = line});
    isSectionOpen = false;
    current.clear();
    if (!names.object().empty()) current.push_back(partOf(ObjPartKind::Object, names.object(), line));
    // The default group is listed only if it has a face.
    if (names.object().empty() && names.groups() == std::vector{kDefaultObjGroup}) return;
    for (const std::string_view group : names.groups())
        current.push_back(partOf(ObjPartKind::Group, group, line));
    std::sort(current.begin(), current.end());
    current.erase(std::unique(current.begin(), current.end()), current.end());
}

std::size_t PartLister::partOf(ObjPartKind kind, std::string_view partName, std::uint64_t line) {
    const auto [place, isNew] = indexes.try_emplace({kind, std::string(partName)}, parts.size());
    if (!isNew) return place->second;
    if (parts.size() == kMaxParts)
        throw Error({.found = "found more than " + std::to_string(kMaxParts) + " objects and groups",
                     .expected = "fewer",
                     .file = name,
                     .line = line});
    parts.push_back({.kind = kind, .name = std::string(partName), .line = line});
    return place->second;
}

void PartLister::addFace(const ObjLogicalLine& logicalLine) {
    if (current.empty()) current.push_back(partOf(ObjPartKind::Group, kDefaultObjGroup, logicalLine.line));
    if (!isSectionOpen) sections.push_back({.parts = current, .vertices = {}});
    isSectionOpen = true;
    for (const std::size_t part : current) ++parts[part].faces;
    for (std::size_t i = 1; i < logicalLine.words.size(); ++i) {
        const std::uint64_t vertex = vertexNumberOf(logicalLine.words[i], vertexCount);
        const bool exists = vertex <= std::numeric_limits<std::uint32_t>::max();
        sections.back().vertices.push_back(exists ? static_cast<std::uint32_t>(vertex) : 0);
    }
}

void PartLister::countVertices() {
    std::vector<std::vector<const Section*>> sectionsOf(parts.size());
    for (const Section& section : sections)
        for (const std::size_t part : section.parts) sectionsOf[part].push_back(&section);
    // The last part that counted each vertex.
    std::vector<std::size_t> lastPart(vertexCount + 1, parts.size());
    for (std::size_t part = 0; part < parts.size(); ++part)
        for (const Section* const section : sectionsOf[part])
            for (const std::uint32_t vertex : section->vertices) {
                if (vertex == 0 || vertex > vertexCount || lastPart[vertex] == part) continue;
                lastPart[vertex] = part;
                ++parts[part].vertices;
            }
}

std::vector<ObjPart> PartLister::finish() {
    if (parts.empty())
        throw Error({.found = "found no face, object or group in the OBJ text",
                     .expected = R"(lines that begin with "f", "o" or "g")",
                     .file = name});
    countVertices();
    return std::move(parts);
}

}  // namespace

std::vector<ObjPart> listObjParts(const std::string& name, std::string_view text) {
    PartLister lister(name);
    ObjLogicalLines logicalLines(withoutUtf8Mark(text));
    for (ObjLogicalLine logicalLine; logicalLines.next(logicalLine);) lister.add(logicalLine);
    return lister.finish();
}

}  // namespace quarn
