#include "ObjSameMesh.h"

#include <new>
#include <optional>
#include <vector>

#include <QuarnScreen/Detail/Obj/ObjParser.h>
#include <QuarnScreen/OBJScreen.h>

namespace quarn {

namespace {

template <class Records>
bool isWithin(std::int32_t index, const Records& records) {
    return index >= 0 && static_cast<std::size_t>(index) < records.size();
}

// What the library scans of a text; nothing where it does not load it.
std::optional<detail::ObjData> objDataOf(std::string text) {
    OBJScreen::replaceNewLineEscapeSequencesWithBlanks(text);
    std::vector<Triangle> unused;
    detail::ObjData objData;
    try {
        objData = detail::parseObj(text, unused, [] {});
    } catch (const std::bad_alloc&) {
        // A face line that does not end.
        return {};
    }
    const auto normalCount = static_cast<std::int64_t>(objData.vertexData.normalCount);
    for (const detail::ObjFace& face : objData.faces)
        for (const detail::ObjCorner& corner : face)
            if (!isWithin(corner.vertex, objData.vertexData.vertices) || corner.normal < 0 ||
                corner.normal >= normalCount)
                return {};
    return objData;
}

std::optional<std::array<float, 2>> uvOf(const detail::ObjData& objData, const detail::ObjCorner& corner) {
    const auto& uvs = objData.vertexData.textureCoordinates;
    if (!isWithin(corner.textureCoordinate, uvs)) return {};
    return uvs[static_cast<std::size_t>(corner.textureCoordinate)];
}

const std::array<float, 3>& coordinatesOf(const detail::ObjData& objData, const detail::ObjCorner& corner) {
    return objData.vertexData.vertices[static_cast<std::size_t>(corner.vertex)];
}

}  // namespace

bool areSameMesh(const std::string& first, const std::string& second) {
    const auto one = objDataOf(first);
    if (!one) return false;
    const auto other = objDataOf(second);
    if (!other || one->faces.size() != other->faces.size()) return false;
    for (std::size_t i = 0; i < one->faces.size(); ++i)
        for (std::size_t k = 0; k < one->faces[i].size(); ++k) {
            const detail::ObjCorner& corner = one->faces[i].at(k);
            const detail::ObjCorner& otherCorner = other->faces[i].at(k);
            if (coordinatesOf(*one, corner) != coordinatesOf(*other, otherCorner) ||
                uvOf(*one, corner) != uvOf(*other, otherCorner))
                return false;
        }
    return true;
}

}  // namespace quarn
