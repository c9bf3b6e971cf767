#include "MeshStatus.h"

#include <QuarnKit/Formats/Obj/ObjReferences.h>

namespace quarn {

namespace {

constexpr const char* kNoUVWorks = "; rays, normals, closest positions and the boundary work; UV does not";

std::string atLine(std::uint64_t line) {
    return line == 0 ? std::string() : " at line " + std::to_string(line);
}

std::string missingUVText(const MeshSource& source) {
    if (source.counts.uvs == 0) return "the file has no vt line";
    return "a face has a corner without UV" + atLine(findLineWithoutUV(source.text, source.counts));
}

}  // namespace

MeshStatus meshStatusOf(const IScreenGeometry& screen, const MeshSource& source) {
    const auto* const obj = dynamic_cast<const OBJScreen*>(&screen);
    if (obj == nullptr)
        return {
            "no_uv",
            "STL files have no UV, and positions are found on few of the triangles; rays and the boundary "
            "work; converted to an OBJ file, more queries work"};
    return meshStatusOf(obj->getStatus(), source);
}

MeshStatus meshStatusOf(OBJScreen::Status status, const MeshSource& source) {
    switch (status) {
        case OBJScreen::StatusNoParameterization:
            return {"no_uv", missingUVText(source) + kNoUVWorks};
        case OBJScreen::StatusBadBoundary:
            return {"bad_boundary",
                    std::string("the mesh does not have exactly one closed boundary: it has holes, several "
                                "components, no boundary edge, or adjacent faces that do not share position "
                                "and UV") +
                        kNoUVWorks};
        case OBJScreen::StatusUvOutOfRange:
            return {"uv_out_of_range", "a face has a UV outside of 0 to 1" +
                                           atLine(findLineWithUVOutside(source.text, source.counts)) +
                                           "; everything works"};
        default:
            return {"ok", "good; everything works"};
    }
}

}  // namespace quarn
