/// \file
/// Screens from their parameters.
#pragma once

#include <map>
#include <memory>
#include <string>

#include <QuarnKit/Base/Observer.h>
#include <QuarnScreen/IScreenConfig.h>
#include <QuarnScreen/IScreenGeometry.h>

namespace quarn {

/// Parameters of a screen by the names that ScreenType tells; one that was not set is 0.
class ScreenValues : public IScreenConfig {
public:
    /// Sets a length, in the screen's unit, or an angle, in radians.
    void set(const std::string& parameter, double value) { numbers[parameter] = value; }
    void setCenter(const Point<double, 3>& position) { center = position; }

    [[nodiscard]] double valueOf(const std::string& parameter) const;

    [[nodiscard]] Point<double, 3> getCenter() const override { return center; }
    [[nodiscard]] double getWidth() const override { return valueOf("width"); }
    [[nodiscard]] double getHeight() const override { return valueOf("height"); }
    [[nodiscard]] double getRadius() const override { return valueOf("radius"); }
    [[nodiscard]] double getMinTheta() const override { return valueOf("minTheta"); }
    [[nodiscard]] double getMaxTheta() const override { return valueOf("maxTheta"); }
    [[nodiscard]] double getMinPhi() const override { return valueOf("minPhi"); }
    [[nodiscard]] double getMaxPhi() const override { return valueOf("maxPhi"); }

private:
    std::map<std::string, double> numbers;
    Point<double, 3> center;
};

/// A screen from its parameters, as its XML document holds them. What readScreen() would refuse is refused, and what it would warn of is
/// warned of.
/// \param typeName one of screenTypes()
[[nodiscard]] std::shared_ptr<IScreenGeometry> buildScreen(const std::string& typeName,
                                                           const ScreenValues& values, Observer& observer);

}  // namespace quarn
