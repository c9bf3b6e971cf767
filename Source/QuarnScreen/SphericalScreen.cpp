#include <QuarnScreen/SphericalScreen.h>

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

// Tolerances of the section's edges, in radians, and of the sphere, as a squared ratio of distance
// and radius.
constexpr double kOnScreenTolerance = 1e-06;
// Closer to the center than this, in the screen's unit, there is no direction towards it.
constexpr double kMinCenterDistance = 1e-06;

constexpr int kDegreesPerBoundarySample = 2;

constexpr const wchar_t* kCenterTag = L"Center_Point";
constexpr const wchar_t* kRadiusTag = L"Screen_Radius";
constexpr const wchar_t* kMinThetaTag = L"Screen_MinTheta";
constexpr const wchar_t* kMaxThetaTag = L"Screen_MaxTheta";
constexpr const wchar_t* kMinPhiTag = L"Screen_MinPhi";
constexpr const wchar_t* kMaxPhiTag = L"Screen_MaxPhi";

// Returns one sample for each two whole degrees. The number is negative for a reversed range.
int boundarySamples(double range) {
    return quarn::detail::truncatedCount(range * quarn::detail::kSamplingDegreesPerRadian) /
           kDegreesPerBoundarySample;
}

}  // namespace

SphericalScreen::SphericalScreen() = default;

SphericalScreen::SphericalScreen(IScreenConfig* config) {
    SphericalScreen::updateGeometry(config);
}

SphericalScreen::SphericalScreen(Point<double, 3> center, double radius, double minTheta, double maxTheta,
                                 double minPhi, double maxPhi)
    : params{center, radius, minTheta, maxTheta, minPhi, maxPhi} {}

SphericalScreen::~SphericalScreen() = default;

const std::string& SphericalScreen::type() {
    static const std::string name = "class SphericalScreen";
    return name;
}

const std::string& SphericalScreen::getType() const {
    return type();
}

void SphericalScreen::serialize(std::wostream& out, int indent) {
    ScreenGeometryXmlHelper::serializeOpenTagHasChildren(out, indent, getType());
    XmlHelper::writeTagPoint(indent + 1, out, kCenterTag, params.center);
    quarn::detail::writeNumberTag(indent + 1, out, kRadiusTag, params.radius);
    quarn::detail::writeNumberTag(indent + 1, out, kMinThetaTag, params.minTheta);
    quarn::detail::writeNumberTag(indent + 1, out, kMaxThetaTag, params.maxTheta);
    quarn::detail::writeNumberTag(indent + 1, out, kMinPhiTag, params.minPhi);
    quarn::detail::writeNumberTag(indent + 1, out, kMaxPhiTag, params.maxPhi);
    ScreenGeometryXmlHelper::serializeCloseTagHasChildren(out, indent);
}

void SphericalScreen::deserialize(xercesc::DOMNode* node) {
    QUARN_ASSERT(node != nullptr);
    for (xercesc::DOMNode* child = node->getFirstChild(); child != nullptr; child = child->getNextSibling()) {
        quarn::detail::readPointTag(child, kCenterTag, params.center);
        quarn::detail::readNumberTag(child, kRadiusTag, params.radius);
        quarn::detail::readNumberTag(child, kMinThetaTag, params.minTheta);
        quarn::detail::readNumberTag(child, kMaxThetaTag, params.maxTheta);
        quarn::detail::readNumberTag(child, kMinPhiTag, params.minPhi);
        quarn::detail::readNumberTag(child, kMaxPhiTag, params.maxPhi);
    }
}

void SphericalScreen::updateGeometry(IScreenConfig* config) {
    QUARN_ASSERT(config != nullptr);
    params = {config->getCenter(),   config->getRadius(), config->getMinTheta(),
              config->getMaxTheta(), config->getMinPhi(), config->getMaxPhi()};
}

// Returns the hits on the whole sphere after `from`, nearest first.
quarn::detail::HitPair SphericalScreen::intersectWithExtrapolation(const Point<double, 3>& from,
                                                                   const Point<double, 3>& to) const {
    const Point<double, 3> o = from - params.center;
    const Point<double, 3> d = normalized(to - from);

    // Solve |o + t d| = radius for t.
    quarn::detail::HitPair hits;
    const double a = dot(d, d);
    const double b = 2 * dot(o, d);
    const double c = dot(o, o) - params.radius * params.radius;
    const double discriminant = b * b - c * (4 * a);
    if (!(discriminant >= 0.0)) return hits;

    const auto addInFront = [&](double t) {
        if (!(t > 0.0)) return;
        Intersection hit;
        hit.point = from + t * d;
        hit.normalSign = quarn::detail::signOf(dot(d, getScreenNormal(hit.point)));
        hits.add(hit);
    };
    // Intended: a discriminant of zero gives the same hit twice; a reader would expect one hit.
    const double root = std::sqrt(discriminant);
    addInFront((-b - root) / (2 * a));
    addInFront((root - b) / (2 * a));
    return hits;
}

