#include <QuarnKit/Plot/Views/PlotStretch.h>

#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/SphericalScreen.h>

#include <QuarnKit/Plot/Views/PlotSurface.h>

namespace quarn::test {
namespace {

using ::testing::ElementsAre;

constexpr double kPi = std::numbers::pi;

TEST(PlotStretch, EvenSurfaceHasTheMiddleColor) {
    const StretchScale scale({{.area = 6.0, .uvArea = 0.5}, {.area = 3.0, .uvArea = 0.25}});
    EXPECT_EQ(scale.mean(), 12.0);
    EXPECT_EQ(scale.classOf({.area = 1.2, .uvArea = 0.1}), "k8");
    EXPECT_EQ(scale.placeOf(1.0), 8.0);
}

TEST(PlotStretch, ScaleIsEvenInPowersAndReachesBothEnds) {
    // The mean is 1, and all lies within 1/4 and 4.
    const StretchScale scale({{.area = 4.0, .uvArea = 1.0}, {.area = 1.0, .uvArea = 4.0}});
    EXPECT_EQ(scale.mean(), 1.0);
    EXPECT_EQ(scale.classOf({.area = 4.0, .uvArea = 1.0}), "k16");
    EXPECT_EQ(scale.classOf({.area = 2.0, .uvArea = 1.0}), "k12");
    EXPECT_EQ(scale.classOf({.area = 1.0, .uvArea = 1.0}), "k8");
    EXPECT_EQ(scale.classOf({.area = 1.0, .uvArea = 2.0}), "k4");
    EXPECT_EQ(scale.classOf({.area = 1.0, .uvArea = 4.0}), "k0");
    EXPECT_NEAR(scale.placeOf(4.0), 16.0, 1e-12);
    EXPECT_NEAR(scale.placeOf(2.0), 12.0, 1e-12);
    EXPECT_NEAR(scale.placeOf(0.25), 0.0, 1e-12);
}

TEST(PlotStretch, NumbersOnTheScaleAreRound) {
    const auto numbersFor = [](double limit) {
        return StretchScale({{.area = limit, .uvArea = 1.0}, {.area = 1.0, .uvArea = limit}}).roundNumbers();
    };
    EXPECT_THAT(numbersFor(1.0), ElementsAre(0.5, 1.0 / 1.5, 1.0, 1.5, 2.0));
    EXPECT_THAT(numbersFor(4.0), ElementsAre(0.25, 0.5, 1.0, 2.0, 4.0));
    EXPECT_THAT(numbersFor(16.0), ElementsAre(1.0 / 16, 0.25, 1.0, 4.0, 16.0));
    EXPECT_THAT(numbersFor(64.0), ElementsAre(1.0 / 64, 0.125, 1.0, 8.0, 64.0));
}

TEST(PlotStretch, StretchBeyondTheScaleHasTheColorOfItsEnd) {
    const StretchScale scale({{.area = 1.0, .uvArea = 1.0}});
    EXPECT_EQ(scale.classOf({.area = 1e9, .uvArea = 1.0}), "k16");
    EXPECT_EQ(scale.classOf({.area = 1.0, .uvArea = 0.0}), "k16");
    EXPECT_EQ(scale.classOf({.area = 0.0, .uvArea = 1.0}), "k0");
}

TEST(PlotStretch, WithoutUvThereIsNoStretch) {
    EXPECT_EQ(StretchScale({{.area = 1.0, .uvArea = 0.0}}).classOf({.area = 1.0, .uvArea = 0.0}), "none");
    EXPECT_EQ(StretchScale({}).classOf({.area = 1.0, .uvArea = 1.0}), "none");
    EXPECT_EQ(StretchScale({}).mean(), 0.0);
    const StretchScale scale({{.area = 1.0, .uvArea = 1.0}});
    EXPECT_EQ(scale.classOf({.area = 0.0, .uvArea = 0.0}), "none");
}

TEST(PlotStretch, MeanOfACylinderIsItsArea) {
    const double radius = 6.0;
    const PlotSurface surface(CylinderScreen(Point<double, 3>(), radius, -1.0, 1.0, 3.0));
    const double size = surface.longestSide();
    const StretchScale scale(surface.patches());
    // Chords of 1/24 radians are shorter than their arcs by 7e-5 of them.
    EXPECT_NEAR(scale.mean() * size * size, 2.0 * radius * 3.0, 36.0 * 1e-4);
    for (const StretchPatch& patch : surface.patches()) ASSERT_EQ(scale.classOf(patch), "k8");
}

TEST(PlotStretch, DomeIsStretchedByTheCosineOfTheElevation) {
    const PlotSurface surface(SphericalScreen(Point<double, 3>(), 5.0, -kPi, kPi, 0.0, kPi / 2));
    const StretchScale scale(surface.patches());
    const auto stretchAt = [&](int row) {
        const auto patch = surface.patch(3, row);
        return patch->area / patch->uvArea / scale.mean();
    };
    // The mean of the cosine from 0 to 90 degrees is 2 / pi.
    for (const int row : {2, 7, 15}) {
        const double elevation = kPi / 2 * (1.0 - (row + 0.5) / surface.rows());
        EXPECT_NEAR(stretchAt(row), std::cos(elevation) * kPi / 2, 0.005);
    }
}

}  // namespace
}  // namespace quarn::test
