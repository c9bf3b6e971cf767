/// \file
/// A screen whose answers a test writes itself.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <QuarnScreen/ScreenGeometry.h>

#include "Support/GeometryBits.h"

namespace quarn::test {

/// A screen that answers with the functions that a test gives it, and notes the calls of the
/// queries.
///
/// Without any, it maps UV (u, v) to the position (u, 0, -v) and back, is hit by nothing, and has
/// no bounds.
class ScriptedScreen : public ScreenGeometry {
public:
    bool parameterized = true;
    std::function<IntersectionSet(const Point3&, const Point3&)> onIntersect;
    std::function<IntersectionSet(const Point3&, const Point3&, int)> onExtrapolated;
    std::function<Point3(const Point3&)> onNormal;
    std::function<Point2(const Point3&, bool)> onMapInto2D;
    std::function<bool(const Point2&, Point3&, bool)> onMapInto3D;
    std::function<void(Point3*, Point3*)> onBounds;
    /// The base's answer where it is empty.
    std::function<Point3(const Point3&)> onClosestPoint;

    /// Names of the scripted queries in the order of their calls.
    mutable std::vector<std::string> calls;

    [[nodiscard]] IntersectionSet intersect(const Point3& from, const Point3& to) const override {
        calls.emplace_back("intersect");
        return onIntersect ? onIntersect(from, to) : IntersectionSet();
    }
    [[nodiscard]] IntersectionSet intersectExtrapolatedWithSpecifiedNormal(const Point3& from,
                                                                           const Point3& to,
                                                                           int normalSign) const override {
        calls.emplace_back("intersectExtrapolated");
        return onExtrapolated ? onExtrapolated(from, to, normalSign) : IntersectionSet();
    }
    [[nodiscard]] Point3 getScreenNormal(const Point3& point) const override {
        calls.emplace_back("getScreenNormal");
        return onNormal ? onNormal(point) : Point3(0.0, -1.0, 0.0);
    }
    [[nodiscard]] Point2 mapInto2D(const Point3& point, bool extrapolate) const override {
        calls.emplace_back("mapInto2D");
        return onMapInto2D ? onMapInto2D(point, extrapolate) : Point2(point[0], -point[2]);
    }
    bool mapInto3D(const Point2& uv, Point3& point, bool extrapolate) const override {
        calls.emplace_back("mapInto3D");
        if (onMapInto3D) return onMapInto3D(uv, point, extrapolate);
        point = Point3(uv[0], 0.0, -uv[1]);
        return true;
    }
    [[nodiscard]] Point3 getClosestPoint(const Point3& point) const override {
        calls.emplace_back("getClosestPoint");
        return onClosestPoint ? onClosestPoint(point) : ScreenGeometry::getClosestPoint(point);
    }
    void getBounds(Point3* min, Point3* max) const override {
        calls.emplace_back("getBounds");
        if (onBounds) onBounds(min, max);
    }
    [[nodiscard]] bool hasParameterization() const override { return parameterized; }

    // Operations that the shared algorithms never call.
    void serialize(std::wostream& /*out*/, int /*indent*/) override { calls.emplace_back("serialize"); }
    void deserialize(xercesc::DOMNode* /*node*/) override { calls.emplace_back("deserialize"); }
    void updateGeometry(IScreenConfig* /*config*/) override { calls.emplace_back("updateGeometry"); }
    void sampleHorizontally(double /*v*/, double /*uStart*/, double /*uEnd*/, int /*count*/, int /*row*/,
                            GridSamples& /*samples*/, bool /*extrapolate*/) const override {
        calls.emplace_back("sampleHorizontally");
    }
    [[nodiscard]] bool isOnScreenSection(const Point3& /*point*/) const override {
        calls.emplace_back("isOnScreenSection");
        return false;
    }
    [[nodiscard]] std::vector<Point3> getDefaultCalibrationPoints(int /*columns*/,
                                                                  int /*rows*/) const override {
        return {};
    }
    void generateGeometry(Point3& /*viewPoint*/, std::vector<int>& /*indices*/,
                          std::vector<Point3>& /*vertices*/,
                          std::vector<Point3>& /*normals*/) const override {}
    [[nodiscard]] bool isPlanar() const override { return false; }
    [[nodiscard]] Point3 getEyepoint() const override { return {}; }
    [[nodiscard]] Point3 getCenterOfScreenHeading() const override { return {}; }
    [[nodiscard]] double getMaxAngleFromHeading() const override { return 0.0; }
    [[nodiscard]] DataHash getUniqueDataHash() const override { return {}; }
    [[nodiscard]] const std::string& getType() const override { return typeName; }

private:
    std::string typeName = "class ScriptedScreen";
};

/// A hit of which all fields are known.
inline Intersection makeHit(const Point3& point, int normalSign = 1) {
    Intersection hit;
    hit.point = point;
    hit.normalSign = normalSign;
    return hit;
}

inline IntersectionSet makeHits(const std::vector<Intersection>& hits) {
    IntersectionSet set;
    for (const Intersection& hit : hits) set.add(hit);
    return set;
}

}  // namespace quarn::test
