// Batches against single queries, bit for bit, on all kinds of screens.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

#include <QuarnKit/Base/Error.h>
#include <QuarnKit/Batch/ScreenBatch.h>
#include <QuarnScreen/CylinderScreen.h>
#include <QuarnScreen/FlatScreen.h>
#include <QuarnScreen/OBJScreen.h>
#include <QuarnScreen/RuledSurfaceScreen.h>
#include <QuarnScreen/SphericalScreen.h>

#include "Support/Bits.h"
#include "Support/Mesh/Meshes.h"
#include "Support/Mesh/TriangleScreen.h"
#include "Support/Rng.h"

using namespace quarn::test;
using quarn::BatchOptions;
using quarn::BeyondScreen;
using quarn::Found;
using quarn::RowView;

namespace {

using ScreenPointer = std::shared_ptr<IScreenGeometry>;

enum class ObjUvs { Written, None };

// An OBJ text of a wavy wall, whose UVs begin at u = 0.1.
std::string wavyObj(int size, ObjUvs uvs) {
    std::ostringstream text;
    for (int j = 0; j <= size; ++j)
        for (int i = 0; i <= size; ++i) {
            const double u = 1.0 * i / size;
            const double v = 1.0 * j / size;
            text << "v " << 4.0 * u - 2.0 << ' ' << 0.3 * std::sin(9.0 * u) * std::cos(7.0 * v) + 0.2 << ' '
                 << 1.0 - 2.0 * v << "\nvt " << 0.1 + 0.8 * u * u << ' ' << v << "\nvn 0 -1 0\n";
        }
    const auto corner = [&](int i, int j) {
        const std::string n = std::to_string(j * (size + 1) + i + 1);
        return ' ' + n + '/' + (uvs == ObjUvs::Written ? n : std::string()) + '/' + n;
    };
    for (int j = 0; j < size; ++j)
        for (int i = 0; i < size; ++i)
            text << 'f' << corner(i, j) << corner(i + 1, j) << corner(i + 1, j + 1) << "\nf" << corner(i, j)
                 << corner(i + 1, j + 1) << corner(i, j + 1) << '\n';
    return text.str();
}

ScreenPointer objScreen(const std::string& text) {
    auto screen = std::make_shared<OBJScreen>();
    std::istringstream stream(text);
    screen->deserialize(stream);
    return screen;
}

struct Kind {
    std::string name;
    std::function<ScreenPointer()> make;
};

const std::vector<Kind>& kinds() {
    static const Point<double, 3> center;
    static const std::vector<Kind> list = {
        {"Flat", [] { return std::make_shared<FlatScreen>(4.0, 2.0); }},
        {"Cylinder", [] { return std::make_shared<CylinderScreen>(center, 2.0, -1.2, 1.4, 2.5); }},
        {"Sphere", [] { return std::make_shared<SphericalScreen>(center, 2.0, -1.5, 1.5, -0.5, 1.2); }},
        {"Ruled", [] { return std::make_shared<RuledSurfaceScreen>(4.0, 2.0, -0.8, 0.8, -0.4, 0.4); }},
        {"Mesh", [] { return objScreen(wavyObj(24, ObjUvs::Written)); }},
        {"MeshWithoutUv", [] { return objScreen(wavyObj(9, ObjUvs::None)); }},
        {"DerivedClass", [] {
             return std::make_shared<TriangleScreen>(dome({6, 6}));
         }}};
    return list;
}

void PrintTo(const Kind& kind, std::ostream* out) {
    *out << kind.name;
}

class BatchOfKind : public testing::TestWithParam<Kind> {};

constexpr std::size_t kRows = 403;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

std::vector<Point<double, 3>> randomPoints(Rng& rng, double size) {
    std::vector<Point<double, 3>> points;
    for (std::size_t i = 0; i < kRows; ++i) points.push_back(rng.point(-size, size));
    points[5] = {kNaN, 0.0, 0.0};
    points[6] = {1e300, std::numeric_limits<double>::infinity(), 0.0};
    points[7] = points[8];
    return points;
}

template <class Points>
std::vector<double> numbersOf(const Points& points, std::size_t width) {
    std::vector<double> numbers;
    for (const auto& point : points)
        for (std::size_t i = 0; i < width; ++i) numbers.push_back(point[i]);
    return numbers;
}

// Ways of running that must not change results.
std::vector<BatchOptions> allOptions() {
    std::vector<BatchOptions> all(4);
    all[1].threads = 2;
    all[1].blockSize = 1;
    all[2].threads = 3;
    all[2].blockSize = 17;
    all[3].threads = 0;
    all[3].blockSize = 100;
    return all;
}

// Results of rays and where they are written.
struct Hits {
    std::vector<double> positions = std::vector<double>(3 * kRows);
    std::vector<double> uvs = std::vector<double>(2 * kRows);
    std::vector<double> distances = std::vector<double>(kRows);
    std::vector<std::int32_t> triangles = std::vector<std::int32_t>(kRows);
    std::vector<std::int8_t> sides = std::vector<std::int8_t>(kRows);
    std::vector<Found> found = std::vector<Found>(kRows);

