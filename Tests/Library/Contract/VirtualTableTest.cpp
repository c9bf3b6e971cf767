#include <gtest/gtest.h>

#include <bit>
#include <cstddef>
#include <vector>

#include <QuarnScreen/IScreenConfig.h>
#include <QuarnScreen/IScreenGeometry.h>

// A program that was built against the contract finds its operations by their place in the virtual
// table, so a moved declaration breaks it without any message. On this platform (Itanium C++ ABI,
// section 2.3) a pointer to a virtual member function holds 1 plus the offset of its place in
// bytes, and the adjustment of `this`; std::bit_cast reads both without undefined behavior. Places
// 0 and 1 are the two forms of the destructor, to which no pointer exists: the first operation at
// place 2 shows that it is declared first.

namespace {

constexpr int kNotVirtual = -1;

template <class Function>
int placeOf(Function function) {
    struct Representation {
        std::ptrdiff_t place;
        std::ptrdiff_t adjustment;
    };
    static_assert(sizeof(Function) == sizeof(Representation));
    const auto representation = std::bit_cast<Representation>(function);
    if (representation.place % 2 == 0) return kNotVirtual;
    EXPECT_EQ(representation.adjustment, 0);
    return static_cast<int>((representation.place - 1) / static_cast<std::ptrdiff_t>(sizeof(void*)));
}

std::vector<int> countedFrom(int first, std::size_t count) {
    std::vector<int> places;
    for (std::size_t i = 0; i < count; ++i) places.push_back(first + static_cast<int>(i));
    return places;
}

class Named {
public:
    virtual ~Named() = default;
    virtual void first() {}
    void notVirtual() {}
};

}  // namespace

TEST(VirtualTable, PlacesCanBeRead) {
    EXPECT_EQ(placeOf(&Named::first), 2);
    EXPECT_EQ(placeOf(&Named::notVirtual), kNotVirtual);
}

TEST(VirtualTable, TypeNameFollowsTheDestructor) {
    EXPECT_EQ(placeOf(&ITypeid::getType), 2);
}

TEST(VirtualTable, ScreenOperationsStandInTheirOrder) {
    using Screen = IScreenGeometry;
    const std::vector<int> places{
        placeOf(&Screen::serialize),
        placeOf(&Screen::deserialize),
        placeOf(&Screen::updateGeometry),
        placeOf(&Screen::sampleHorizontally),
        placeOf(&Screen::intersect),
        placeOf(&Screen::intersectExtrapolatedWithSpecifiedNormal),
        placeOf(&Screen::intersectChannelBoundary),
        placeOf(&Screen::isOnScreenSection),
        placeOf(&Screen::getScreenNormal),
        placeOf(&Screen::getClosestPoint),
        placeOf(&Screen::mapInto2D),
        placeOf(&Screen::mapInto3D),
        placeOf(&Screen::getDefaultCalibrationPoints),
        placeOf(&Screen::generateGeometry),
        placeOf(&Screen::sampleBoundary),
        placeOf(&Screen::sampleBoundaryUV),
        placeOf(&Screen::sampleGrid),
        placeOf(&Screen::isPlanar),
        placeOf(&Screen::hasParameterization),
        placeOf(&Screen::getEyepoint),
        placeOf(&Screen::getCenterOfScreenHeading),
        placeOf(&Screen::getMaxAngleFromHeading),
        placeOf(&Screen::isValid),
        placeOf(&Screen::getUniqueDataHash),
        placeOf(&Screen::getTesselation),
        placeOf(&Screen::hasTesselation),
        placeOf(&Screen::getBounds),
        placeOf(&Screen::getShortestDistance),
    };
    EXPECT_EQ(places, countedFrom(2, places.size()));
}

TEST(VirtualTable, ConfigOperationsStandInTheirOrder) {
    using Config = IScreenConfig;
    const std::vector<int> places{
        placeOf(&Config::firstReserved), placeOf(&Config::secondReserved), placeOf(&Config::getCenter),
        placeOf(&Config::getWidth),      placeOf(&Config::getHeight),      placeOf(&Config::getRadius),
        placeOf(&Config::getMinTheta),   placeOf(&Config::getMaxTheta),    placeOf(&Config::getMinPhi),
        placeOf(&Config::getMaxPhi),
    };
    EXPECT_EQ(places, countedFrom(2, places.size()));
}
