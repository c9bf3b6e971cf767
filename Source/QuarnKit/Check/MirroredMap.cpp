#include "MirroredMap.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace quarn {

namespace {

enum class MapOrientation { Correct, Mirrored, Unclear };

// What a viewer sees of the map: the areas that go the one way and the other.
class View {
public:
    // \param side positive where the triangle's corners run against the clock for the viewer
    void add(double side, double uvDeterminant) {
        // Where u runs to the right and v downwards, what runs against the clock on the surface has a negative area in UV.
        (side * uvDeterminant < 0.0 ? right : mirrored) += std::abs(side);
        total += std::abs(side);
    }

    // \param area of the whole mesh
    [[nodiscard]] MapOrientation orientation(double area) const {
        // Parts of the area that have to be visible, and of what is visible that have to agree.
        constexpr double kMinVisibleRatio = 0.05;
        constexpr double kMinAgreementRatio = 0.9;
        if (!(total > kMinVisibleRatio * area)) return MapOrientation::Unclear;
        if (right > kMinAgreementRatio * total) return MapOrientation::Correct;
        return mirrored > kMinAgreementRatio * total ? MapOrientation::Mirrored : MapOrientation::Unclear;
    }

private:
    double right = 0.0;
    double mirrored = 0.0;
    double total = 0.0;
};

bool isMapMirrored(const CheckedMesh& mesh, const std::vector<bool>& isOriented) {
    View fromEye;
    View fromFront;
    double area = 0.0;
    for (std::size_t i = 0; i < isOriented.size(); ++i) {
        if (!isOriented[i]) continue;
        const Triangle& triangle = mesh.triangles[i];
        const Point<double, 3> across = cross(triangle.vertices[1].position - triangle.vertices[0].position,
                                              triangle.vertices[2].position - triangle.vertices[0].position);
        const double distance = length(triangle.centroid);
        area += length(across);
        fromFront.add(-across[1], triangle.uvDeterminant);
        if (distance > 0.0) fromEye.add(-dot(across, triangle.centroid) / distance, triangle.uvDeterminant);
    }
    const MapOrientation eye = fromEye.orientation(area);
    const MapOrientation front = fromFront.orientation(area);
    return eye != MapOrientation::Correct && front != MapOrientation::Correct &&
           (eye == MapOrientation::Mirrored || front == MapOrientation::Mirrored);
}

}  // namespace

void checkMirroredMap(const CheckedMesh& mesh, const std::vector<bool>& isOriented,
                      std::vector<Finding>& findings) {
    if (!isMapMirrored(mesh, isOriented)) return;
    const auto oriented = static_cast<std::uint64_t>(std::count(isOriented.begin(), isOriented.end(), true));
    findings.push_back(
        {.name = "mirrored-map",
         .count = oriented,
         .text = "the UV map is mirrored for a viewer at (0, 0, 0) or at -Y: where v is "
                 "downwards, u runs to the left",
         .hint = "flip u, or v where the program counts it from below, or check the forward and up axes; "
                 "leave it where the picture is projected from behind"});
}

}  // namespace quarn
