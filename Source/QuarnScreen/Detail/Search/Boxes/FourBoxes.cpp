#include "FourBoxes.h"

namespace quarn::detail {

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

}  // namespace quarn::detail
