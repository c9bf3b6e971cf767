#include "GridMesh.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <QuarnKit/Base/UniqueRecords.h>
#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/SphericalScreen.h>

namespace quarn {

namespace {

// The error of the sine of pi, relative to the size of the screen. It is far below the resolution
// of a float there.
constexpr double kRoundingResidue = 1e-12;

class GridMesher {
public:
    GridMesher(const IScreenGeometry& meshedScreen, const GridSize& gridSize)
        : screen(meshedScreen),
          size(gridSize),
          positions(mesh.positions),
          uvs(mesh.uvs),
          normals(mesh.normals) {
        findResidue();
        findOrientation();
    }

    MeshDocument take();

private:
    // A crossing of the grid.
    struct Crossing {
        std::int32_t vertex;
        std::int32_t normal;
    };

    [[nodiscard]] Point<double, 3> positionAt(double u, double v) const;
    void findResidue();
    void findOrientation();
    void addRow(int row);
    void addTriangle(std::array<Crossing, 3> corners, std::array<Point<double, 2>, 3> cornerUVs);
    void addCells(int row);
    [[nodiscard]] Crossing crossingAt(int row, int column);
    [[nodiscard]] std::int32_t uvIndex(const Point<double, 2>& uv) {
        return uvs.indexOf({static_cast<float>(uv[0]), static_cast<float>(uv[1])});
    }
    [[nodiscard]] bool isPole(const std::vector<Crossing>& line) const;