    quarn::HitRows rows() {
        return {{positions.data(), kRows}, {uvs.data(), kRows},   {distances.data(), kRows},
                {triangles.data(), kRows}, {sides.data(), kRows}, {found.data(), kRows}};
    }
};

// Returns true for a hit.
bool expectHit(const IScreenGeometry& screen, const Ray& ray, Hits& hits, std::size_t i) {
    const IntersectionSet expected = screen.intersect(ray.origin, ray.target);
    EXPECT_EQ(hits.found[i] == Found::OnScreen, !expected.empty());
    if (expected.empty()) {
        EXPECT_TRUE(std::isnan(hits.positions[3 * i]) && std::isnan(hits.uvs[2 * i]));
        EXPECT_TRUE(std::isnan(hits.distances[i]));
        EXPECT_EQ(hits.triangles[i], -1);
        return false;
    }
    const Intersection& hit = expected.first();
    Point<double, 2> uv = hit.hasUV ? hit.uv : screen.mapInto2D(hit.point, false);
    if (uv == kNoUV) uv = {kNaN, kNaN};
    EXPECT_TRUE(sameBits(hits.rows().positions.row(i), hit.point));
    EXPECT_TRUE(sameBits(hits.rows().uvs.row(i), uv));
    EXPECT_TRUE(sameBits(hits.distances[i], length(hit.point - ray.origin)));
    EXPECT_EQ(hits.triangles[i], hit.triangleIndex);
    EXPECT_EQ(hits.sides[i], hit.normalSign);
    return true;
}

}  // namespace

TEST_P(BatchOfKind, FirstHitsAreThoseOfIntersect) {
    Rng rng(1);
    const std::vector<double> origins = numbersOf(randomPoints(rng, 1.0), 3);
    const std::vector<double> targets = numbersOf(randomPoints(rng, 3.0), 3);
    const ScreenPointer screen = GetParam().make();
    const quarn::RayRows rays{{origins.data(), kRows}, {targets.data(), kRows}};
    for (const BatchOptions& options : allOptions()) {
        Hits hits;
        EXPECT_EQ(firstHits(*screen, rays, hits.rows(), options), quarn::BatchEnd::Complete);
        std::size_t hitCount = 0;
        for (std::size_t i = 0; i < kRows; ++i) {
            SCOPED_TRACE(i);
            if (expectHit(*screen, {rays.origins.row(i), rays.targets.row(i)}, hits, i)) ++hitCount;
        }
        EXPECT_GT(hitCount, kRows / 20);
    }
}

TEST_P(BatchOfKind, PositionsAreThoseOfMapInto3D) {
    Rng rng(2);
    std::vector<Point<double, 2>> points;
    for (std::size_t i = 0; i < kRows; ++i) {
        const double u = rng.uniform(-0.2, 1.2);
        points.emplace_back(u, rng.uniform(-0.2, 1.2));
    }
    points[3] = {kNaN, 0.5};
    points[9] = points[8];
    const std::vector<double> uvs = numbersOf(points, 2);
    for (const bool extrapolate : {false, true})
        for (const BatchOptions& options : allOptions()) {
            const ScreenPointer screen = GetParam().make();
            std::vector<double> positions(3 * kRows);
            std::vector<Found> found(kRows);
            const RowView<double, 3> rows(positions.data(), kRows);
            positionsAt(*screen, {uvs.data(), kRows},
                        extrapolate ? BeyondScreen::Extrapolate : BeyondScreen::Reject, rows,
                        {found.data(), kRows}, options);
            for (std::size_t i = 0; i < kRows; ++i) {
                SCOPED_TRACE(i);
                Point<double, 3> expected;
                const bool isOn = screen->mapInto3D(points[i], expected, false);
                const bool isFound = isOn || screen->mapInto3D(points[i], expected, extrapolate);
                if (!isFound || !std::isfinite(dot(expected, expected))) {
                    EXPECT_EQ(found[i], Found::None);
                    EXPECT_TRUE(std::isnan(positions[3 * i]));
                    continue;
                }
                EXPECT_EQ(found[i], isOn ? Found::OnScreen : Found::Extrapolated);
                EXPECT_TRUE(sameBits(rows.row(i), expected));
            }
        }
}