IntersectionSet SphericalScreen::intersect(const Point<double, 3>& from, const Point<double, 3>& to) const {
    return intersectWithExtrapolation(from, to).filtered(
        [this](const Intersection& hit) { return isOnScreenSection(hit.point); });
}

IntersectionSet SphericalScreen::intersectExtrapolatedWithSpecifiedNormal(const Point<double, 3>& from,
                                                                          const Point<double, 3>& to,
                                                                          int normalSign) const {
    const Point<double, 3> direction = to - from;
    return intersectWithExtrapolation(from, to).filtered([&](const Intersection& hit) {
        return quarn::detail::signOf(dot(direction, getScreenNormal(hit.point))) == normalSign;
    });
}

bool SphericalScreen::isOnScreenSection(const Point<double, 3>& point) const {
    const Point<double, 3> q = (point - params.center) / params.radius;
    if (std::abs(dot(q, q) - 1.0) > kOnScreenTolerance) return false;

    const double phi = std::asin(q[2]);
    if (params.minPhi - kOnScreenTolerance > phi || phi > params.maxPhi + kOnScreenTolerance) return false;

    const double ring = std::cos(phi);
    const double theta = std::atan2(q[0] / ring, q[1] / ring);
    const double low = params.minTheta - kOnScreenTolerance;
    const double high = params.maxTheta + kOnScreenTolerance;
    if (!(theta < 0.0)) return theta >= low && high >= theta;
    const double wrapped = theta + quarn::detail::kTwoPi;
    if (high >= wrapped) return wrapped >= low;
    // Intended: no upper limit here; a reader would expect high >= theta as well.
    return theta >= low;
}

Point<double, 3> SphericalScreen::getScreenNormal(const Point<double, 3>& point) const {
    const Point<double, 3> towardsCenter = params.center - point;
    const double distance = length(towardsCenter);
    if (kMinCenterDistance > distance) return {};
    return towardsCenter / distance;
}

Point<double, 2> SphericalScreen::mapInto2D(const Point<double, 3>& point, bool /*extrapolate*/) const {
    const double phi = std::asin((point[2] - params.center[2]) / params.radius);
    const double v = 1.0 - (phi - params.minPhi) / (params.maxPhi - params.minPhi);
    const double ring = std::cos(phi);
    double theta = std::atan2(((point[0] - params.center[0]) / params.radius) / ring,
                              ((point[1] - params.center[1]) / params.radius) / ring);
    if (theta < 0.0 && params.maxTheta >= theta + quarn::detail::kTwoPi)
        theta = theta + quarn::detail::kTwoPi;
    return {(theta - params.minTheta) / (params.maxTheta - params.minTheta), v};
}

bool SphericalScreen::mapInto3D(const Point<double, 2>& uv, Point<double, 3>& point, bool extrapolate) const {
    const double u = uv[0];
    const double v = uv[1];
    const double theta = (1 - u) * params.minTheta + u * params.maxTheta;
    const double phi = (1 - v) * params.maxPhi + v * params.minPhi;
    point = Point<double, 3>(std::sin(theta) * params.radius * std::cos(phi) + params.center[0],
                             std::cos(theta) * params.radius * std::cos(phi) + params.center[1],
                             std::sin(phi) * params.radius + params.center[2]);
    return extrapolate || isOnScreenSection(point);
}

std::vector<Point<double, 3>> SphericalScreen::getDefaultCalibrationPoints(int columns, int rows) const {
    // Intended: the center is not added, unlike in mapInto3D.
    const double stepTheta = (params.maxTheta - params.minTheta) / (columns - 1.0);
    const double stepPhi = (params.minPhi - params.maxPhi) / (rows - 1.0);
    return quarn::detail::columnByColumn(columns, rows, [&](int i) {
        const double theta = i * stepTheta + params.minTheta;
        return
            [this, stepPhi, x = params.radius * std::sin(theta), y = params.radius * std::cos(theta)](int j) {
                const double phi = j * stepPhi + params.maxPhi;
                return Point<double, 3>(x * std::cos(phi), y * std::cos(phi), params.radius * std::sin(phi));
            };
    });
}

void SphericalScreen::generateGeometry(Point<double, 3>& viewPoint, std::vector<int>& indices,
                                       std::vector<Point<double, 3>>& vertices,
                                       std::vector<Point<double, 3>>& normals) const {
    viewPoint = Point<double, 3>(0.0, quarn::detail::viewDistanceFactor(params.radius) * params.radius, 0.0);
    for (int r = 0; r < quarn::detail::kDisplayGridSize; ++r) {
        const double phi =
            ((params.minPhi - params.maxPhi) * r) / quarn::detail::kDisplayGridIntervals + params.maxPhi;
        for (int c = 0; c < quarn::detail::kDisplayGridSize; ++c) {
            const double theta =
                ((params.maxTheta - params.minTheta) * c) / quarn::detail::kDisplayGridIntervals +
                params.minTheta;
            vertices.emplace_back(std::sin(theta) * params.radius * std::cos(phi) + params.center[0],
                                  std::cos(theta) * params.radius * std::cos(phi) + params.center[1],
                                  std::sin(phi) * params.radius + params.center[2]);
            normals.emplace_back(-(std::cos(phi) * std::sin(theta)), -(std::cos(theta) * std::cos(phi)),
                                 -std::sin(phi));
        }
    }
    quarn::detail::appendDisplayGridIndices(indices);
}

