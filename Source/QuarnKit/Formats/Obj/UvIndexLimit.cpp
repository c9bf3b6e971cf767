#include "UvIndexLimit.h"

#include <future>
#include <string>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/MemoryLimit.h>
#include <QuarnKit/Mesh/UvOverlap.h>
#include <QuarnScreen/Detail/Obj/ObjFaceScan.h>
#include <QuarnScreen/Detail/Obj/ObjVertexScan.h>

namespace quarn {

namespace {

TriangleUVs uvsOf(const detail::ObjFace& face, const detail::ObjVertexData& data) {
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
    detail::ObjData objData;
    auto faces = std::async(std::launch::async, [&] { detail::scanFaces(text.text, objData.faces); });
    detail::scanVertexData(text.text, objData.vertexData);
    faces.get();
    std::vector<TriangleUVs> uvs;
    uvs.reserve(objData.faces.size());
    for (const detail::ObjFace& face : objData.faces) uvs.push_back(uvsOf(face, objData.vertexData));
    return uvs;
}

std::string overlapText(const std::vector<TriangleUVs>& uvs) {
    const UvOverlaps overlaps = findUvOverlaps(uvs);
    return (overlaps.isComplete ? "" : "at least ") + std::to_string(overlaps.triangles.size()) + " of " +
           std::to_string(uvs.size()) + " triangles overlap others in UV";
}

}  // namespace

detail::RegionMapEstimate estimateUvIndex(const std::vector<RegionRect>& boxes) {
    if (detail::isRegionMapSizeBounded(boxes)) return {};
    return detail::countRegionMap(boxes, detail::reasonableRegionMapSteps(boxes.size()));
}

void refuseLargeUvIndex(const std::string& file, const ObjText& text, const ObjCounts& counts,
                        std::uint64_t maxMemory) {
    if (counts.uvs == 0) return;
    const std::vector<TriangleUVs> uvs = uvsOf(text);
    const detail::RegionMapEstimate estimate = estimateUvIndex(detail::uvBoxesOf(uvs));
    const std::uint64_t need = meshMemory(text.text.size(), counts.triangles) + estimate.memory();
    if (estimate.isWhole && need <= maxMemory) return;
    const std::string problem = estimate.isWhole ? "would need " + memorySizeText(need) +
                                                       " of memory and not " + memorySizeText(maxMemory)
                                                 : "would take too long to build";
    throw Error({.found = "found a mesh whose index by UV " + problem + ": " + overlapText(uvs),
                 .expected = "a UV map without overlaps",
                 .file = text.name,
                 .remedy = {.kind = RemedyKind::CheckMesh, .file = file}});
}

}  // namespace quarn
