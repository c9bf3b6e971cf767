#include "SurfaceDistance.h"

#include <algorithm>
#include <cmath>
#include <queue>

#include <Common/Detail/Assert.h>
#include <QuarnKit/Base/Hash.h>

#include "SurfacePiece.h"

namespace quarn {

namespace {

// A surface of few triangles is subdivided into at least this many pieces, for the mean.
constexpr double kMinPieceCount = 30'000.0;
// Triangles of one task, and pieces that are subdivided in one round. Both are fixed, so that the
// order of all sums and subdivisions is independent of the number of threads.
constexpr std::size_t kTrianglesPerTask = 8192;
constexpr std::size_t kPiecesPerRound = 32'768;
constexpr std::size_t kPiecesPerTask = 256;
// Maximum number of subdivisions: a base, and one more for each few triangles. Between meshes of a
// million triangles, the search then takes a few times as long as reading them.
constexpr std::uint64_t kMaxBaseSubdivisions = 300'000;
constexpr std::uint64_t kTrianglesPerExtraSubdivision = 2;
// The accuracy to reach, as a fraction of the maximum distance.
constexpr double kRelativeAccuracy = 1e-3;

double areaOf(const TriangleCorners& triangle) {
    return length(cross(triangle[1] - triangle[0], triangle[2] - triangle[0])) / 2.0;
}

// Measures positions and caches some of them, because triangles share their corners. Each thread
// has a cache of its own.
class PositionCache {
public:
    explicit PositionCache(const TriangleTree& measuringTree) : tree(measuringTree), slots(kSlots) {}

    [[nodiscard]] const MeasuredPosition& measure(const Point<double, 3>& position) {
        MeasuredPosition& slot = slots[hashOf<3>(position) % kSlots];
        if (slot.nearest.index == TriangleTree::kNone || slot.position != position)
            slot = measurePosition(tree, position, hint);
        hint = slot.nearest.index;
        return slot;
    }

private:
    static constexpr std::size_t kSlots = 1U << 13U;

    const TriangleTree& tree;
    std::vector<MeasuredPosition> slots;
    std::uint32_t hint = TriangleTree::kNone;
};

// Results of some of the pieces.
struct Tally {
    MeasuredPosition farthest;
    double weightedSum = 0.0;
    double area = 0.0;
    std::uint64_t samples = 0;
    std::vector<SurfacePiece> open;  // pieces that may contain a greater distance
    double boundOfClosed = 0.0;      // maximum bound of the others

    void take(const MeasuredPosition& position) {
        ++samples;
        if (farthest.nearest.index == TriangleTree::kNone ||
            position.nearest.distance > farthest.nearest.distance)
            farthest = position;
    }
};

class Comparison {
public:
    Comparison(const std::vector<TriangleCorners>& fromTriangles, const TriangleTree& toTree,
               double minAccuracy, ThreadPool& workers)
        : from(fromTriangles), to(toTree), accuracy(minAccuracy), pool(workers) {}

    SurfaceDistance run() {
        measureAll();
        search();
        return {.max = total.farthest.nearest.distance,
                .bound = std::max(boundOfClosed, total.farthest.nearest.distance),
                .mean = total.weightedSum / total.area,
                .where = total.farthest.position,
                .samples = total.samples};
    }

private:
    [[nodiscard]] double searchThreshold(double maxDistance) const {
        return maxDistance + std::max(accuracy, kRelativeAccuracy * maxDistance);
    }

    void measureAll();
    void measureTriangle(const TriangleCorners& triangle, Tally& tally, PositionCache& cache) const;
    void measurePiece(SurfacePiece& piece, Tally& tally, bool countsForMean) const;
    void search();
    void join(const std::vector<Tally>& tallies);
    void subdividePiece(const SurfacePiece& piece, Tally& tally) const;

    const std::vector<TriangleCorners>& from;
    const TriangleTree& to;
    double accuracy;
    ThreadPool& pool;
    double areaOfPiece = 0.0;
    double maxBefore = 0.0;      // at the beginning of the round
    double boundOfClosed = 0.0;  // maximum bound of the pieces that are not subdivided any further
    Tally total;

