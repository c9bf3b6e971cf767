/// \file
/// The point of each boundary ray of a channel.
#pragma once

#include <optional>
#include <utility>

#include <QuarnScreen/IScreenGeometry.h>

namespace quarn::tool {

/// Asks IScreenGeometry::intersectChannelBoundary() ray by ray, since its one answer for many rays leaves out
/// those without a point and so does not tell which ray a point belongs to.
///
/// The points of all rays one after the other are the answer to all of them at once. Not safe on several
/// threads.
class ChannelPoints {
public:
    using Ray = IScreenGeometry::PointPairs::value_type;

    /// \p channelScreen has to outlive this object.
    explicit ChannelPoints(const IScreenGeometry& channelScreen) : screen(channelScreen) {}

    /// Whether the screen itself, and not its continuation, is hit.
    [[nodiscard]] bool hits(const Ray& ray) const;

    /// Takes the side of the surface from \p ray: the channel's first ray that hits. Before that no ray has a
    /// point.
    void useSideOf(const Ray& ray);
    [[nodiscard]] bool hasSide() const { return reference.has_value(); }

    /// Where the ray meets the screen or its continuation on the channel's side.
    [[nodiscard]] std::optional<Point<double, 3>> pointOf(const Ray& ray) const;

private:
    const IScreenGeometry& screen;
    std::optional<Ray> reference;         // the ray that shows the side
    std::size_t referencePointCount = 0;  // 1 where the reference has a point itself
};

}  // namespace quarn::tool
