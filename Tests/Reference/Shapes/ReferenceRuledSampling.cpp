// The samples of the reference: for calibration, for display and along a line.
#include <cmath>

#include "Reference/Shapes/ReferenceRuled.h"

namespace quarn::test {

Point3 ReferenceRuled::eyepoint() const {
    return {0.0, (topCenterY + bottomCenterY) * 0.5, (topZ + bottomZ) * 0.5};
}

double ReferenceRuled::maxAngle() const {
    const Point3 eye = eyepoint();
    return std::acos(0.0 + (width * 0.5 - eye[0]) * 0.0 + (0.0 - eye[1]) * 1.0 +
                     (height * 0.5 - eye[2]) * 0.0);
}

std::vector<Point3> ReferenceRuled::calibrationPoints(int columns, int rows) const {
    std::vector<Point3> points;
    for (int i = 0; i < columns; ++i)
        for (int j = 0; j < rows; ++j)
            points.push_back(
                position(i / static_cast<double>(columns - 1), j / static_cast<double>(rows - 1)));
    return points;
}

std::map<Point<int, 2>, Point3> ReferenceRuled::samples(double v, double uStart, double uEnd, int count,
                                                        int row, bool extrapolate) const {
    std::map<Point<int, 2>, Point3> found;
    if (count < 2) return found;
    const double step = (uEnd - uStart) / (count - 1);
    for (int i = 0; i < count; ++i) {
        const Point3 p = position(i * step + uStart, v);
        if (extrapolate || isOnSection(p)) found[Point<int, 2>(i, row)] = p;
    }
    return found;
}

Point3 ReferenceRuled::viewPoint() const {
    double m = width * 0.5;
    if (m < height * 0.5) m = height * 0.5;
    double s = -10.0;
    if (1.0 > m)
        s = -1.0;
    else if (5.0 > m)
        s = -5.0;
    return {0.0, m * s, 0.0};
}

std::vector<Point3> ReferenceRuled::displayVertices() const {
    std::vector<Point3> vertices;
    for (int i = 0; i <= 99; ++i)
        for (int j = 0; j <= 99; ++j) vertices.push_back(position(i / 99.0, j / 99.0));
    return vertices;
}

std::vector<Point3> ReferenceRuled::displayNormals() const {
    const std::vector<Point3> vertices = displayVertices();
    std::vector<Point3> normals;
    const auto normalize = [](double* d) {
        const double length = std::sqrt(0.0 + d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
        for (int c = 0; c < 3; ++c) d[c] = d[c] / length;
    };
    for (std::size_t k = 0; k < 10000; ++k) {
        double dI[3];
        double dJ[3];
        for (std::size_t c = 0; c < 3; ++c) {
            dI[c] =
                k / 100 == 99 ? vertices[k][c] - vertices[k - 100][c] : vertices[k + 100][c] - vertices[k][c];
            dJ[c] =
                k % 100 == 99 ? 2 * vertices[k][c] - vertices[k - 1][c] : vertices[k + 1][c] - vertices[k][c];
        }
        normalize(dI);
        normalize(dJ);
        double n[3] = {dJ[1] * dI[2] - dJ[2] * dI[1], dJ[2] * dI[0] - dJ[0] * dI[2],
                       dJ[0] * dI[1] - dJ[1] * dI[0]};
        normalize(n);
        normals.emplace_back(n[0], n[1], n[2]);
    }
    return normals;
}

}  // namespace quarn::test