TEST_P(BatchOfKind, QueriesOfPositionsAreThoseOfTheScreen) {
    Rng rng(3);
    const ScreenPointer screen = GetParam().make();
    std::vector<Point<double, 3>> points = randomPoints(rng, 2.0);
    // Every other one on the surface.
    for (std::size_t i = 0; i < kRows; i += 2)
        for (const Intersection& hit : screen->intersect({}, points[i])) points[i] = hit.point;
    const std::vector<double> numbers = numbersOf(points, 3);
    const RowView<const double, 3> inputs(numbers.data(), kRows);
    std::vector<double> uvs(2 * kRows);
    std::vector<double> normals(3 * kRows);
    std::vector<double> closest(3 * kRows);
    std::vector<Found> found(kRows);
    for (const BatchOptions& options : allOptions()) {
        uvsAt(*screen, inputs, BeyondScreen::Reject, {uvs.data(), kRows}, {found.data(), kRows}, options);
        normalsAt(*screen, inputs, {normals.data(), kRows}, options);
        closestPoints(*screen, inputs, {closest.data(), kRows}, options);
        for (std::size_t i = 0; i < kRows; ++i) {
            SCOPED_TRACE(i);
            const Point<double, 2> uv = screen->mapInto2D(points[i], false);
            const bool isOn = screen->isOnScreenSection(points[i]) && uv != kNoUV && std::isfinite(uv[0]) &&
                              std::isfinite(uv[1]);
            EXPECT_EQ(found[i] == Found::OnScreen, isOn);
            if (isOn) {
                EXPECT_TRUE(sameBits(RowView<double, 2>(uvs.data(), kRows).row(i), uv));
            }
            Point<double, 3> normal = screen->getScreenNormal(points[i]);
            if (normal == Point<double, 3>()) normal = {kNaN, kNaN, kNaN};
            EXPECT_TRUE(sameBits(RowView<double, 3>(normals.data(), kRows).row(i), normal));
            EXPECT_TRUE(sameBits(RowView<double, 3>(closest.data(), kRows).row(i),
                                 screen->getClosestPoint(points[i])));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Each, BatchOfKind, testing::ValuesIn(kinds()),
                         [](const auto& tested) { return tested.param.name; });

TEST(ScreenBatch, ExtrapolatedUvsAreMarked) {
    const FlatScreen wall(4.0, 2.0);
    const std::vector<double> positions = {0.0, 0.0, 0.0, 4.0, 0.0, 0.0};
    std::vector<double> uvs(4);
    std::vector<Found> found(2);
    uvsAt(wall, {positions.data(), 2}, BeyondScreen::Extrapolate, {uvs.data(), 2}, {found.data(), 2});
    EXPECT_EQ(found, (std::vector<Found>{Found::OnScreen, Found::Extrapolated}));
    EXPECT_EQ(uvs, (std::vector<double>{0.5, 0.5, 1.5, 0.5}));
}

TEST(ScreenBatch, DifferentNumbersOfRowsAreAnErrorBeforeAnyResult) {
    const FlatScreen wall(4.0, 2.0);
    const std::vector<double> numbers(9);
    std::vector<double> results(9, 7.0);
    const RowView<const double, 3> three(numbers.data(), 3);
    const RowView<const double, 3> two(numbers.data(), 2);
    EXPECT_THROW(quarn::firstHits(wall, {three, two}, {.positions = {results.data(), 3}}), quarn::Error);
    EXPECT_THROW(quarn::firstHits(wall, {three, three}, {.positions = {results.data(), 2}}), quarn::Error);
    try {
        normalsAt(wall, three, {results.data(), 2});
        FAIL() << "no error";
    } catch (const quarn::Error& error) {
        EXPECT_STREQ(error.what(), "found 2 rows of normals, expected 3, one for each row of the input");
    }
    EXPECT_EQ(results, std::vector<double>(9, 7.0));
}

TEST(ScreenBatch, StoppedBatchLeavesTheOtherRowsUnchanged) {
    const FlatScreen wall(4.0, 2.0);
    const std::vector<double> uvs(20, 0.5);
    std::vector<double> positions(30, 7.0);
    std::stop_source source;
    BatchOptions options;
    options.blockSize = 2;
    options.stop = source.get_token();
    options.progress = [&](std::size_t finished) {
        if (finished == 4) source.request_stop();
    };
    EXPECT_EQ(positionsAt(wall, {uvs.data(), 10}, BeyondScreen::Reject, {positions.data(), 10}, {}, options),
              quarn::BatchEnd::Stopped);
    EXPECT_EQ(positions[11], 0.0);
    EXPECT_EQ(positions[12], 7.0);
}
