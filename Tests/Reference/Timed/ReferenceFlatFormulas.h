/// \file
/// The arithmetic of a flat screen, for comparison of times. Unlike ReferenceFlat, the compiler
/// sees through it and can inline it.
#pragma once

#include <cmath>
#include <cstddef>
#include <vector>

#include <QuarnScreen/Point.h>

namespace quarn::test {

/// A wall whose operations the compiler sees through.
struct ReferenceFlatFormulas {
    double width;
    double height;

    [[nodiscard]] Point<double, 2> mapInto2D(const Point<double, 3>& point) const {
        return {(width / 2 + point[0]) / width, (height / 2 - point[2]) / height};
    }

    [[nodiscard]] Point<double, 3> mapInto3D(const Point<double, 2>& uv) const {
        const double left = width * -0.5;
        const double top = height * 0.5;
        return {left + (width * 0.5 - left) * uv[0], 0.0, top + (height * -0.5 - top) * uv[1]};
    }

    /// Whether the line meets the wall; writes the hit.
    bool intersect(const Point<double, 3>& from, const Point<double, 3>& to, Point<double, 3>& hit) const {
        const Point<double, 3> direction = to - from;
        if (std::abs(direction[1]) < 1e-6) return false;
        hit = from + -(from[1] / direction[1]) * direction;
        return std::abs(hit[0]) <= width / 2 + 1e-6 && std::abs(hit[2]) <= height / 2 + 1e-6;
    }

    /// The positions of a grid's lines, with the same count in the same order as
    /// ScreenGeometry::sampleGrid().
    void sampleGrid(std::vector<Point<double, 3>>& polyline, int lines) const {
        const double intervals = lines - 1;
        for (int i = 0; i < lines; ++i) {
            const double u = i / intervals;
            for (int j = 0; j <= 20; ++j) polyline.push_back(mapInto3D({u, upOrDown(i, j)}));
            for (int k = 1; k <= 3 && i < lines - 1; ++k)
                polyline.push_back(mapInto3D({u + k * 0.25 / intervals, i % 2 == 0 ? 1.0 : 0.0}));
        }
        for (int i = 0; i < lines; ++i) {
            const double v = 1.0 - i / intervals;
            for (int j = 0; j <= 20; ++j) polyline.push_back(mapInto3D({upOrDown(i + 1, j), v}));
            for (int k = 1; k <= 3 && i < lines - 1; ++k)
                polyline.push_back(mapInto3D({i % 2 == 0 ? 0.0 : 1.0, v - k * 0.25 / intervals}));
        }
    }

private:
    static double upOrDown(int line, int step) {
        const double s = step * 0.05;
        return line % 2 == 0 ? s : 1.0 - s;
    }
};

}  // namespace quarn::test
