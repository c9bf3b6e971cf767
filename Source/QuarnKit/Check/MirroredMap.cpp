#include "MirroredMap.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace quarn {

namespace {

enum class MapOrientation { Correct, Mirrored, Unclear };

// Sums the areas that a viewer sees by the orientation of the map there.
class View {
public:
    // \param side twice the visible area, positive if the corners are counterclockwise for the
    // viewer
    void add(double side, double uvDeterminant) {
        // If u points to the right and v downwards, counterclockwise corners have a negative area
        // in UV.
        (side * uvDeterminant < 0.0 ? correct : mirrored) += std::abs(side);
        total += std::abs(side);
    }

    // \param area twice the area of the whole mesh
    [[nodiscard]] MapOrientation orientation(double area) const {
        // Fractions of the area that have to be visible, and of the visible area that have to
        // agree.
        constexpr double kMinVisibleRatio = 0.05;
        constexpr double kMinAgreementRatio = 0.9;
        if (!(total > kMinVisibleRatio * area)) return MapOrientation::Unclear;
        if (correct > kMinAgreementRatio * total) return MapOrientation::Correct;
        return mirrored > kMinAgreementRatio * total ? MapOrientation::Mirrored : MapOrientation::Unclear;
    }

private:
    double correct = 0.0;
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
         .text = "the UV map is mirrored for a viewer at (0, 0, 0) or at -Y: if v points "
                 "downwards, u points to the left",
         .hint = "flip u, or v if the program counts it from below, or check the forward and up axes; "
                 "leave it unchanged for rear projection"});
}

}  // namespace quarn
