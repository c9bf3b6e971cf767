#include <QuarnScreen/RuledSurfaceScreen.h>

#include <algorithm>
#include <cmath>

#include <Common/Detail/Assert.h>
#include <QuarnScreen/Detail/Shapes/Angles.h>
#include <QuarnScreen/Detail/Shapes/CalibrationGrid.h>
#include <QuarnScreen/Detail/Shapes/DisplayGrid.h>
#include <QuarnScreen/Detail/Xml/XmlValues.h>
#include <QuarnScreen/ScreenGeometryXmlHelper.h>

namespace {

constexpr const wchar_t* kWidthTag = L"Screen_Width";
constexpr const wchar_t* kHeightTag = L"Screen_Height";
constexpr const wchar_t* kMinThetaTag = L"Screen_MinTheta";
constexpr const wchar_t* kMaxThetaTag = L"Screen_MaxTheta";
constexpr const wchar_t* kMinPhiTag = L"Screen_MinPhi";
constexpr const wchar_t* kMaxPhiTag = L"Screen_MaxPhi";

// Returns a position on an arc over a chord along X, from -X at t = 0 to +X at t = 1.
Point<double, 3> alongArc(double t, double arc, double radius, const Point<double, 3>& center) {
    const double angle = arc * t - arc * 0.5;
    return {std::sin(angle) * radius + center[0], std::cos(angle) * radius + center[1], center[2] + 0.0};
}

Point<double, 3> alongArcDerivative(double t, double arc, double radius) {
    const double angle = arc * t - arc * 0.5;
    return {std::cos(angle) * arc * radius, -(std::sin(angle) * arc * radius), 0.0};
}

}  // namespace

RuledSurfaceScreen::RuledSurfaceScreen() = default;

RuledSurfaceScreen::RuledSurfaceScreen(double initialWidth, double initialHeight, double initialMinTheta,
                                       double initialMaxTheta, double initialMinPhi, double initialMaxPhi)
    : height(initialHeight), width(initialWidth) {
    reset(initialMinTheta, initialMaxTheta, initialMinPhi, initialMaxPhi);
}

RuledSurfaceScreen::RuledSurfaceScreen(IScreenConfig* config) {
    RuledSurfaceScreen::updateGeometry(config);
}

RuledSurfaceScreen::~RuledSurfaceScreen() = default;

RuledSurfaceScreenParams RuledSurfaceScreen::getParams() const {
    return {width, height, minTheta, maxTheta, minPhi, maxPhi};
}

const std::string& RuledSurfaceScreen::type() {
    static const std::string name = "class RuledSurfaceScreen";
    return name;
}

const std::string& RuledSurfaceScreen::getType() const {
    return type();
}

void RuledSurfaceScreen::serialize(std::wostream& out, int indent) {
    ScreenGeometryXmlHelper::serializeOpenTagHasChildren(out, indent, getType());
    quarn::detail::writeNumberTag(indent + 1, out, kWidthTag, width);
    quarn::detail::writeNumberTag(indent + 1, out, kHeightTag, height);
    quarn::detail::writeNumberTag(indent + 1, out, kMinThetaTag, minTheta);
    quarn::detail::writeNumberTag(indent + 1, out, kMaxThetaTag, maxTheta);
    quarn::detail::writeNumberTag(indent + 1, out, kMinPhiTag, minPhi);
    quarn::detail::writeNumberTag(indent + 1, out, kMaxPhiTag, maxPhi);
    ScreenGeometryXmlHelper::serializeCloseTagHasChildren(out, indent);
}

void RuledSurfaceScreen::deserialize(xercesc::DOMNode* node) {
    QUARN_ASSERT(node != nullptr);
    for (xercesc::DOMNode* child = node->getFirstChild(); child != nullptr; child = child->getNextSibling()) {
        quarn::detail::readNumberTag(child, kWidthTag, width);
        quarn::detail::readNumberTag(child, kHeightTag, height);
        quarn::detail::readNumberTag(child, kMinThetaTag, minTheta);
        quarn::detail::readNumberTag(child, kMaxThetaTag, maxTheta);
        quarn::detail::readNumberTag(child, kMinPhiTag, minPhi);
        quarn::detail::readNumberTag(child, kMaxPhiTag, maxPhi);
    }
    reset(minTheta, maxTheta, minPhi, maxPhi);
}

