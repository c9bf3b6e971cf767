#include "ViewTriangles.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <utility>

namespace quarn {

namespace {

// Maximum angle in radians of a piece's side, seen from the camera. Its middle is then off by a
// thousandth of the view.
constexpr double kMaxAngle = 6.0 * std::numbers::pi / 180.0;
// Maximum number of times that a triangle is halved, for one that is very near.
constexpr int kMaxHalvings = 12;
// Maximum number of pieces that are added to the triangles, for bounded time and memory.
constexpr std::size_t kMaxAddedPieces = 200000;

struct Piece {
    TriangleCorners corners;
    int halvings = 0;
};

// Returns the index of the side with the largest angle, which follows the corner of the index; 3 if
// all are small.
std::size_t widestSide(const TriangleCorners& corners, const Point<double, 3>& eye) {
    std::size_t widest = 3;
    double minCosine = std::cos(kMaxAngle);
    for (std::size_t i = 0; i < 3; ++i) {
        const Point<double, 3> a = corners.at(i) - eye;
        const Point<double, 3> b = corners.at((i + 1) % 3) - eye;
        const double cosine = dot(a, b) / (length(a) * length(b));
        if (!(cosine < minCosine)) continue;
        minCosine = cosine;
        widest = i;
    }
    return widest;
}

}  // namespace

ViewTriangles::ViewTriangles(const std::vector<TriangleCorners>& meshTriangles, const Camera& camera)
    : triangles(meshTriangles) {
    if (!camera.isCurved()) return;
    const bool isFine = std::all_of(triangles.begin(), triangles.end(), [&](const auto& triangle) {
        return widestSide(triangle, camera.position()) == 3;
    });
    if (isFine) return;
    for (std::uint32_t i = 0; i < triangles.size(); ++i) divide(i, camera);
}

void ViewTriangles::divide(std::uint32_t triangle, const Camera& camera) {
    std::vector<Piece> open = {{.corners = triangles[triangle]}};
    while (!open.empty()) {
        const Piece piece = open.back();
        open.pop_back();
        const bool isFinal =
            piece.halvings == kMaxHalvings || divided.size() > triangles.size() + kMaxAddedPieces;
        const std::size_t side = isFinal ? 3 : widestSide(piece.corners, camera.position());
        if (side == 3) {
            divided.push_back(piece.corners);
            sources.push_back(triangle);
            continue;
        }
        const Point<double, 3>& a = piece.corners.at(side);
        const Point<double, 3>& b = piece.corners.at((side + 1) % 3);
        const Point<double, 3>& c = piece.corners.at((side + 2) % 3);
        const Point<double, 3> middle = (a + b) * 0.5;
        open.push_back({.corners = {middle, b, c}, .halvings = piece.halvings + 1});
        open.push_back({.corners = {a, middle, c}, .halvings = piece.halvings + 1});
    }
}

}  // namespace quarn
