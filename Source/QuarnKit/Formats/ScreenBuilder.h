/// \file
/// Builds screens from their parameters.
#pragma once

#include <map>
#include <memory>
#include <string>

#include <QuarnKit/Base/Observer.h>
#include <QuarnScreen/IScreenConfig.h>
#include <QuarnScreen/IScreenGeometry.h>

namespace quarn {

/// Parameters of a screen by the names of ScreenType; default 0.
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

/// Builds a screen from its parameters, as they are stored in its XML document. Throws the errors
/// and notifies of the warnings of readScreen().
/// \param typeName one of screenTypes()
[[nodiscard]] std::shared_ptr<IScreenGeometry> buildScreen(const std::string& typeName,
                                                           const ScreenValues& values, Observer& observer);

}  // namespace quarn
