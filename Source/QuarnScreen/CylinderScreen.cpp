#include <QuarnScreen/CylinderScreen.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include <Common/Detail/Assert.h>
#include <Common/XmlHelper.h>
#include <QuarnScreen/Detail/Platform/Sign.h>
#include <QuarnScreen/Detail/Shapes/Angles.h>
#include <QuarnScreen/Detail/Shapes/ArcSampling.h>
#include <QuarnScreen/Detail/Shapes/CalibrationGrid.h>
#include <QuarnScreen/Detail/Shapes/DisplayGrid.h>
#include <QuarnScreen/Detail/Shapes/HitPair.h>
#include <QuarnScreen/Detail/Shapes/PolylineSampler.h>
#include <QuarnScreen/Detail/Xml/XmlValues.h>
#include <QuarnScreen/ScreenGeometryXmlHelper.h>

namespace {

// Tolerances of the section's edges in z, in the screen's unit, and in azimuth, in radians, and of
// the wall, in squared units.
constexpr double kOnScreenTolerance = 1e-06;
// Closer to the axis than this, in the screen's unit, there is no direction towards it.
constexpr double kMinAxisDistance = 1e-06;

constexpr int kPointsPerRuling = 20;
constexpr double kIntervalsPerRuling = 20.0;
constexpr double kBoundarySamplesPerDegree = 0.5;

constexpr const wchar_t* kCenterTag = L"Center_Point";
constexpr const wchar_t* kHeightTag = L"Screen_Height";
constexpr const wchar_t* kRadiusTag = L"Screen_Radius";
constexpr const wchar_t* kMinThetaTag = L"Screen_MinTheta";
constexpr const wchar_t* kMaxThetaTag = L"Screen_MaxTheta";

}  // namespace

CylinderScreen::CylinderScreen() = default;

CylinderScreen::CylinderScreen(IScreenConfig* config) {
    CylinderScreen::updateGeometry(config);
}

CylinderScreen::CylinderScreen(Point<double, 3> center, double radius, double minTheta, double maxTheta,
                               double height)
    : params{center, radius, minTheta, maxTheta, height} {}

CylinderScreen::~CylinderScreen() = default;

const std::string& CylinderScreen::type() {
    static const std::string name = "class CylinderScreen";
    return name;
}

const std::string& CylinderScreen::getType() const {
    return type();
}

void CylinderScreen::serialize(std::wostream& out, int indent) {
    ScreenGeometryXmlHelper::serializeOpenTagHasChildren(out, indent, getType());
    XmlHelper::writeTagPoint(indent + 1, out, kCenterTag, params.center);
    quarn::detail::writeNumberTag(indent + 1, out, kHeightTag, params.height);
    quarn::detail::writeNumberTag(indent + 1, out, kRadiusTag, params.radius);
    quarn::detail::writeNumberTag(indent + 1, out, kMinThetaTag, params.minTheta);
    quarn::detail::writeNumberTag(indent + 1, out, kMaxThetaTag, params.maxTheta);
    ScreenGeometryXmlHelper::serializeCloseTagHasChildren(out, indent);
}

void CylinderScreen::deserialize(xercesc::DOMNode* node) {
    QUARN_ASSERT(node != nullptr);
    for (xercesc::DOMNode* child = node->getFirstChild(); child != nullptr; child = child->getNextSibling()) {
        quarn::detail::readPointTag(child, kCenterTag, params.center);
        quarn::detail::readNumberTag(child, kHeightTag, params.height);
        quarn::detail::readNumberTag(child, kRadiusTag, params.radius);
        quarn::detail::readNumberTag(child, kMinThetaTag, params.minTheta);
        quarn::detail::readNumberTag(child, kMaxThetaTag, params.maxTheta);
    }
}

void CylinderScreen::updateGeometry(IScreenConfig* config) {
    QUARN_ASSERT(config != nullptr);
    params = {config->getCenter(), config->getRadius(), config->getMinTheta(), config->getMaxTheta(),
              config->getHeight()};
}

// Returns the hits on the infinite cylinder after `from`, nearest first.
quarn::detail::HitPair CylinderScreen::intersectWithExtrapolation(const Point<double, 3>& from,
                                                                  const Point<double, 3>& to) const {
    const double ox = from[0] - params.center[0];
    const double oy = from[1] - params.center[1];
    // Intended: `to` is not shifted by the center here; a reader would expect to - from.
    const double dx = to[0] - ox;
    const double dy = to[1] - oy;

    // Solve |o + t d| = radius for t.
    quarn::detail::HitPair hits;
    const double a = dy * dy + dx * dx;
    const double b = 2 * (dy * oy + dx * ox);
    const double c = oy * oy + ox * ox - params.radius * params.radius;
    if (a == 0.0) return hits;
    const double discriminant = b * b - c * (4 * a);
    if (discriminant < 0.0) return hits;

    const Point<double, 3> direction = to - from;
    const auto addInFront = [&](double t) {
        if (!(t > 0.0)) return;
        Intersection hit;
        hit.point = from + t * direction;
        hit.normalSign = quarn::detail::signOf(dot(direction, getScreenNormal(hit.point)));
        hits.add(hit);
    };
    if (discriminant == 0.0) {
        addInFront(b / (-2 * a));
        return hits;
    }
    const double root = std::sqrt(discriminant);
    addInFront((-b - root) / (2 * a));
    addInFront((root - b) / (2 * a));
    return hits;
}

