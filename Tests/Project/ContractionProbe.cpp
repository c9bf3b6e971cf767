// Arithmetic of public headers, compiled as a caller compiles it.
#include <QuarnScreen/Matrix.h>
#include <QuarnScreen/Point.h>

double probeDot(const Point<double, 3>& a, const Point<double, 3>& b) {
    return dot(a, b);
}

Point<double, 3> probeCross(const Point<double, 3>& a, const Point<double, 3>& b) {
    return cross(a, b);
}

Point<float, 3> probeTransform(const Matrix<float, 4>& matrix, float x, float y, float z) {
    return matrix.transformPoint(x, y, z);
}
