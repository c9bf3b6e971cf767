/// \file
/// A mesh screen whose virtual operations a test replaces, one by one.
#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "Support/Mesh/TriangleScreen.h"

namespace quarn::test {

/// Answers as TriangleScreen does wherever no function is set. Where the functions and the counter
/// are used by several threads, it is the test that keeps them apart.
class OverriddenScreen : public TriangleScreen {
public:
    using TriangleScreen::TriangleScreen;

    std::function<void(Polylines&)> onSampleBoundary;
    std::function<void(std::vector<Point2>&)> onSampleBoundaryUV;
    std::function<bool(const Point2&, Point3&, bool)> onMapInto3D;
    std::function<Point3()> onGetEyepoint;
    std::function<Point3()> onGetHeading;
    std::function<void(double v, int count, int row, GridSamples&, bool)> onSampleHorizontally;

    void sampleBoundary(Polylines& out) const override {
        if (onSampleBoundary)
            onSampleBoundary(out);
        else
            TriangleScreen::sampleBoundary(out);
    }
    void sampleBoundaryUV(std::vector<Point2>& outline) const override {
        if (onSampleBoundaryUV)
            onSampleBoundaryUV(outline);
        else
            TriangleScreen::sampleBoundaryUV(outline);
    }
    bool mapInto3D(const Point2& uv, Point3& result, bool extrapolate) const override {
        return onMapInto3D ? onMapInto3D(uv, result, extrapolate) : ownMapInto3D(uv, result, extrapolate);
    }
    /// What mapInto3D() answers where it is not replaced.
    bool ownMapInto3D(const Point2& uv, Point3& result, bool extrapolate) const {
        return TriangleScreen::mapInto3D(uv, result, extrapolate);
    }
    void sampleHorizontally(double v, double uStart, double uEnd, int count, int row, GridSamples& samples,
                            bool extrapolate) const override {
        if (onSampleHorizontally)
            onSampleHorizontally(v, count, row, samples, extrapolate);
        else
            TriangleScreen::sampleHorizontally(v, uStart, uEnd, count, row, samples, extrapolate);
    }
    [[nodiscard]] Point3 getEyepoint() const override {
        return onGetEyepoint ? onGetEyepoint() : TriangleScreen::getEyepoint();
    }
    [[nodiscard]] Point3 getCenterOfScreenHeading() const override {
        return onGetHeading ? onGetHeading() : TriangleScreen::getCenterOfScreenHeading();
    }
};

}  // namespace quarn::test
