#include "ObjFaceNormals.h"

#include <cmath>

#include <QuarnKit/Formats/Obj/ObjNumberText.h>
#include <QuarnScreen/Point.h>

namespace quarn {

namespace {

Point<double, 3> at(const std::array<float, 3>& position) {
    return {position[0], position[1], position[2]};
}

// Returns the direction of the sum of the area vectors of the triangles that form the polygon.
Point<double, 3> normalOf(const std::vector<std::array<float, 3>>& positions,
                          const std::vector<std::uint64_t>& vertices) {
    const auto corner = [&](std::size_t i) { return at(positions.at(vertices.at(i) - 1)); };
    Point<double, 3> sum;
    for (std::size_t i = 1; i + 1 < vertices.size(); ++i)
        sum = sum + cross(corner(i) - corner(0), corner(i + 1) - corner(0));
    const double size = length(sum);
    // A face with zero area, or beyond the range of floats, has no normal of its own, and any is
    // valid.
    return size > 0.0 && std::isfinite(size) ? sum / size : Point<double, 3>(0.0, 0.0, 1.0);
}

}  // namespace

std::uint64_t ObjFaceNormals::numberFor(const std::vector<std::uint64_t>& vertices) {
    const Point<double, 3> normal = normalOf(positions, vertices);
    const int index = numbers.indexOf(
        {static_cast<float>(normal[0]), static_cast<float>(normal[1]), static_cast<float>(normal[2])});
    return count + static_cast<std::uint64_t>(index) + 1;
}

std::string ObjFaceNormals::lines() const {
    std::string text;
    appendObjLines(text, "vn", addedNormals);
    return text;
}

}  // namespace quarn
