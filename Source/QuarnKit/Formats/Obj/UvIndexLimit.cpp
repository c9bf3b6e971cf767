#include "UvIndexLimit.h"

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Base/MemoryLimit.h>
#include <QuarnKit/Mesh/UvOverlap.h>

#include "MeshMemory.h"

namespace quarn {

namespace {

TriangleUVs uvsOf(const detail::ObjFace& face, const detail::ObjVertexData& data) {
    TriangleUVs uvs;
    for (std::size_t i = 0; i < face.size(); ++i) {
        const std::int32_t index = face[i].textureCoordinate;
        uvs[i] = kNoUV;
        if (!detail::isObjIndexInRange(index, data.textureCoordinates.size())) continue;
        const auto& [u, v] = data.textureCoordinates[static_cast<std::size_t>(index)];
        uvs[i] = {u, v};
    }
    return uvs;
}

std::vector<TriangleUVs> uvsOf(const detail::ObjData& objData) {
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

void refuseLargeUvIndex(const std::string& file, const ObjSourceText& text, const detail::ObjData& objData,
                        std::uint64_t maxMemory) {
    if (objData.vertexData.textureCoordinates.empty()) return;
    const std::vector<TriangleUVs> uvs = uvsOf(objData);
    const detail::RegionMapEstimate estimate = estimateUvIndex(detail::uvBoxesOf(uvs));
    const std::uint64_t need =
        meshMemoryOf({.textBytes = text.text.size(), .triangles = uvs.size()}) + estimate.memory();
    if (estimate.isWhole && need <= maxMemory) return;
    const std::string problem = estimate.isWhole ? "would need " + memorySizeText(need) +
                                                       " of memory and not " + memorySizeText(maxMemory)
                                                 : "would take too long to build";
    throw Error({.found = "found a mesh whose UV index " + problem + ": " + overlapText(uvs),
                 .expected = "a UV map without overlaps",
                 .file = text.name,
                 .remedy = {.kind = RemedyKind::CheckMesh, .file = file}});
}

}  // namespace quarn
