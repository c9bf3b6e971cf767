#include <QuarnScreen/FlatScreen.h>

#include <algorithm>
#include <cmath>

#include <Common/Detail/Assert.h>
#include <QuarnScreen/Detail/Platform/Sign.h>
#include <QuarnScreen/Detail/Shapes/CalibrationGrid.h>
#include <QuarnScreen/Detail/Shapes/DisplayGrid.h>
#include <QuarnScreen/Detail/Xml/XmlValues.h>
#include <QuarnScreen/ScreenGeometryXmlHelper.h>

namespace {

// Maximum distance of a position on the screen from the plane and beyond the edges, in the screen's
// unit.
constexpr double kOnScreenTolerance = 1e-6;
// Minimum |direction . normal| of a ray that meets the plane, in the screen's unit.
constexpr double kParallelTolerance = 1e-6;

constexpr Point<double, 3> kNormal(0.0, -1.0, 0.0);

constexpr const wchar_t* kWidthTag = L"Screen_Width";
constexpr const wchar_t* kHeightTag = L"Screen_Height";

}  // namespace

FlatScreen::FlatScreen() {
    computeCorners();
}

FlatScreen::FlatScreen(double initialWidth, double initialHeight) {
    reset(initialWidth, initialHeight);
}

FlatScreen::FlatScreen(IScreenConfig* config) {
    FlatScreen::updateGeometry(config);
}

FlatScreen::~FlatScreen() = default;

const std::string& FlatScreen::type() {
    static const std::string name = "class FlatScreen";
    return name;
}

const std::string& FlatScreen::getType() const {
    return type();
}

void FlatScreen::serialize(std::wostream& out, int indent) {
    ScreenGeometryXmlHelper::serializeOpenTagHasChildren(out, indent, getType());
    quarn::detail::writeNumberTag(indent + 1, out, kWidthTag, width);
    quarn::detail::writeNumberTag(indent + 1, out, kHeightTag, height);
    ScreenGeometryXmlHelper::serializeCloseTagHasChildren(out, indent);
}

void FlatScreen::deserialize(xercesc::DOMNode* node) {
    QUARN_ASSERT(node != nullptr);
    double newWidth = width;
    double newHeight = height;
    for (xercesc::DOMNode* child = node->getFirstChild(); child != nullptr; child = child->getNextSibling()) {
        quarn::detail::readNumberTag(child, kWidthTag, newWidth);
        quarn::detail::readNumberTag(child, kHeightTag, newHeight);
    }
    reset(newWidth, newHeight);
}

void FlatScreen::updateGeometry(IScreenConfig* config) {
    QUARN_ASSERT(config != nullptr);
    const double newHeight = config->getHeight();
    reset(config->getWidth(), newHeight);
}

void FlatScreen::reset(double newWidth, double newHeight) {
    width = newWidth;
    height = newHeight;
    computeCorners();
}

void FlatScreen::computeCorners() {
    topLeft = Point<double, 3>(width * -0.5, 0.0, height * 0.5);
    topRight = Point<double, 3>(width * 0.5, 0.0, height * 0.5);
    bottomLeft = Point<double, 3>(width * -0.5, 0.0, height * -0.5);
    bottomRight = Point<double, 3>(width * 0.5, 0.0, height * -0.5);
}

Point<double, 3> FlatScreen::leftEdgeAt(double v) const {
    return topLeft + (bottomLeft - topLeft) * v;
}

Point<double, 3> FlatScreen::rightEdgeAt(double v) const {
    return topRight + (bottomRight - topRight) * v;
}

bool FlatScreen::isOnScreenSection(const Point<double, 3>& point) const {
    const double x = point[0];
    const double z = point[2];
    if (std::abs(point[1]) > kOnScreenTolerance) return false;
    if (x < -width / 2 - kOnScreenTolerance || x > width / 2 + kOnScreenTolerance) return false;
    return !(z < -height / 2 - kOnScreenTolerance || z > height / 2 + kOnScreenTolerance);
}

Point<double, 3> FlatScreen::getScreenNormal(const Point<double, 3>& /*point*/) const {
    return kNormal;
}

Point<double, 2> FlatScreen::mapInto2D(const Point<double, 3>& point, bool /*extrapolate*/) const {
    return {(width / 2 + point[0]) / width, (height / 2 - point[2]) / height};
}

bool FlatScreen::mapInto3D(const Point<double, 2>& uv, Point<double, 3>& point, bool extrapolate) const {
    const Point<double, 3> left = leftEdgeAt(uv[1]);
    const Point<double, 3> right = rightEdgeAt(uv[1]);
    point = left + (right - left) * uv[0];
    return extrapolate || isOnScreenSection(point);
}