void RuledSurfaceScreen::updateGeometry(IScreenConfig* config) {
    QUARN_ASSERT(config != nullptr);
    height = config->getHeight();
    width = config->getWidth();
    const double newMaxPhi = config->getMaxPhi();
    const double newMinPhi = config->getMinPhi();
    const double newMaxTheta = config->getMaxTheta();
    const double newMinTheta = config->getMinTheta();
    reset(newMinTheta, newMaxTheta, newMinPhi, newMaxPhi);
}

void RuledSurfaceScreen::reset(double newMinTheta, double newMaxTheta, double newMinPhi, double newMaxPhi) {
    minTheta = newMinTheta;
    maxTheta = newMaxTheta;
    minPhi = newMinPhi;
    maxPhi = newMaxPhi;
    topArc = maxTheta - minTheta;
    bottomArc = maxPhi - minPhi;
    topRadius = (width * 0.5) / std::sin(topArc * 0.5);
    bottomRadius = (width * 0.5) / std::sin(bottomArc * 0.5);
    topCenter = Point<double, 3>(0.0, -(std::cos(topArc * 0.5) * topRadius), height * 0.5);
    bottomCenter = Point<double, 3>(0.0, -(std::cos(bottomArc * 0.5) * bottomRadius), height * -0.5);

    // The search range ends where the arc of the larger angle is a quarter circle from its apex.
    // Below 180 degrees that is beyond the screen, so that hits can be extrapolated.
    const double halfCircles = std::max(topArc, bottomArc) / quarn::detail::kPi;
    searchHigh = 0.5 + 0.5 / halfCircles;
    searchLow = 0.5 - 0.5 / halfCircles;
}

Point<double, 3> RuledSurfaceScreen::alongTopCurve(double t) const {
    return alongArc(t, topArc, topRadius, topCenter);
}

Point<double, 3> RuledSurfaceScreen::alongBottomCurve(double t) const {
    return alongArc(t, bottomArc, bottomRadius, bottomCenter);
}

Point<double, 3> RuledSurfaceScreen::alongTopCurveDerivative(double t) const {
    return alongArcDerivative(t, topArc, topRadius);
}

Point<double, 3> RuledSurfaceScreen::alongBottomCurveDerivative(double t) const {
    return alongArcDerivative(t, bottomArc, bottomRadius);
}

bool RuledSurfaceScreen::mapInto3D(const Point<double, 2>& uv, Point<double, 3>& point,
                                   bool extrapolate) const {
    const Point<double, 3> top = alongTopCurve(uv[0]);
    const Point<double, 3> bottom = alongBottomCurve(uv[0]);
    point = (bottom - top) * uv[1] + top;
    return extrapolate || isOnScreenSection(point);
}

std::vector<Point<double, 3>> RuledSurfaceScreen::getDefaultCalibrationPoints(int columns, int rows) const {
    return quarn::detail::columnByColumn(columns, rows, [&](int i) {
        return [this, u = i / (columns - 1.0), rows](int j) {
            Point<double, 3> point;
            mapInto3D(Point<double, 2>(u, j / (rows - 1.0)), point, true);
            return point;
        };
    });
}

void RuledSurfaceScreen::sampleHorizontally(double v, double uStart, double uEnd, int count, int row,
                                            GridSamples& samples, bool extrapolate) const {
    if (count < 2) return;
    const double stepU = (uEnd - uStart) / (count - 1);
    for (int i = 0; i < count; ++i) {
        Point<double, 3> point;
        if (mapInto3D(Point<double, 2>(i * stepU + uStart, v), point, extrapolate))
            samples[Point<int, 2>(i, row)] = point;
    }
}

