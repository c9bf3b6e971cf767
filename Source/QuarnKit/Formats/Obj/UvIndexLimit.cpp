#include "UvIndexLimit.h"

#include <future>
#include <string>

#include <QuarnKit/Base/MemoryLimit.h>
#include <QuarnKit/Mesh/UvOverlap.h>
#include <QuarnScreen/Detail/Obj/ObjFaceScan.h>
#include <QuarnScreen/Detail/Obj/ObjVertexScan.h>

#include "Base/ShellQuote.h"
#include "Base/ToolError.h"

namespace quarn {

namespace {

TriangleUVs uvsOf(const ObjFace& face, const ObjVertexData& data) {
    TriangleUVs uvs;
    for (std::size_t i = 0; i < face.size(); ++i) {
        // A negative index becomes larger than any count.
        const auto index = static_cast<std::size_t>(face[i].textureCoordinate);
        uvs[i] = kNoUV;
        if (index < data.textureCoordinates.size())
            uvs[i] = {data.textureCoordinates[index][0], data.textureCoordinates[index][1]};
    }
    return uvs;
}

std::vector<TriangleUVs> uvsOf(const ObjText& text) {
    ObjLists lists;
    auto faces = std::async(std::launch::async, [&] { scanFaces(text.text, lists.faces); });
    scanVertexData(text.text, lists.vertexData);
    faces.get();
    std::vector<TriangleUVs> uvs;
    uvs.reserve(lists.faces.size());
    for (const ObjFace& face : lists.faces) uvs.push_back(uvsOf(face, lists.vertexData));
    return uvs;
}

std::string overlapText(const std::vector<TriangleUVs>& uvs) {
    const UvOverlaps overlaps = findUvOverlaps(uvs);
    return (overlaps.isWhole ? "" : "at least ") + std::to_string(overlaps.triangles.size()) + " of " +
           std::to_string(uvs.size()) + " triangles overlap others in UV";
}

}  // namespace

RegionMapGrowth uvIndexGrowth(const std::vector<RegionRect>& boxes) {
    if (isRegionMapSurelySmall(boxes)) return {};
    return countRegionMap(boxes, reasonableRegionMapSteps(boxes.size()));
}

void refuseLargeUvIndex(const std::string& file, const ObjText& text, const ObjContents& contents,
                        std::uint64_t maxMemory) {
    if (contents.uvs == 0) return;
    const std::vector<TriangleUVs> uvs = uvsOf(text);
    const RegionMapGrowth growth = uvIndexGrowth(uvBoxesOf(uvs));
    const std::uint64_t need = meshMemory(text.text.size(), contents.triangles) + growth.memory();
    if (growth.isWhole && need <= maxMemory) return;
    const std::string trouble = growth.isWhole ? "would need " + memorySizeText(need) +
                                                     " of memory and not " + memorySizeText(maxMemory)
                                               : "would take too long to build";
    throw ToolError{.found = "found a mesh whose index by UV " + trouble + ": " + overlapText(uvs),
                    .expected = "a UV map without overlaps (see: quarnscreen check " + shellWord(file) + ")",
                    .file = text.name};
}

}  // namespace quarn
