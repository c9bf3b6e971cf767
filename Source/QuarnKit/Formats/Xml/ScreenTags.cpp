#include "ScreenTags.h"

#include <algorithm>

#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/SphericalScreen.h>

namespace quarn {

namespace {

using enum ParameterKind;

const ScreenTag kCenter{L"Center_Point", "center", "center", Position};
const ScreenTag kWidth{L"Screen_Width", "width", "width", Length};
const ScreenTag kHeight{L"Screen_Height", "height", "height", Length};
const ScreenTag kRadius{L"Screen_Radius", "radius", "radius", Length};
const ScreenTag kMinTheta{L"Screen_MinTheta", "minTheta", "min theta", Angle};
const ScreenTag kMaxTheta{L"Screen_MaxTheta", "maxTheta", "max theta", Angle};
const ScreenTag kMinPhi{L"Screen_MinPhi", "minPhi", "min phi", Angle};
const ScreenTag kMaxPhi{L"Screen_MaxPhi", "maxPhi", "max phi", Angle};

}  // namespace

const std::vector<ScreenType>& screenTypes() {
    static const std::vector<ScreenType> types = {
        {.name = FlatScreen::type(), .tags = {kWidth, kHeight}, .ranges = {}},
        {.name = CylinderScreen::type(),
         .tags = {kCenter, kHeight, kRadius, kMinTheta, kMaxTheta},
         .ranges = {{"range of theta", "minTheta", "maxTheta", RangeRule::Section}}},
        {.name = SphericalScreen::type(),
         .tags = {kCenter, kRadius, kMinTheta, kMaxTheta, kMinPhi, kMaxPhi},
         .ranges = {{"range of theta", "minTheta", "maxTheta", RangeRule::Section},
                    {"range of phi", "minPhi", "maxPhi", RangeRule::Elevation}}},
        {.name = RuledSurfaceScreen::type(),
         .tags = {kWidth, kHeight, kMinTheta, kMaxTheta, kMinPhi, kMaxPhi},
         .ranges = {{"top arc", "minTheta", "maxTheta", RangeRule::Arc},
                    {"bottom arc", "minPhi", "maxPhi", RangeRule::Arc}}},
    };
    return types;
}

const ScreenType* findScreenType(const std::string& name) {
    const auto& types = screenTypes();
    const auto type = std::find_if(types.begin(), types.end(),
                                   [&](const ScreenType& candidate) { return candidate.name == name; });
    return type == types.end() ? nullptr : &*type;
}

}  // namespace quarn
