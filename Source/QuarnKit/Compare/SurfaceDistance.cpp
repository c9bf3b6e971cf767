#include "SurfaceDistance.h"

#include <algorithm>
#include <cmath>
#include <queue>

#include <Common/Detail/Assert.h>
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
// Maximum numbers of visits of tree nodes, for measuring all triangles and for the search: a base
// of a few seconds on one processor, and some for each triangle. Only surfaces whose positions are
// about equally far from the other surface need more for measuring.
constexpr std::uint64_t kMaxBaseVisits = 80'000'000;
constexpr std::uint64_t kMeasuringVisitsPerTriangle = 250;
constexpr std::uint64_t kSearchVisitsPerTriangle = 100;
// Limits for one position. Most positions need fewer visits than the first of them.
constexpr std::uint64_t kMaxExactVisits = 400;
constexpr std::uint64_t kMaxVisits = 20'000;
// Tolerance of a position's distance, as a fraction of the accuracy of the maximum.
constexpr double kToleranceRatio = 0.125;

double areaOf(const TriangleCorners& triangle) {
    return length(cross(triangle[1] - triangle[0], triangle[2] - triangle[0])) / 2.0;
}

// Results of some of the pieces.
struct Tally {
    MeasuredPosition farthest;
    double weightedSum = 0.0;
    double area = 0.0;
    std::uint64_t samples = 0;
    std::vector<SurfacePiece> open;  // pieces that may contain a greater distance
    double boundOfClosed = 0.0;      // maximum bound of the others
    std::uint64_t visits = 0;        // of tree nodes in the search

    void take(const MeasuredPosition& position) {
        ++samples;
        if (farthest.nearest.index == TriangleTree::kNone ||
            position.nearest.minDistance > farthest.nearest.minDistance)
            farthest = position;
    }

    // Returns the maximum distance that is certain.
    [[nodiscard]] double maxDistance() const { return farthest.nearest.minDistance; }
};

// States if a piece is one of those whose distances the mean averages.
enum class ForMean { No, Yes };

class Comparison {
public:
    Comparison(const std::vector<TriangleCorners>& fromTriangles, const TriangleTree& toTree,
               const DistanceGoal& newGoal, ThreadPool& workers)
        : from(fromTriangles),
          to(toTree),
          goal(newGoal),
          limits{.exactVisits = kMaxExactVisits,
                 .maxVisits = kMaxVisits,
                 .tolerance = kToleranceRatio * newGoal.accuracy,
                 .relativeTolerance = kToleranceRatio * newGoal.relativeAccuracy},
          pool(workers) {}

    SurfaceDistance run() {
        measureAll();
        search();
        const Point<double, 3>& where = total.farthest.position;
        const double max = to.nearest(where, total.farthest.nearest.index).distance;
        const double bound = std::max(boundOfClosed, max);
        return {.max = max,
                .bound = bound,
                .mean = total.weightedSum / total.area,
                .where = where,
                .samples = total.samples,
                .end = bound > goal.sufficientBound(max) ? SearchEnd::WorkLimit : SearchEnd::GoalReached};
    }

private:
    void measureAll();
    void measureTriangle(const TriangleCorners& triangle, Tally& tally, PositionMeter& meter,
                         PositionCache& cache) const;
    void measurePiece(SurfacePiece& piece, Tally& tally, PositionMeter& meter, ForMean forMean) const;
    void search();
    void takeRound(std::uint64_t maxSize);
    void subdivideRound(std::uint64_t visitsLeft);
    void join(std::vector<Tally>& tallies);
    void subdividePiece(const SurfacePiece& piece, Tally& tally, PositionMeter& meter) const;
    [[nodiscard]] std::uint64_t maxSearchVisits() const {
        return kMaxBaseVisits + from.size() * kSearchVisitsPerTriangle;
    }

    const std::vector<TriangleCorners>& from;
    const TriangleTree& to;
    DistanceGoal goal;
    TriangleTree::SearchLimits limits;
    ThreadPool& pool;
    double areaOfPiece = 0.0;
    double maxBefore = 0.0;      // at the beginning of the round
    double boundOfClosed = 0.0;  // maximum bound of the pieces that are not subdivided any further
    Tally total;
    std::vector<SurfacePiece> round;  // pieces to subdivide at the same time

    struct IsNearer {
        bool operator()(const SurfacePiece& a, const SurfacePiece& b) const { return a.bound < b.bound; }
    };
    std::priority_queue<SurfacePiece, std::vector<SurfacePiece>, IsNearer> open;
};

