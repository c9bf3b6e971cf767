/// \file
/// The point of each boundary ray of a channel. For the command channel.
#pragma once

#include <optional>
#include <utility>

#include <QuarnScreen/IScreenGeometry.h>

namespace quarn::tool {

/// Calls IScreenGeometry::intersectChannelBoundary() for each ray by itself. A call for many rays
/// omits those without a point, so that the points cannot be assigned to rays.
///
/// The points of all rays in their order equal the result of one call for all. Not safe on several
/// threads.
class ChannelPoints {
public:
    using Ray = IScreenGeometry::PointPairs::value_type;

    /// \p channelScreen has to outlive this object.
    explicit ChannelPoints(const IScreenGeometry& channelScreen) : screen(channelScreen) {}

    /// True if the ray hits the screen itself and not only its continuation.
    [[nodiscard]] bool hits(const Ray& ray) const;

    /// Takes the side of the surface from \p ray, the channel's first ray that hits. Before this
    /// call no ray has a point.
    void useSideOf(const Ray& ray);
    [[nodiscard]] bool hasSide() const { return reference.has_value(); }

    /// Returns the point where the ray meets the screen or its continuation on the channel's side.
    [[nodiscard]] std::optional<Point<double, 3>> pointOf(const Ray& ray) const;

private:
    const IScreenGeometry& screen;
    std::optional<Ray> reference;         // the ray that determines the side
    std::size_t referencePointCount = 0;  // 1 if the reference itself has a point
};

}  // namespace quarn::tool
