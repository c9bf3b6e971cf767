#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <limits>
#include <vector>

#include <QuarnScreen/Detail/Boundary/PointInPolygon.h>
#include "Support/Rng.h"
#include "Support/WildNumbers.h"

using namespace quarn::test;
using quarn::detail::pointWithinPolygon;
using quarn::detail::PolygonBands;

namespace {

using UV = Point<double, 2>;
using Polygon = std::vector<UV>;

void expectSameAnswer(const quarn::detail::PolygonBands& bands, const Polygon& polygon, const UV& point) {
    EXPECT_EQ(bands.contains(point), quarn::detail::pointWithinPolygon(polygon, point))
        << std::hexfloat << point[0] << " " << point[1];
}

// Points that are near to corners in height, where bands and segments begin and end.
void expectSameAnswersNear(const Polygon& polygon, Rng& rng, int count) {
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    const quarn::detail::PolygonBands bands(polygon);
    for (int i = 0; i < count; ++i) {
        const UV& a = polygon[static_cast<std::size_t>(rng.integer(0, static_cast<int>(polygon.size()) - 1))];
        const UV& b = polygon[static_cast<std::size_t>(rng.integer(0, static_cast<int>(polygon.size()) - 1))];
        UV point(rng.coin() ? a[0] : (a[0] + b[0]) * 0.5, b[1]);
        for (std::size_t k = 0; k < 2; ++k) {
            if (rng.coin()) point[k] += rng.integer(-2, 2) * 0.5e-9;
            for (int steps = rng.integer(0, 2); steps > 0; --steps)
                point[k] = std::nextafter(point[k], rng.coin() ? kInfinity : -kInfinity);
        }
        expectSameAnswer(bands, polygon, point);
        expectSameAnswer(bands, polygon, UV(point[0], rng.uniform(a[1], b[1])));
    }
}

Polygon circle(int count) {
    Polygon polygon;
    for (int i = 0; i <= count; ++i) {
        const double angle = 6.283185307179586 * i / count;
        polygon.push_back({std::cos(angle), std::sin(angle)});
    }
    return polygon;
}

Polygon randomPolygon(Rng& rng, double scale) {
    Polygon polygon;
    const int digits = rng.integer(1, 4);
    for (int n = rng.integer(1, 60); n > 0; --n) {
        // A few heights come again and again, and some corners twice.
        const double u = rng.uniform(-scale, scale);
        const double v = rng.uniform(-1.0, 1.0);
        polygon.push_back({u, rng.coin() ? v * scale : std::round(v * digits) * scale / digits});
        if (rng.integer(0, 9) == 0) polygon.push_back(polygon.front());
    }
    return polygon;
}

}  // namespace

TEST(PolygonBands, AnswerForACircleAsGeometryDoes) {
    const quarn::detail::PolygonBands bands(circle(3000));
    for (int i = 0; i < seedCount(20'000); ++i) {
        Rng rng(i);
        const UV point(rng.uniform(-1.2, 1.2), rng.uniform(-1.2, 1.2));
        const double radius = length(point);
        // Chords of the circle are up to 1 - cos(pi / 3000) inside of it.
        if (radius < 1.0 - 1e-6) {
            EXPECT_TRUE(bands.contains(point)) << i;
        } else if (radius > 1.0 + 1e-6) {
            EXPECT_FALSE(bands.contains(point)) << i;
        }
    }
}

TEST(PolygonBands, GiveTheAnswersOfTheWholeOutline) {
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        expectSameAnswersNear(randomPolygon(rng, std::ldexp(1.0, rng.integer(-3, 3))), rng, 40);
        if (HasFailure()) return;
    }
}

TEST(PolygonBands, GiveTheAnswersOfTheWholeOutlineAtEveryScale) {
    for (int i = 0; i < seedCount(2000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        expectSameAnswersNear(randomPolygon(rng, std::ldexp(1.0, rng.integer(-1060, 1023))), rng, 20);
        if (HasFailure()) return;
    }
}

TEST(PolygonBands, GiveTheAnswersOfTheWholeOutlineWhereItIsLong) {
    for (int i = 0; i < seedCount(10); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Polygon wave;
        for (int n = 0; n < 1000; ++n)
            wave.push_back({n * 0.001, 0.3 * std::sin(n * 0.1 * i) + (n % 2 == 0 ? 0.0 : 0.01 * i)});
        wave.push_back({1.0, 5.0});
        wave.push_back({0.0, 5.0});
        expectSameAnswersNear(wave, rng, 2000);
        expectSameAnswersNear(circle(100 * i + 3), rng, 2000);
    }
}

TEST(PolygonBands, GiveTheAnswersOfTheWholeOutlineForNumbersOfEveryKind) {
    for (int i = 0; i < seedCount(20'000); ++i) {
        Rng rng(i);
        SCOPED_TRACE(i);
        Polygon polygon = rng.coin() ? randomPolygon(rng, 1.0) : Polygon{};
        for (int n = rng.integer(0, 4); n > 0; --n) polygon.push_back(wildPoint<2>(rng));
        const quarn::detail::PolygonBands bands(polygon);
        for (int n = 0; n < 10; ++n) {
            expectSameAnswer(bands, polygon, wildPoint<2>(rng));
            if (!polygon.empty()) expectSameAnswer(bands, polygon, polygon.back());
        }
        if (HasFailure()) return;
    }
}

TEST(PolygonBands, GiveTheAnswersOfAnOutlineOfOneHeight) {
    for (const double v : {0.0, 1e-320, 1.0, 1e12, -1e300}) {
        SCOPED_TRACE(v);
        Rng rng(0);
        expectSameAnswersNear({{0, v}, {1, v}, {2, v}}, rng, 200);
        expectSameAnswersNear({{1, v}}, rng, 200);
    }
}

TEST(PolygonBands, KeepTheirOwnCopyOfTheOutline) {
    Polygon polygon = circle(50);
    const quarn::detail::PolygonBands bands(polygon);
    polygon.assign(polygon.size(), UV(9, 9));
    EXPECT_TRUE(bands.contains({0, 0}));
    EXPECT_FALSE(bands.contains({9, 9}));
}