    const IScreenGeometry& screen;
    GridSize size;
    MeshDocument mesh;
    UniqueRecords<3> positions;
    UniqueRecords<2> uvs;
    UniqueRecords<3> normals;
    double residue = 0.0;
    bool isFlipped = false;  // corners counterclockwise in UV face away from the viewer
    double normalSign = 1.0;
    std::vector<Crossing> above;
    std::vector<Crossing> below;
};

std::array<float, 3> toFloats(const Point<double, 3>& point) {
    return {static_cast<float>(point[0]), static_cast<float>(point[1]), static_cast<float>(point[2])};
}

Point<double, 3> GridMesher::positionAt(double u, double v) const {
    Point<double, 3> position;
    static_cast<void>(screen.mapInto3D({u, v}, position, false));
    for (std::size_t i = 0; i < 3; ++i)
        if (std::abs(position[i]) < residue) position[i] = 0.0;
    return position;
}

// Not all screens report their bounds.
void GridMesher::findResidue() {
    constexpr int kSteps = 4;
    const Point<double, 3> corner = positionAt(0.0, 0.0);
    double reach = 0.0;
    for (int row = 0; row <= kSteps; ++row)
        for (int column = 0; column <= kSteps; ++column)
            reach = std::max(reach, length(positionAt(static_cast<double>(column) / kSteps,
                                                      static_cast<double>(row) / kSteps) -
                                           corner));
    residue = reach * kRoundingResidue;
}

// Measured in the middle of the screen, where no pole is. Seen from the viewer, u increases to the
// right and v downwards, except on screens with reversed limits.
void GridMesher::findOrientation() {
    constexpr double kMiddle = 0.5;
    constexpr double kStep = 1e-3;
    const Point<double, 3> middle = positionAt(kMiddle, kMiddle);
    const Point<double, 3> alongU = positionAt(kMiddle + kStep, kMiddle) - middle;
    const Point<double, 3> alongV = positionAt(kMiddle, kMiddle + kStep) - middle;
    Point<double, 3> facing = cross(alongV, alongU);
    isFlipped = dot(facing, screen.getEyepoint() - middle) < 0.0;
    if (isFlipped) facing = facing * -1.0;
    normalSign = dot(facing, screen.getScreenNormal(middle)) < 0.0 ? -1.0 : 1.0;
}

GridMesher::Crossing GridMesher::crossingAt(int row, int column) {
    const Point<double, 3> position =
        positionAt(static_cast<double>(column) / size.columns, static_cast<double>(row) / size.rows);
    const Point<double, 3> normal = screen.getScreenNormal(position) * normalSign;
    return {positions.indexOf(toFloats(position)), normals.indexOf(toFloats(normal))};
}

void GridMesher::addRow(int row) {
    above.swap(below);
    below.clear();
    for (int column = 0; column <= size.columns; ++column) below.push_back(crossingAt(row, column));
}

bool GridMesher::isPole(const std::vector<Crossing>& line) const {
    return std::all_of(line.begin(), line.end(),
                       [&](const Crossing& crossing) { return crossing.vertex == line.front().vertex; });
}

void GridMesher::addTriangle(std::array<Crossing, 3> corners, std::array<Point<double, 2>, 3> cornerUVs) {
    detail::ObjFace face;
    for (std::size_t i = 0; i < face.size(); ++i) {
        const std::size_t from = isFlipped ? face.size() - 1 - i : i;
        const Point<double, 2>& uv = cornerUVs.at(from);
        face.at(i) = {.vertex = corners.at(from).vertex,
                      .textureCoordinate = uvIndex(uv),
                      .normal = corners.at(from).normal};
    }
    mesh.faces.push_back(face);
}

// Adds the cells between the last two rows, counterclockwise for a viewer with u to the right and v
// downwards.
void GridMesher::addCells(int row) {
    const double top = static_cast<double>(row - 1) / size.rows;
    const double bottom = static_cast<double>(row) / size.rows;
    const bool isTopPole = isPole(above);
    const bool isBottomPole = isPole(below);
    for (int column = 0; column < size.columns; ++column) {
        const auto i = static_cast<std::size_t>(column);
        const double left = static_cast<double>(column) / size.columns;
        const double right = static_cast<double>(column + 1) / size.columns;
        const double middle = (column + 0.5) / size.columns;
        if (!isBottomPole)
            addTriangle({above[i], below[i], below[i + 1]},
                        {{{isTopPole ? middle : left, top}, {left, bottom}, {right, bottom}}});
        if (!isTopPole)
            addTriangle({above[i], below[i + 1], above[i + 1]},
                        {{{left, top}, {isBottomPole ? middle : right, bottom}, {right, top}}});
    }
}

MeshDocument GridMesher::take() {
    for (int row = 0; row <= size.rows; ++row) {
        addRow(row);
        if (row > 0) addCells(row);
    }
    return std::move(mesh);
}

// Returns the minimum number of cells that share an arc, in radians.
int minCellsFor(double arc) {
    // More than any limit of a file needs. Not even a longer arc has an overflow then.
    constexpr double kMaxHalfTurns = 1e6;
    const double halfTurns = std::abs(arc) / std::numbers::pi;
    return static_cast<int>(halfTurns < kMaxHalfTurns ? halfTurns : kMaxHalfTurns) + 1;
}

}  // namespace

GridSize minGridSizeOf(const IScreenGeometry& screen) {
    GridSize size{.rows = 1, .columns = 1};
    if (const auto* const cylinder = dynamic_cast<const CylinderScreen*>(&screen)) {
        size.columns = minCellsFor(cylinder->getParams().maxTheta - cylinder->getParams().minTheta);
    } else if (const auto* const sphere = dynamic_cast<const SphericalScreen*>(&screen)) {
        size.columns = minCellsFor(sphere->getParams().maxTheta - sphere->getParams().minTheta);
        size.rows = minCellsFor(sphere->getParams().maxPhi - sphere->getParams().minPhi);
    } else if (const auto* const ruled = dynamic_cast<const RuledSurfaceScreen*>(&screen)) {
        const RuledSurfaceScreenParams params = ruled->getParams();
        size.columns = std::max(minCellsFor(params.maxTheta - params.minTheta),
                                minCellsFor(params.maxPhi - params.minPhi));
    }
    return size;
}

std::optional<std::string> expectedInsteadOf(const GridSize& size, const IScreenGeometry& screen) {
    const GridSize min = minGridSizeOf(screen);
    if (size.rows >= min.rows && size.columns >= min.columns) return std::nullopt;
    return "at least " + std::to_string(min.rows) + (min.rows == 1 ? " row" : " rows") + " and " +
           std::to_string(min.columns) + (min.columns == 1 ? " column" : " columns") +
           ", so that each cell spans less than half a turn";
}

MeshDocument gridMeshOf(const IScreenGeometry& screen, const GridSize& size) {
    return GridMesher(screen, size).take();
}

}  // namespace quarn
