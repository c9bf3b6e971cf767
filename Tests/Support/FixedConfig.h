/// \file
/// A config that answers fixed values.
#pragma once

#include <string>
#include <vector>

#include <QuarnScreen/IScreenConfig.h>

namespace quarn::test {

/// A config whose values are fields. It notes the names of the getters in the order of their calls,
/// so it is for one thread alone.
class FixedConfig : public IScreenConfig {
public:
    Point<double, 3> center;
    double width = 0.0;
    double height = 0.0;
    double radius = 0.0;
    double minTheta = 0.0;
    double maxTheta = 0.0;
    double minPhi = 0.0;
    double maxPhi = 0.0;

    /// Names of the getters that were called, since the start or since the caller cleared the list.
    mutable std::vector<std::string> calls;

    FixedConfig() = default;
    FixedConfig(double initialWidth, double initialHeight) : width(initialWidth), height(initialHeight) {}

    void firstReserved() override { calls.emplace_back("firstReserved"); }
    void secondReserved() override { calls.emplace_back("secondReserved"); }

    [[nodiscard]] Point<double, 3> getCenter() const override { return noted("getCenter", center); }
    [[nodiscard]] double getWidth() const override { return noted("getWidth", width); }
    [[nodiscard]] double getHeight() const override { return noted("getHeight", height); }
    [[nodiscard]] double getRadius() const override { return noted("getRadius", radius); }
    [[nodiscard]] double getMinTheta() const override { return noted("getMinTheta", minTheta); }
    [[nodiscard]] double getMaxTheta() const override { return noted("getMaxTheta", maxTheta); }
    [[nodiscard]] double getMinPhi() const override { return noted("getMinPhi", minPhi); }
    [[nodiscard]] double getMaxPhi() const override { return noted("getMaxPhi", maxPhi); }

private:
    template <class T>
    [[nodiscard]] T noted(const char* name, const T& value) const {
        calls.emplace_back(name);
        return value;
    }
};

}  // namespace quarn::test