void SphericalScreen::sampleHorizontally(double v, double uStart, double uEnd, int count, int row,
                                         GridSamples& samples, bool extrapolate) const {
    const double phi = params.maxPhi - (params.maxPhi - params.minPhi) * v;
    const Point<double, 3> center(params.center[0], params.center[1],
                                  std::sin(phi) * params.radius + params.center[2]);
    quarn::detail::sampleArc({center, std::cos(phi) * params.radius, params.minTheta, params.maxTheta}, v,
                             uStart, uEnd, count, row, samples, extrapolate);
}

void SphericalScreen::sampleBoundary(Polylines& boundary) const {
    if (!hasParameterization()) return;
    // Intended: each number of samples applies to the edges along which the other angle changes.
    const int thetaSamples = boundarySamples(params.maxTheta - params.minTheta);
    const int phiSamples = boundarySamples(params.maxPhi - params.minPhi);
    const double thetaIntervals = thetaSamples;
    const double phiIntervals = phiSamples;

    Polylines edges(4);
    quarn::detail::PolylineSampler left(*this, edges[0]);
    for (int i = 0; i < thetaSamples; ++i) left.sample(0.0, i / thetaIntervals);
    quarn::detail::PolylineSampler bottom(*this, edges[1]);
    for (int j = 0; j < phiSamples; ++j) bottom.sample(j / phiIntervals, 1.0);
    quarn::detail::PolylineSampler right(*this, edges[2]);
    for (int i = thetaSamples; i > 0; --i) right.sample(1.0, i / thetaIntervals);
    quarn::detail::PolylineSampler top(*this, edges[3]);
    for (int j = phiSamples; j > 0; --j) top.sample(j / phiIntervals, 0.0);
    quarn::detail::appendPolylines(boundary, std::move(edges));
}

bool SphericalScreen::isPlanar() const {
    return false;
}

bool SphericalScreen::hasParameterization() const {
    return true;
}

Point<double, 3> SphericalScreen::getEyepoint() const {
    return {};
}

Point<double, 3> SphericalScreen::getCenterOfScreenHeading() const {
    const double azimuthGap = quarn::detail::kTwoPi - (params.maxTheta - params.minTheta);
    const double topGap = quarn::detail::kPi - 2 * params.maxPhi;
    const double bottomGap = 2 * params.minPhi + quarn::detail::kPi;
    if (azimuthGap >= topGap && azimuthGap >= bottomGap) {
        const double theta = (params.maxTheta + params.minTheta) * 0.5;
        return {std::sin(theta), std::cos(theta), 0.0};
    }
    return {0.0, 0.0, bottomGap >= topGap ? 1.0 : -1.0};
}

double SphericalScreen::getMaxAngleFromHeading() const {
    const Point<double, 3> heading = normalized(getCenterOfScreenHeading());
    Polylines boundary;
    sampleBoundary(boundary);
    double largest = 0.0;
    for (const auto& polyline : boundary) {
        for (const Point<double, 3>& point : polyline) {
            const double angle = std::acos(dot(normalized(point), heading));
            if (angle > largest) largest = angle;
        }
    }
    return largest;
}

bool SphericalScreen::isValid() const {
    return params.radius >= 0.0;
}

void SphericalScreen::getBounds(Point<double, 3>* min, Point<double, 3>* max) const {
    QUARN_ASSERT(min != nullptr && max != nullptr);
    const Point<double, 3> halfDiagonal(params.radius, params.radius, params.radius);
    *min = params.center - halfDiagonal;
    *max = params.center + halfDiagonal;
}

ScreenGeometry::DataHash SphericalScreen::getUniqueDataHash() const {
    return calcUniqueDataHash(params);
}

ScreenGeometry::DataHash SphericalScreen::calcUniqueDataHash(const SphericalScreenParams& record) {
    static_assert(sizeof(record) == 8 * sizeof(double), "the digest covers the values and no padding");
    return calculateHash(reinterpret_cast<const unsigned char*>(&record), sizeof record);
}

ScreenGeometry::DataHash SphericalScreen::calcUniqueDataHash(IScreenConfig* config) {
    QUARN_ASSERT(config != nullptr);
    SphericalScreenParams record;
    record.maxPhi = config->getMaxPhi();
    record.minPhi = config->getMinPhi();
    record.maxTheta = config->getMaxTheta();
    record.minTheta = config->getMinTheta();
    record.radius = config->getRadius();
    record.center = config->getCenter();
    return calcUniqueDataHash(record);
}
