#include "Reports/MeshInfo.h"

#include <algorithm>
#include <limits>
#include <optional>

#include <QuarnKit/Base/Bounds.h>
#include <QuarnKit/Base/PrintableText.h>
#include <QuarnKit/Formats/MeshStatus.h>
#include <QuarnKit/Formats/Obj/ObjIgnoredLines.h>
#include <QuarnScreen/MeshScreen.h>

#include "Base/Diagnostics.h"

namespace quarn::tool {

namespace {

struct Facts {
    MeshStatus status;
    std::uint64_t triangles = 0;
    Point<double, 3> centroid;
    std::optional<Bounds<2>> uvRange;  // of the corners that have a UV
    std::uint64_t boundaryPointCount = 0;
};

std::optional<Bounds<2>> uvRangeOf(const std::vector<Triangle>& triangles) {
    Bounds<2> range;
    for (const Triangle& triangle : triangles)
        for (const TriangleVertex& corner : triangle.vertices)
            if (corner.uv != kNoUV) range.include(corner.uv);
    if (range.isEmpty()) return std::nullopt;
    return range;
}

// The boundary repeats its first position as its last.
std::uint64_t boundaryPointCountOf(const IScreenGeometry& geometry) {
    IScreenGeometry::Polylines boundary;
    geometry.sampleBoundary(boundary);
    if (boundary.empty() || boundary.front().empty()) return 0;
    const auto& points = boundary.front();
    return points.size() - (points.size() > 1 && points.front() == points.back() ? 1 : 0);
}

Facts factsOf(const Screen& screen) {
    const auto& mesh = dynamic_cast<const MeshScreen&>(*screen.geometry);
    std::vector<Triangle> triangles;
    mesh.getTesselation(triangles);
    Facts facts;
    facts.status = meshStatusOf(mesh, *screen.mesh);
    facts.triangles = triangles.size();
    facts.centroid = mesh.getCentroid();
    facts.uvRange = uvRangeOf(triangles);
    facts.boundaryPointCount = boundaryPointCountOf(mesh);
    return facts;
}

// Statements of an OBJ text without effect: name in JSON, words for people.
struct Ignored {
    const char* name;
    const char* words;
    std::uint64_t count;
};

std::vector<Ignored> ignoredIn(const ObjSourceText& text) {
    const ObjIgnoredLines ignored = countIgnoredLines(text);
    return {{"materials", "materials (usemtl)", ignored.materials},
            {"materialLibraries", "material libraries (mtllib)", ignored.materialLibraries},
            {"groups", "groups (g)", ignored.groups},
            {"objects", "objects (o)", ignored.objects},
            {"smoothing", "smoothing groups (s)", ignored.smoothing},
            {"colors", "colors after v", ignored.colors},
            {"weights", "weights after v", ignored.weights},
            {"thirdUVs", "third values of vt", ignored.thirdUVs},
            {"otherLines", "other lines", ignored.otherLines}};
}

std::string ignoredText(const ObjSourceText& objText) {
    std::string text;
    for (const Ignored& ignored : ignoredIn(objText))
        if (ignored.count > 0)
            text += (text.empty() ? "" : ", ") + std::to_string(ignored.count) + " " + ignored.words;
    return text.empty() ? "nothing" : text;
}

Json jsonRepairs(const std::vector<MeshRepair>& repairs) {
    Json list = Json::array();
    for (const MeshRepair& repair : repairs)
        list.append(Json::object({{"name", repair.name},
                                  {"count", repair.count},
                                  {"line", repair.line == 0 ? Json() : Json(repair.line)},
                                  {"text", repair.text}}));
    return list;
}

template <std::size_t N, class Indices>
Json jsonNumbers(const Point<double, N, Indices>& point) {
    Json numbers = Json::array();
    for (std::size_t i = 0; i < N; ++i) numbers.append(point[i]);
    return numbers;
}

Json jsonRange(const Bounds<2>& range) {
    return Json::object({{"min", jsonNumbers(range.min)}, {"max", jsonNumbers(range.max)}});
}

}  // namespace

Json jsonMesh(const Screen& screen, const SurfaceMeasures& surface) {
    const MeshSource& source = *screen.mesh;
    const Facts facts = factsOf(screen);
    Json ignoredCounts = Json::object();
    for (const Ignored& ignored : ignoredIn(source.text)) ignoredCounts.set(ignored.name, ignored.count);
    return Json::object({{"status", facts.status.word},
                         {"statusText", facts.status.text},
                         {"forward", source.frame.forward},
                         {"up", source.frame.upward},
                         {"scale", source.frame.scale},
                         {"triangles", facts.triangles},
                         {"area", surface.area},
                         {"centroid", jsonNumbers(facts.centroid)},
                         {"uvRange", facts.uvRange ? jsonRange(*facts.uvRange) : Json()},
                         {"boundaryPoints", facts.boundaryPointCount},
                         {"ignored", ignoredCounts},
                         {"repairs", jsonRepairs(screen.repairs)}});
}

void addMeshLines(const Screen& screen, const SurfaceMeasures& surface, const RoundedNumbers& numbers,
                  AlignedText& lines) {
    const MeshSource& source = *screen.mesh;
    const Facts facts = factsOf(screen);
    lines.add("status", facts.status.text);
    // STL files have no axes, and nothing in them is ignored.
    const bool isObj = !source.text.name.empty();
    if (isObj)
        lines.add("frame", "forward " + printable(source.frame.forward) + ", up " +
                               printable(source.frame.upward) + ", scale " +
                               numbers.number(source.frame.scale));
    lines.add("triangles", std::to_string(facts.triangles));
    lines.add("centroid", numbers.position(facts.centroid));
    lines.add("UV range", facts.uvRange
                              ? numbers.point(facts.uvRange->min) + " to " + numbers.point(facts.uvRange->max)
                              : "none");
    lines.add("boundary points", std::to_string(facts.boundaryPointCount));
    lines.add("boundary length", numbers.length(surface.boundaryLength.value_or(0.0)));
    if (isObj) lines.add("ignored", ignoredText(source.text));
}

}  // namespace quarn::tool