IntersectionSet CylinderScreen::intersect(const Point<double, 3>& from, const Point<double, 3>& to) const {
    return intersectWithExtrapolation(from, to).filtered(
        [this](const Intersection& hit) { return isOnScreenSection(hit.point); });
}

IntersectionSet CylinderScreen::intersectExtrapolatedWithSpecifiedNormal(const Point<double, 3>& from,
                                                                         const Point<double, 3>& to,
                                                                         int normalSign) const {
    const Point<double, 3> direction = to - from;
    return intersectWithExtrapolation(from, to).filtered([&](const Intersection& hit) {
        return quarn::detail::signOf(dot(direction, getScreenNormal(hit.point))) == normalSign;
    });
}

bool CylinderScreen::isOnScreenSection(const Point<double, 3>& point) const {
    const double dz = point[2] - params.center[2];
    if (dz > params.height * 0.5 + kOnScreenTolerance) return false;
    if (params.height * -0.5 - kOnScreenTolerance > dz) return false;

    const double dx = point[0] - params.center[0];
    const double dy = point[1] - params.center[1];
    if (std::abs(dy * dy + dx * dx - params.radius * params.radius) > kOnScreenTolerance) return false;

    // Bring the azimuth into the range by full turns, upwards first.
    const double low = std::min(params.minTheta, params.maxTheta) - kOnScreenTolerance;
    const double high = std::max(params.minTheta, params.maxTheta) + kOnScreenTolerance;
    double theta = std::atan2(dx / params.radius, dy / params.radius);
    while (low > theta) theta += quarn::detail::kTwoPi;
    while (theta > high) theta -= quarn::detail::kTwoPi;
    return theta >= low && high >= theta;
}

Point<double, 3> CylinderScreen::getScreenNormal(const Point<double, 3>& point) const {
    const Point<double, 3> towardsAxis(params.center[0] - point[0], params.center[1] - point[1], 0.0);
    const double distance = length(towardsAxis);
    if (kMinAxisDistance > distance) return {};
    return towardsAxis / distance;
}

Point<double, 2> CylinderScreen::mapInto2D(const Point<double, 3>& point, bool /*extrapolate*/) const {
    const double v = (params.height * 0.5 - (point[2] - params.center[2])) / params.height;
    double theta = std::atan2((point[0] - params.center[0]) / params.radius,
                              (point[1] - params.center[1]) / params.radius);
    if (theta < 0.0) {
        const double high = std::max(params.minTheta, params.maxTheta);
        if (high >= theta + quarn::detail::kTwoPi) theta = theta + quarn::detail::kTwoPi;
    }
    return {(theta - params.minTheta) / (params.maxTheta - params.minTheta), v};
}

bool CylinderScreen::mapInto3D(const Point<double, 2>& uv, Point<double, 3>& point, bool extrapolate) const {
    const double u = uv[0];
    const double v = uv[1];
    const double theta = (1 - u) * params.minTheta + u * params.maxTheta;
    const double halfHeight = params.height * 0.5;
    point = Point<double, 3>(std::sin(theta) * params.radius + params.center[0],
                             std::cos(theta) * params.radius + params.center[1],
                             (1 - v) * halfHeight - halfHeight * v + params.center[2]);
    return extrapolate || isOnScreenSection(point);
}

std::vector<Point<double, 3>> CylinderScreen::getDefaultCalibrationPoints(int columns, int rows) const {
    // Intended: the center is not added, unlike in mapInto3D.
    const double stepTheta = (params.maxTheta - params.minTheta) / (columns - 1.0);
    const double stepZ = params.height / (rows - 1.0);
    return quarn::detail::columnByColumn(columns, rows, [&](int i) {
        const double theta = i * stepTheta + params.minTheta;
        return [x = params.radius * std::sin(theta), y = params.radius * std::cos(theta), stepZ,
                top = params.height * 0.5](int j) { return Point<double, 3>(x, y, top - j * stepZ); };
    });
}