void RuledSurfaceScreen::generateGeometry(Point<double, 3>& viewPoint, std::vector<int>& indices,
                                          std::vector<Point<double, 3>>& vertices,
                                          std::vector<Point<double, 3>>& normals) const {
    const double size = std::max(width * 0.5, height * 0.5);
    viewPoint = Point<double, 3>(0.0, size * quarn::detail::viewDistanceFactor(size), 0.0);
    for (int i = 0; i < quarn::detail::kDisplayGridSize; ++i) {
        for (int j = 0; j < quarn::detail::kDisplayGridSize; ++j) {
            Point<double, 3> point;
            mapInto3D(Point<double, 2>(i / quarn::detail::kDisplayGridIntervals,
                                       j / quarn::detail::kDisplayGridIntervals),
                      point, true);
            vertices.push_back(point);
        }
    }
    appendDisplayNormals(vertices, normals);
    quarn::detail::appendDisplayGridIndices(indices);
}

// Computes normals by finite differences to the next vertex, or from the previous one at an end.
void RuledSurfaceScreen::appendDisplayNormals(const std::vector<Point<double, 3>>& vertices,
                                              std::vector<Point<double, 3>>& normals) const {
    constexpr std::size_t kSize = quarn::detail::kDisplayGridSize;
    for (std::size_t i = 0; i < kSize; ++i) {
        for (std::size_t j = 0; j < kSize; ++j) {
            const std::size_t k = i * kSize + j;
            const Point<double, 3>& here = vertices[k];
            const Point<double, 3> alongU =
                i + 1 < kSize ? vertices[k + kSize] - here : here - vertices[k - kSize];
            // Intended: the last row uses a position as a difference; a reader would expect here -
            // previous.
            const Point<double, 3> alongV =
                j + 1 < kSize ? vertices[k + 1] - here : 2.0 * here - vertices[k - 1];
            normals.push_back(normalized(cross(normalized(alongV), normalized(alongU))));
        }
    }
}

bool RuledSurfaceScreen::isPlanar() const {
    return false;
}

bool RuledSurfaceScreen::hasParameterization() const {
    return true;
}

Point<double, 3> RuledSurfaceScreen::getEyepoint() const {
    return (topCenter + bottomCenter) * 0.5;
}

Point<double, 3> RuledSurfaceScreen::getCenterOfScreenHeading() const {
    return {0.0, 1.0, 0.0};
}

double RuledSurfaceScreen::getMaxAngleFromHeading() const {
    const Point<double, 3> heading = normalized(getCenterOfScreenHeading());
    const Point<double, 3> corner(width * 0.5, 0.0, height * 0.5);
    // Intended: the vector to the corner is not normalized; a reader would expect a cosine.
    return std::acos(dot(corner - getEyepoint(), heading));
}

bool RuledSurfaceScreen::isValid() const {
    return width >= 0.0;
}

void RuledSurfaceScreen::getBounds(Point<double, 3>* /*min*/, Point<double, 3>* /*max*/) const {}

ScreenGeometry::DataHash RuledSurfaceScreen::getUniqueDataHash() const {
    return calcUniqueDataHash(getParams());
}

ScreenGeometry::DataHash RuledSurfaceScreen::calcUniqueDataHash(const RuledSurfaceScreenParams& record) {
    static_assert(sizeof(record) == 6 * sizeof(double), "the digest covers the values and no padding");
    return calculateHash(reinterpret_cast<const unsigned char*>(&record), sizeof record);
}

ScreenGeometry::DataHash RuledSurfaceScreen::calcUniqueDataHash(IScreenConfig* config) {
    QUARN_ASSERT(config != nullptr);
    RuledSurfaceScreenParams record;
    record.maxPhi = config->getMaxPhi();
    record.minPhi = config->getMinPhi();
    record.maxTheta = config->getMaxTheta();
    record.minTheta = config->getMinTheta();
    // Intended: height and width are swapped; a reader would expect each in its own field. Stored
    // digests depend on it.
    record.height = config->getWidth();
    record.width = config->getHeight();
    return calcUniqueDataHash(record);
}
