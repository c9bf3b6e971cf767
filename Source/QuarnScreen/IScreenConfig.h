/// \file
/// Parameters of a screen that the caller supplies.
#pragma once

#include <Common/Export.h>
#include <QuarnScreen/Point.h>

/// The parameters of a screen, implemented by the caller.
///
/// Lengths are in the screen's unit, angles in radians. A screen reads only the values that it
/// needs; the others may be anything.
///
/// Ownership: the library reads a config only during a call and keeps no pointer to it. It may read
/// a value more than once and in any order, so a config must return the same values throughout a
/// call.
///
/// \code{.cpp}
/// class Dome : public IScreenConfig {
///     double getRadius() const override { return 6.0; }
///     double getMaxPhi() const override { return 1.5; }
///     // ... and the other six getters.
/// };
/// \endcode
class QUARNSCREEN_EXPORT IScreenConfig {
public:
    virtual ~IScreenConfig();

    /// Reserved: the library never calls these two operations, and callers need not override them.
    virtual void firstReserved();
    virtual void secondReserved();

    /// Returns the center of the analytic screen: cylinder and sphere.
    [[nodiscard]] virtual Point<double, 3> getCenter() const = 0;
    /// Returns the width of the screen: flat and ruled.
    [[nodiscard]] virtual double getWidth() const = 0;
    /// Returns the height of the screen: flat, cylinder and ruled.
    [[nodiscard]] virtual double getHeight() const = 0;
    /// Returns the radius: cylinder and sphere. A negative radius makes the screen invalid.
    [[nodiscard]] virtual double getRadius() const = 0;
    /// Returns the azimuth of u = 0: cylinder and sphere; ruled: the lower limit of the top arc.
    [[nodiscard]] virtual double getMinTheta() const = 0;
    /// Returns the azimuth of u = 1: cylinder and sphere; ruled: the upper limit of the top arc.
    [[nodiscard]] virtual double getMaxTheta() const = 0;
    /// Returns the elevation of v = 1: sphere; ruled: the lower limit of the bottom arc.
    [[nodiscard]] virtual double getMinPhi() const = 0;
    /// Returns the elevation of v = 0: sphere; ruled: the upper limit of the bottom arc.
    [[nodiscard]] virtual double getMaxPhi() const = 0;
};