// Measures the centroid, and lowers the bound as far as that decides whether the piece stays open.
void Comparison::measurePiece(SurfacePiece& piece, Tally& tally, PositionMeter& meter,
                              ForMean forMean) const {
    const double limit = goal.sufficientBound(std::max(maxBefore, tally.maxDistance()));
    piece.bound = boundOf(to, piece, piece.corners[0]);
    for (std::size_t i = 1; i < piece.corners.size() && piece.bound > limit; ++i)
        piece.bound = std::min(piece.bound, boundOf(to, piece, piece.corners.at(i)));
    if (forMean == ForMean::No && piece.bound <= limit) return;

    const MeasuredPosition middle = meter.measure(piece.middle(), piece.corners[0].nearest.index);
    tally.take(middle);
    if (piece.bound > limit) piece.bound = std::min(piece.bound, boundOf(to, piece, middle));
    if (forMean == ForMean::No) return;
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

void Comparison::measureTriangle(const TriangleCorners& triangle, Tally& tally, PositionMeter& meter,
                                 PositionCache& cache) const {
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
        measurePiece(piece, tally, meter, ForMean::Yes);
        if (piece.bound > goal.sufficientBound(tally.maxDistance()))
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
    const std::uint64_t maxVisits = kMaxBaseVisits + from.size() * kMeasuringVisitsPerTriangle;
    std::vector<Tally> tallies((from.size() + kTrianglesPerTask - 1) / kTrianglesPerTask);
    pool.parallelFor(tallies.size(), [&](std::size_t part) {
        PositionMeter meter(to, limits, maxVisits / tallies.size());
        PositionCache cache(meter);
        const std::size_t end = std::min(from.size(), (part + 1) * kTrianglesPerTask);
        for (std::size_t i = part * kTrianglesPerTask; i < end; ++i)
            measureTriangle(from[i], tallies[part], meter, cache);
    });
    join(tallies);
}

// Adds the results of all tasks, and keeps the pieces that may contain a greater distance.
void Comparison::join(std::vector<Tally>& tallies) {
    for (const Tally& tally : tallies) {
        total.take(tally.farthest);
        total.samples += tally.samples - 1;
        total.weightedSum += tally.weightedSum;
        total.area += tally.area;
        total.visits += tally.visits;
        boundOfClosed = std::max(boundOfClosed, tally.boundOfClosed);
    }
    const double limit = goal.sufficientBound(total.maxDistance());
    for (Tally& tally : tallies) {
        for (const SurfacePiece& piece : tally.open) {
            if (piece.bound > limit)
                open.push(piece);
            else
                boundOfClosed = std::max(boundOfClosed, piece.bound);
        }
        tally.open = {};  // the pieces of large surfaces take much memory
    }
}

void Comparison::subdividePiece(const SurfacePiece& piece, Tally& tally, PositionMeter& meter) const {
    const double margin = std::min(goal.accuracy, goal.sufficientBound(maxBefore) - maxBefore);
    std::array<SurfacePiece, 4> parts = subdivide(meter, piece, margin / 4.0);
    for (const MeasuredPosition& corner : parts.back().corners) tally.take(corner);
    for (SurfacePiece& part : parts) {
        measurePiece(part, tally, meter, ForMean::No);
        part.bound = std::min(part.bound, piece.bound);
        tally.open.push_back(part);
    }
}

// Moves the open pieces with the largest bounds to the round.
void Comparison::takeRound(std::uint64_t maxSize) {
    round.clear();
    while (round.size() < maxSize && !open.empty() && open.top().bound > goal.sufficientBound(maxBefore)) {
        round.push_back(open.top());
        open.pop();
    }
}

void Comparison::subdivideRound(std::uint64_t visitsLeft) {
    std::vector<Tally> tallies((round.size() + kPiecesPerTask - 1) / kPiecesPerTask);
    pool.parallelFor(tallies.size(), [&](std::size_t part) {
        PositionMeter meter(to, limits, visitsLeft / tallies.size());
        const std::size_t end = std::min(round.size(), (part + 1) * kPiecesPerTask);
        for (std::size_t i = part * kPiecesPerTask; i < end; ++i)
            subdividePiece(round[i], tallies[part], meter);
        tallies[part].visits = meter.visitCount();
    });
    join(tallies);
}

void Comparison::search() {
    std::uint64_t subdivisionsLeft = kMaxBaseSubdivisions + from.size() / kTrianglesPerExtraSubdivision;
    while (subdivisionsLeft > 0 && total.visits < maxSearchVisits() && !open.empty() &&
           open.top().bound > goal.sufficientBound(total.maxDistance())) {
        maxBefore = total.maxDistance();
        takeRound(std::min<std::uint64_t>(kPiecesPerRound, subdivisionsLeft));
        subdivisionsLeft -= round.size();
        subdivideRound(maxSearchVisits() - total.visits);
    }
    if (!open.empty()) boundOfClosed = std::max(boundOfClosed, open.top().bound);
}

}  // namespace

double DistanceGoal::sufficientBound(double maxDistance) const {
    const double bound = maxDistance + std::max(accuracy, relativeAccuracy * maxDistance);
    return limit && maxDistance <= *limit ? std::min(bound, *limit) : bound;
}

SurfaceDistance surfaceDistance(const std::vector<TriangleCorners>& from, const TriangleTree& to,
                                const DistanceGoal& goal, ThreadPool& pool) {
    QUARN_ASSERT(!from.empty() && goal.accuracy > 0.0);
    return Comparison(from, to, goal, pool).run();
}

}  // namespace quarn
