// The grid that shows the mesh and its parameterisation.
#include <QuarnScreen/MeshScreen.h>

#include <cstddef>
#include <utility>

#include <QuarnScreen/Detail/Boundary/PolylineClipper.h>
#include <QuarnScreen/Detail/Mesh/GridCache.h>

namespace {

constexpr int kSamplesPerLine = 30;
constexpr double kSampleStep = 0.034482758620689655;  // 1 / 29

using UVPolyline = quarn::detail::PolylineClipper::Polyline;

// The lines of constant v, from top to bottom, or those of constant u, from left to right, within the boundaryLoop.
std::vector<UVPolyline> clippedLines(const quarn::detail::PolylineClipper& clipper, int density,
                                     bool isConstantV) {
    std::vector<UVPolyline> pieces;
    const double step = 1.0 / (static_cast<double>(density) - 1.0);
    UVPolyline line(kSamplesPerLine);
    for (int i = 0; i < density; ++i) {
        const double t = i * step;
        for (int j = 0; j < kSamplesPerLine; ++j) {
            const double s = j * kSampleStep;
            line[static_cast<std::size_t>(j)] = isConstantV ? Point<double, 2>(s, t) : Point<double, 2>(t, s);
        }
        clipper.clip(line, pieces);
    }
    return pieces;
}

}  // namespace

void MeshScreen::sampleGrid(Polylines& grid, int density) const {
    grid = *gridCache->get(density, [&] { return calculateGrid(density); });
}

MeshScreen::Polylines MeshScreen::calculateGrid(int density) const {
    Polylines boundaryLines;
    sampleBoundary(boundaryLines);
    Polylines grid(1);
    std::vector<Point<double, 3>>& boundaryLoop = grid.front();
    for (const auto& line : boundaryLines) boundaryLoop.insert(boundaryLoop.end(), line.begin(), line.end());
    // Intended: an boundaryLoop that repeats its first point already gets it once more.
    if (!boundaryLoop.empty()) boundaryLoop.push_back(boundaryLoop.front());

    UVPolyline boundaryUV;
    sampleBoundaryUV(boundaryUV);
    const quarn::detail::PolylineClipper clipper(std::move(boundaryUV));
    for (const bool isConstantV : {true, false}) {
        for (const UVPolyline& piece : clippedLines(clipper, density, isConstantV)) {
            std::vector<Point<double, 3>>& line = grid.emplace_back();
            for (const Point<double, 2>& uv : piece) {
                Point<double, 3> point;
                if (mapInto3D(uv, point, true)) line.push_back(point);
            }
        }
    }
    return grid;
}

void MeshScreen::sampleHorizontally(double v, double uStart, double uEnd, int count, int row,
                                    GridSamples& samples, bool extrapolate) const {
    for (int i = 0; i < count; ++i) {
        const double u =
            (static_cast<double>(i) / (static_cast<double>(count) - 1.0)) * (uEnd - uStart) + uStart;
        Point<double, 3> point;
        if (mapInto3D(Point<double, 2>(u, v), point, extrapolate)) samples[Point<int, 2>(i, row)] = point;
    }
}
