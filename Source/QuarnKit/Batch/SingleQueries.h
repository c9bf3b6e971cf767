/// \file
/// Queries of a screen that say how a result was found.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include <QuarnScreen/IScreenGeometry.h>
#include <QuarnScreen/Ray.h>

namespace quarn {

/// How a result was found.
enum class Found : std::uint8_t {
    None,          ///< There is no result.
    OnScreen,      ///< The result is on the screen.
    Extrapolated,  ///< The result is on the continuation of the screen.
};

/// The handling of points that are not on the screen.
enum class BeyondScreen {
    Reject,       ///< They have no result.
    Extrapolate,  ///< They are mapped by the continuation of the screen.
};

/// A mapped point, which is unspecified if there is none.
template <std::size_t N>
struct MappedPoint {
    Found found = Found::None;
    Point<double, N> point = {};
};

/// Returns the position of a UV: that of IScreenGeometry::mapInto3D() on a screen that has just
/// been loaded. A position that is not finite counts as none. Locks and caches nothing, except
/// for screens of derived classes, which are queried as they are.
[[nodiscard]] MappedPoint<3> positionAt(const IScreenGeometry& screen, const Point<double, 2>& uv,
                                        BeyondScreen beyond);

/// Returns the UV of a position, by IScreenGeometry::mapInto2D(). A UV that is not finite counts as
/// none.
[[nodiscard]] MappedPoint<2> uvAt(const IScreenGeometry& screen, const Point<double, 3>& position,
                                  BeyondScreen beyond);

/// Returns a hit with its UV, which is computed if the screen did not report it with the hit.
[[nodiscard]] Intersection withUV(Intersection hit, const IScreenGeometry& screen);

}  // namespace quarn
