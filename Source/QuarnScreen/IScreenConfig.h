/// \file
/// Parameters of a screen, handed in by the caller.
#pragma once

#include <Common/Export.h>
#include <QuarnScreen/Point.h>

/// Parameters of a screen, implemented by the caller.
///
/// The library only reads a config during a call and keeps no pointer to it. It may read a value more than
/// once and in any order, so a config answers the same values every time. Lengths are in the screen's unit,
/// angles in radians.
class QUARNSCREEN_EXPORT IScreenConfig {
public:
    virtual ~IScreenConfig();

    /// Two places that the library never calls; a caller may leave them as they are.
    virtual void firstReserved();
    virtual void secondReserved();

    /// Centre of the shape: cylinder and sphere.
    [[nodiscard]] virtual Point<double, 3> getCenter() const = 0;
    /// Width of the screen: flat and ruled.
    [[nodiscard]] virtual double getWidth() const = 0;
    /// Height of the screen: flat, cylinder and ruled.
    [[nodiscard]] virtual double getHeight() const = 0;
    /// Radius: cylinder and sphere.
    [[nodiscard]] virtual double getRadius() const = 0;
    /// Least azimuth: cylinder, sphere and ruled.
    [[nodiscard]] virtual double getMinTheta() const = 0;
    /// Greatest azimuth: cylinder, sphere and ruled.
    [[nodiscard]] virtual double getMaxTheta() const = 0;
    /// Least elevation: sphere and ruled.
    [[nodiscard]] virtual double getMinPhi() const = 0;
    /// Greatest elevation: sphere and ruled.
    [[nodiscard]] virtual double getMaxPhi() const = 0;
};
