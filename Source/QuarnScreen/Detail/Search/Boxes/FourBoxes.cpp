#include "FourBoxes.h"

#include <algorithm>

namespace quarn::detail {
namespace {

// Returns 1 or 0.
std::uint32_t isBetween(float from, float coordinate, float to) {
    return static_cast<std::uint32_t>(from <= coordinate) & static_cast<std::uint32_t>(coordinate <= to);
}

// Returns the coordinate of an interval that is nearest to another one. Minus infinity for an empty
// interval.
double clamped(float from, double coordinate, float to) {
    return std::min(std::max(coordinate, static_cast<double>(from)), static_cast<double>(to));
}

}  // namespace

FourBoxes FourBoxes::nowhere() {
    FourBoxes boxes{};
    for (std::size_t lane = 0; lane < kLanes; ++lane) boxes.set(lane, FloatBox::nowhere());
    return boxes;
}

void FourBoxes::set(std::size_t lane, const FloatBox& box) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        lower[axis][lane] = box.lower[axis];
        upper[axis][lane] = box.upper[axis];
    }
}

FloatBox FourBoxes::whole() const {
    FloatBox box = FloatBox::nowhere();
    for (std::size_t lane = 0; lane < kLanes; ++lane)
        box.include({{lower[0][lane], lower[1][lane], lower[2][lane]},
                     {upper[0][lane], upper[1][lane], upper[2][lane]}});
    return box;
}

// The loops below have no branches and are not inlined: only so the compiler surely uses vector
// instructions.
LaneSet FourBoxes::lanesAround(const FloatPosition& position) const {
    constexpr std::array<std::uint32_t, kLanes> kBits = {1, 2, 4, 8};
    const float x = position.coordinates[0];
    const float y = position.coordinates[1];
    const float z = position.coordinates[2];
    std::uint32_t inside = 0;
    for (std::size_t i = 0; i < kLanes; ++i) {
        const std::uint32_t isInside = isBetween(lower[0][i], x, upper[0][i]) &
                                       isBetween(lower[1][i], y, upper[1][i]) &
                                       isBetween(lower[2][i], z, upper[2][i]);
        inside |= (0U - isInside) & kBits[i];
    }
    return LaneSet{inside};
}

std::array<double, kLanes> FourBoxes::squaredDistances(const Point<double, 3>& point) const {
    const double x = point[0];
    const double y = point[1];
    const double z = point[2];
    std::array<double, kLanes> squared{};
    for (std::size_t i = 0; i < kLanes; ++i) {
        const double differenceX = x - clamped(lower[0][i], x, upper[0][i]);
        const double differenceY = y - clamped(lower[1][i], y, upper[1][i]);
        const double differenceZ = z - clamped(lower[2][i], z, upper[2][i]);
        squared[i] = differenceX * differenceX + differenceY * differenceY + differenceZ * differenceZ;
    }
    return squared;
}

}  // namespace quarn::detail