void CylinderScreen::generateGeometry(Point<double, 3>& viewPoint, std::vector<int>& indices,
                                      std::vector<Point<double, 3>>& vertices,
                                      std::vector<Point<double, 3>>& normals) const {
    const double size = std::max(params.radius, params.height * 0.5);
    viewPoint = Point<double, 3>(0.0, quarn::detail::viewDistanceFactor(size) * size, 0.0);

    // Intended: the center is not added to the vertices.
    for (int r = 0; r < quarn::detail::kDisplayGridSize; ++r) {
        const double z = params.height * 0.5 - (r * params.height) / quarn::detail::kDisplayGridIntervals;
        for (int c = 0; c < quarn::detail::kDisplayGridSize; ++c) {
            const double theta =
                ((params.maxTheta - params.minTheta) * c) / quarn::detail::kDisplayGridIntervals +
                params.minTheta;
            const double sine = std::sin(theta);
            const double cosine = std::cos(theta);
            vertices.emplace_back(sine * params.radius, cosine * params.radius, z);
            normals.emplace_back(-sine, -cosine, 0.0);
        }
    }
    quarn::detail::appendDisplayGridIndices(indices);
}

void CylinderScreen::sampleHorizontally(double v, double uStart, double uEnd, int count, int row,
                                        GridSamples& samples, bool extrapolate) const {
    const double zOffset = params.height * 0.5 - params.height * v;
    const Point<double, 3> center(params.center[0], params.center[1], zOffset + params.center[2]);
    quarn::detail::sampleArc({center, params.radius, params.minTheta, params.maxTheta}, v, uStart, uEnd,
                             count, row, samples, extrapolate);
}

void CylinderScreen::sampleBoundary(Polylines& boundary) const {
    if (!hasParameterization()) return;
    const double arc = params.maxTheta - params.minTheta;
    const int arcSamples = quarn::detail::truncatedCount(
        std::abs(arc * quarn::detail::kSamplingDegreesPerRadian * kBoundarySamplesPerDegree));
    const double arcIntervals = arcSamples;
    const bool isFullCircle = std::abs(arc) >= quarn::detail::kTwoPi;
    const int rulingSamples = isFullCircle ? 0 : kPointsPerRuling;

    Polylines edges(4);
    quarn::detail::PolylineSampler top(*this, edges[0]);
    for (int i = 0; i < arcSamples; ++i) top.sample(i / arcIntervals, 0.0);
    quarn::detail::PolylineSampler right(*this, edges[1]);
    for (int j = 0; j < rulingSamples; ++j) right.sample(1.0, j / kIntervalsPerRuling);
    quarn::detail::PolylineSampler bottom(*this, edges[2]);
    for (int i = arcSamples; i > 0; --i) bottom.sample(i / arcIntervals, 1.0);
    quarn::detail::PolylineSampler left(*this, edges[3]);
    for (int j = rulingSamples; j > 0; --j) left.sample(0.0, j / kIntervalsPerRuling);
    quarn::detail::appendPolylines(boundary, std::move(edges));
}

bool CylinderScreen::isPlanar() const {
    return false;
}

bool CylinderScreen::hasParameterization() const {
    return true;
}

Point<double, 3> CylinderScreen::getEyepoint() const {
    return {};
}

Point<double, 3> CylinderScreen::getCenterOfScreenHeading() const {
    const double theta = (params.maxTheta + params.minTheta) * 0.5;
    return {std::sin(theta), std::cos(theta), 0.0};
}

double CylinderScreen::getMaxAngleFromHeading() const {
    const Point<double, 3> heading = normalized(getCenterOfScreenHeading());
    // Intended: the azimuth of the corner is measured from +Y and not from the heading.
    const double azimuth = std::max(std::abs(params.minTheta), std::abs(params.maxTheta));
    const double elevation = std::atan2(params.height * 0.5, params.radius);
    const Point<double, 3> corner =
        normalized(Point<double, 3>(std::sin(azimuth) * std::cos(elevation),
                                    std::cos(azimuth) * std::cos(elevation), std::sin(elevation)));
    return std::acos(dot(corner, heading));
}

bool CylinderScreen::isValid() const {
    return params.radius >= 0.0;
}

void CylinderScreen::getBounds(Point<double, 3>* /*min*/, Point<double, 3>* /*max*/) const {}

ScreenGeometry::DataHash CylinderScreen::getUniqueDataHash() const {
    return calcUniqueDataHash(params);
}

ScreenGeometry::DataHash CylinderScreen::calcUniqueDataHash(const CylinderScreenParams& record) {
    static_assert(sizeof(record) == 7 * sizeof(double), "the digest covers the values and no padding");
    return calculateHash(reinterpret_cast<const unsigned char*>(&record), sizeof record);
}

ScreenGeometry::DataHash CylinderScreen::calcUniqueDataHash(IScreenConfig* config) {
    QUARN_ASSERT(config != nullptr);
    CylinderScreenParams record;
    record.height = config->getHeight();
    record.maxTheta = config->getMaxTheta();
    record.minTheta = config->getMinTheta();
    record.radius = config->getRadius();
    record.center = config->getCenter();
    return calcUniqueDataHash(record);
}
