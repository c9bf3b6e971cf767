#include "Reference/Shapes/ReferenceFlat.h"

#include "Reference/Shapes/ReferenceContract.h"

namespace quarn::test {

bool ReferenceFlat::isOnSection(const Point3& p) const {
    const bool offPlane = p[1] > 1e-6 || p[1] < -1e-6;
    const bool offLeft = p[0] < -(w / 2.0) - 1e-6;
    const bool offRight = p[0] > w / 2.0 + 1e-6;
    const bool offBottom = p[2] < -(h / 2.0) - 1e-6;
    const bool offTop = p[2] > h / 2.0 + 1e-6;
    return !offPlane && !offLeft && !offRight && !offBottom && !offTop;
}

Point2 ReferenceFlat::uvOf(const Point3& p) const {
    const double u = (w / 2.0 + p[0]) / w;
    const double v = (h / 2.0 - p[2]) / h;
    return {u, v};
}

Point3 ReferenceFlat::positionAt(double u, double v) const {
    const double x0 = w * -0.5;
    const double x1 = w * 0.5;
    const double zTop = h * 0.5;
    const double zBottom = h * -0.5;
    const double y = 0.0;
    const double leftX = x0 + (x0 - x0) * v;
    const double leftY = y + (y - y) * v;
    const double leftZ = zTop + (zBottom - zTop) * v;
    const double rightX = x1 + (x1 - x1) * v;
    const double rightY = y + (y - y) * v;
    const double rightZ = zTop + (zBottom - zTop) * v;
    return {leftX + (rightX - leftX) * u, leftY + (rightY - leftY) * u, leftZ + (rightZ - leftZ) * u};
}

std::optional<Intersection> ReferenceFlat::planeHit(const Point3& from, const Point3& to) const {
    const double dx = to[0] - from[0];
    const double dy = to[1] - from[1];
    const double dz = to[2] - from[2];
    const double denominator = dx * 0.0 + 0.0 - dy + dz * 0.0;
    if (denominator > -1e-6 && denominator < 1e-6) return std::nullopt;
    const double t = -((from[0] * 0.0 + 0.0 - from[1] + from[2] * 0.0 + 0.0) / denominator);
    Intersection found;
    found.point = Point3(from[0] + t * dx, from[1] + t * dy, from[2] + t * dz);
    const double s = 0.0 + dx * 0.0 + dy * -1.0 + dz * 0.0;
    if (s > 0.0) found.normalSign = 1;
    if (s < 0.0) found.normalSign = -1;
    return found;
}

std::optional<Intersection> ReferenceFlat::hit(const Point3& from, const Point3& to) const {
    const auto found = planeHit(from, to);
    if (found && isOnSection(found->point)) return found;
    return std::nullopt;
}

std::map<Point<int, 2>, Point3> ReferenceFlat::horizontalSamples(double v, double uStart, double uEnd,
                                                                 int count, int row, bool extrapolate) const {
    std::map<Point<int, 2>, Point3> samples;
    if (count < 2) return samples;
    const double step = (uEnd - uStart) / (count - 1);
    for (int i = 0; i <= count - 1; ++i) {
        const double u = i * step + uStart;
        if (extrapolate || (u >= 0.0 && u <= 1.0 && v >= 0.0 && v <= 1.0))
            samples.insert({Point<int, 2>(i, row), positionAt(u, v)});
    }
    return samples;
}

std::vector<Point3> ReferenceFlat::calibrationPoints(int columns, int rows) const {
    std::vector<Point3> points;
    for (int i = 0; i < columns; ++i) {
        for (int j = 0; j < rows; ++j) {
            const double dx = w / (columns - 1);
            const double dz = h / (rows - 1);
            points.push_back(Point3(i * dx - w * 0.5, 0.0, h * 0.5 - j * dz));
        }
    }
    return points;
}

Point3 ReferenceFlat::closestPoint(const Point3& p) const {
    Point2 uv = uvOf(p);
    for (std::size_t i = 0; i < 2; ++i) {
        if (uv[i] < 0.0) uv[i] = 0.0;
        if (uv[i] > 1.0) uv[i] = 1.0;
    }
    return positionAt(uv[0], uv[1]);
}

std::optional<Intersection> ReferenceFlat::closestIntersection(const Point3& from, const Point3& direction,
                                                               bool extrapolate) const {
    Point3 ahead;
    Point3 behind;
    for (std::size_t i = 0; i < 3; ++i) {
        ahead[i] = from[i] + direction[i];
        behind[i] = from[i] - direction[i];
    }
    const auto hitsTowards = [&](const Point3& to) {
        const auto found = extrapolate ? planeHit(from, to) : hit(from, to);
        return found ? std::vector{*found} : std::vector<Intersection>();
    };
    auto found = closestHit({from, hitsTowards(ahead), hitsTowards(behind), closestPoint(from), {}});
    if (found) found->uv = uvOf(found->point);
    return found;
}

std::array<Point3, 4> ReferenceFlat::corners() const {
    return {Point3(w * -0.5, 0.0, h * 0.5), Point3(w * 0.5, 0.0, h * 0.5), Point3(w * -0.5, 0.0, h * -0.5),
            Point3(w * 0.5, 0.0, h * -0.5)};
}

double ReferenceFlat::longerSide() const {
    return w < h ? h : w;
}

Point3 ReferenceFlat::viewPoint() const {
    const double m = longerSide();
    double k = -10.0;
    if (m < 1.0) k = -1.0;
    if (1.0 <= m && m < 5.0) k = -5.0;
    return {0.0, m * k, 0.0};
}

}  // namespace quarn::test