    struct IsNearer {
        bool operator()(const SurfacePiece& a, const SurfacePiece& b) const { return a.bound < b.bound; }
    };
    std::priority_queue<SurfacePiece, std::vector<SurfacePiece>, IsNearer> open;
};

// Measures the centroid, and lowers the bound as far as that decides whether the piece stays open.
void Comparison::measurePiece(SurfacePiece& piece, Tally& tally, bool countsForMean) const {
    const double limit = searchThreshold(std::max(maxBefore, tally.farthest.nearest.distance));
    piece.bound = boundOf(to, piece, piece.corners[0]);
    for (std::size_t i = 1; i < piece.corners.size() && piece.bound > limit; ++i)
        piece.bound = std::min(piece.bound, boundOf(to, piece, piece.corners.at(i)));
    if (!countsForMean && piece.bound <= limit) return;

    const MeasuredPosition middle = measurePosition(to, piece.middle(), piece.corners[0].nearest.index);
    tally.take(middle);
    if (piece.bound > limit) piece.bound = std::min(piece.bound, boundOf(to, piece, middle));
    if (!countsForMean) return;
    // Source: the quadrature rule for triangles with vertices and centroid, exact up to degree 2.
    constexpr double kCornerWeight = 1.0 / 12.0;
    constexpr double kMiddleWeight = 3.0 / 4.0;
    double sum = 0.0;
    for (const MeasuredPosition& corner : piece.corners) sum += corner.nearest.distance;
    const double area =
        areaOf({piece.corners[0].position, piece.corners[1].position, piece.corners[2].position});
    tally.area += area;
    tally.weightedSum += area * (sum * kCornerWeight + middle.nearest.distance * kMiddleWeight);
}

void Comparison::measureTriangle(const TriangleCorners& triangle, Tally& tally, PositionCache& cache) const {
    const double wanted = areaOfPiece > 0.0 ? std::sqrt(areaOf(triangle) / areaOfPiece) : 1.0;
    const int count = std::max(1, static_cast<int>(std::ceil(wanted)));
    const Point<double, 3> edge1 = (triangle[1] - triangle[0]) / count;
    const Point<double, 3> edge2 = (triangle[2] - triangle[0]) / count;
    // Corners are exact, so that the distance between a surface and itself is 0.
    const auto positionAt = [&](int i, int k) {
        if (i == count) return triangle[1];
        if (k == count) return triangle[2];
        return triangle[0] + edge1 * i + edge2 * k;
    };
    const auto measure = [&](int i, int k) {
        const MeasuredPosition& position = cache.measure(positionAt(i, k));
        tally.take(position);
        return position;
    };
    const auto close = [&](SurfacePiece piece) {
        measurePiece(piece, tally, true);
        if (piece.bound > searchThreshold(tally.farthest.nearest.distance))
            tally.open.push_back(piece);
        else
            tally.boundOfClosed = std::max(tally.boundOfClosed, piece.bound);
    };
    std::vector<MeasuredPosition> line;
    for (int k = 0; k <= count; ++k) line.push_back(measure(0, k));
    for (int i = 1; i <= count; ++i) {
        std::vector<MeasuredPosition> next;
        for (int k = 0; k <= count - i; ++k) {
            const auto at = static_cast<std::size_t>(k);
            next.push_back(measure(i, k));
            close({{line[at], next[at], line[at + 1]}});
            if (k > 0) close({{line[at], next[at - 1], next[at]}});
        }
        line = std::move(next);
    }
}

void Comparison::measureAll() {
    double area = 0.0;
    for (const TriangleCorners& triangle : from) area += areaOf(triangle);
    areaOfPiece = area / kMinPieceCount;
    std::vector<Tally> tallies((from.size() + kTrianglesPerTask - 1) / kTrianglesPerTask);
    pool.parallelFor(tallies.size(), [&](std::size_t part) {
        PositionCache cache(to);
        const std::size_t end = std::min(from.size(), (part + 1) * kTrianglesPerTask);
        for (std::size_t i = part * kTrianglesPerTask; i < end; ++i)
            measureTriangle(from[i], tallies[part], cache);
    });
    join(tallies);
}

// Adds the results of all tasks, and keeps the pieces that may contain a greater distance.
void Comparison::join(const std::vector<Tally>& tallies) {
    for (const Tally& tally : tallies) {
        total.take(tally.farthest);
        total.samples += tally.samples - 1;
        total.weightedSum += tally.weightedSum;
        total.area += tally.area;
        boundOfClosed = std::max(boundOfClosed, tally.boundOfClosed);
    }
    const double limit = searchThreshold(total.farthest.nearest.distance);
    for (const Tally& tally : tallies)
        for (const SurfacePiece& piece : tally.open) {
            if (piece.bound > limit)
                open.push(piece);
            else
                boundOfClosed = std::max(boundOfClosed, piece.bound);
        }
}

void Comparison::subdividePiece(const SurfacePiece& piece, Tally& tally) const {
    std::array<SurfacePiece, 4> parts = subdivide(to, piece, accuracy / 4.0);
    for (const MeasuredPosition& corner : parts.back().corners) tally.take(corner);
    for (SurfacePiece& part : parts) {
        measurePiece(part, tally, false);
        part.bound = std::min(part.bound, piece.bound);
        tally.open.push_back(part);
    }
}

void Comparison::search() {
    std::uint64_t subdivisionsLeft = kMaxBaseSubdivisions + from.size() / kTrianglesPerExtraSubdivision;
    std::vector<SurfacePiece> round;
    while (subdivisionsLeft > 0 && !open.empty() &&
           open.top().bound > searchThreshold(total.farthest.nearest.distance)) {
        maxBefore = total.farthest.nearest.distance;
        round.clear();
        while (round.size() < std::min<std::uint64_t>(kPiecesPerRound, subdivisionsLeft) && !open.empty() &&
               open.top().bound > searchThreshold(maxBefore)) {
            round.push_back(open.top());
            open.pop();
        }
        subdivisionsLeft -= round.size();
        std::vector<Tally> tallies((round.size() + kPiecesPerTask - 1) / kPiecesPerTask);
        pool.parallelFor(tallies.size(), [&](std::size_t part) {
            const std::size_t end = std::min(round.size(), (part + 1) * kPiecesPerTask);
            for (std::size_t i = part * kPiecesPerTask; i < end; ++i) subdividePiece(round[i], tallies[part]);
        });
        join(tallies);
    }
    if (!open.empty()) boundOfClosed = std::max(boundOfClosed, open.top().bound);
}

}  // namespace

SurfaceDistance surfaceDistance(const std::vector<TriangleCorners>& from, const TriangleTree& to,
                                double accuracy, ThreadPool& pool) {
    QUARN_ASSERT(!from.empty() && accuracy > 0.0);
    return Comparison(from, to, accuracy, pool).run();
}

}  // namespace quarn