// Returns the hit on the infinite plane, before or after `from`.
std::optional<Intersection> FlatScreen::intersectWithExtrapolation(const Point<double, 3>& from,
                                                                   const Point<double, 3>& to) const {
    const Point<double, 3> direction = to - from;
    // Compute the whole product and not -y alone, so that NaN or infinity in x or z propagates.
    const double approach = dot(direction, kNormal);
    if (std::abs(approach) < kParallelTolerance) return std::nullopt;

    const double t = -(dot(from, kNormal) / approach);
    Intersection hit;
    hit.point = from + t * direction;
    hit.normalSign = quarn::detail::signOf(dot(direction, getScreenNormal(hit.point)));
    return hit;
}

IntersectionSet FlatScreen::intersect(const Point<double, 3>& from, const Point<double, 3>& to) const {
    const std::optional<Intersection> hit = intersectWithExtrapolation(from, to);
    return hit && isOnScreenSection(hit->point) ? IntersectionSet(*hit) : IntersectionSet();
}

IntersectionSet FlatScreen::intersectExtrapolatedWithSpecifiedNormal(const Point<double, 3>& from,
                                                                     const Point<double, 3>& to,
                                                                     int /*normalSign*/) const {
    const std::optional<Intersection> hit = intersectWithExtrapolation(from, to);
    return hit ? IntersectionSet(*hit) : IntersectionSet();
}

void FlatScreen::sampleHorizontally(double v, double uStart, double uEnd, int count, int row,
                                    GridSamples& samples, bool extrapolate) const {
    if (count < 2) return;
    const Point<double, 3> left = leftEdgeAt(v);
    const Point<double, 3> right = rightEdgeAt(v);
    const double step = (uEnd - uStart) / (count - 1);
    for (int i = 0; i < count; ++i) {
        const double u = i * step + uStart;
        const bool isOnScreen = u >= 0.0 && u <= 1.0 && v >= 0.0 && v <= 1.0;
        if (extrapolate || isOnScreen) samples[Point<int, 2>(i, row)] = left + (right - left) * u;
    }
}

std::vector<Point<double, 3>> FlatScreen::getDefaultCalibrationPoints(int columns, int rows) const {
    const double dx = width / (columns - 1.0);
    const double dz = height / (rows - 1.0);
    return quarn::detail::columnByColumn(columns, rows, [&](int i) {
        return [x = i * dx - width * 0.5, top = height * 0.5, dz](int j) {
            return Point<double, 3>(x, 0.0, top - j * dz);
        };
    });
}

void FlatScreen::generateGeometry(Point<double, 3>& viewPoint, std::vector<int>& indices,
                                  std::vector<Point<double, 3>>& vertices,
                                  std::vector<Point<double, 3>>& normals) const {
    const double size = std::max(width, height);
    viewPoint = Point<double, 3>(0.0, size * quarn::detail::viewDistanceFactor(size), 0.0);
    indices.assign({0, 2, 1, 1, 2, 3});
    vertices.insert(vertices.end(), {topLeft, topRight, bottomLeft, bottomRight});
    normals.insert(normals.end(), 4, kNormal);
}

bool FlatScreen::isPlanar() const {
    return true;
}

bool FlatScreen::hasParameterization() const {
    return true;
}

Point<double, 3> FlatScreen::getEyepoint() const {
    return {0.0, -std::max(width, height) / 2, 0.0};
}

Point<double, 3> FlatScreen::getCenterOfScreenHeading() const {
    return {0.0, 1.0, 0.0};
}

double FlatScreen::getMaxAngleFromHeading() const {
    return std::atan2(std::sqrt(width * width + height * height), std::max(width, height) / 2);
}

bool FlatScreen::isValid() const {
    return width >= 0.0;
}

void FlatScreen::getBounds(Point<double, 3>* min, Point<double, 3>* max) const {
    QUARN_ASSERT(min != nullptr && max != nullptr);
    *min = Point<double, 3>(topLeft[0], 0.0, bottomRight[2]);
    *max = Point<double, 3>(bottomRight[0], 0.0, topLeft[2]);
}

ScreenGeometry::DataHash FlatScreen::getUniqueDataHash() const {
    return calcUniqueDataHash({width, height});
}

ScreenGeometry::DataHash FlatScreen::calcUniqueDataHash(const FlatScreenParams& params) {
    static_assert(sizeof(params) == 2 * sizeof(double), "the digest covers the values and no padding");
    return calculateHash(reinterpret_cast<const unsigned char*>(&params), sizeof params);
}

ScreenGeometry::DataHash FlatScreen::calcUniqueDataHash(IScreenConfig* config) {
    QUARN_ASSERT(config != nullptr);
    return calcUniqueDataHash({config->getWidth(), config->getHeight()});
}
