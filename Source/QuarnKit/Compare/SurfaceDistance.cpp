#include "SurfaceDistance.h"

#include <algorithm>
#include <cmath>
#include <queue>

#include "PositionCache.h"
#include "SurfacePiece.h"

namespace quarn {

namespace {

// A surface of few triangles is cut into this many pieces at least, for the mean.
constexpr double kMinPieceCount = 30'000.0;
// Triangles that one thread takes at a time, and pieces that are cut in one round. Both are fixed, so that the order of
// all sums and cuts is.
constexpr std::size_t kTrianglesPerTask = 8192;
constexpr std::size_t kPiecesPerRound = 32'768;
constexpr std::size_t kPiecesPerTask = 256;
// Cuts of pieces: so many for any surface, and one more for some of its triangles. It keeps a comparison of a million
// triangles with a million others to a few times what reading them takes.
constexpr std::uint64_t kMaxBaseCuts = 300'000;
constexpr std::uint64_t kTrianglesPerExtraCut = 2;
// Of the greatest distance: nearer than that it need not be known.
constexpr double kRelativeAccuracy = 1e-3;

double areaOf(const Corners& triangle) {
    return length(cross(triangle[1] - triangle[0], triangle[2] - triangle[0])) / 2.0;
}

// What some of the pieces tell.
struct Tally {
    MeasuredPosition farthest;
    double weightedSum = 0.0;
    double area = 0.0;
    std::uint64_t samples = 0;
    std::vector<SurfacePiece> open;  // pieces that may hold a greater distance
    double boundOfClosed = 0.0;      // greatest bound of all others

    void take(const MeasuredPosition& position) {
        ++samples;
        if (farthest.nearest.index == TriangleTree::kNone ||
            position.nearest.distance > farthest.nearest.distance)
            farthest = position;
    }
};

class Comparison {
public:
    Comparison(const std::vector<Corners>& fromTriangles, const TriangleTree& toTree, double minAccuracy,
               ThreadPool& workers)
        : from(fromTriangles), to(toTree), accuracy(minAccuracy), pool(workers) {}

    SurfaceDistance run() {
        measureAll();
        search();
        return {.greatest = total.farthest.nearest.distance,
                .bound = std::max(boundOfClosed, total.farthest.nearest.distance),
                .mean = total.weightedSum / total.area,
                .where = total.farthest.position,
                .samples = total.samples};
    }

private:
    [[nodiscard]] double searchThreshold(double greatest) const {
        return greatest + std::max(accuracy, kRelativeAccuracy * greatest);
    }

    void measureAll();
    void measureTriangle(const Corners& triangle, Tally& tally, PositionCache& cache) const;
    void measurePiece(SurfacePiece& piece, Tally& tally, bool countsForMean) const;
    void search();
    void join(const std::vector<Tally>& tallies);
    void cutPiece(const SurfacePiece& piece, Tally& tally) const;

    const std::vector<Corners>& from;
    const TriangleTree& to;
    double accuracy;
    ThreadPool& pool;
    double areaOfPiece = 0.0;
    double greatestBefore = 0.0;  // when a round began
    double boundOfClosed = 0.0;   // greatest bound of the pieces that are not looked at any more
    Tally total;

    struct IsNearer {
        bool operator()(const SurfacePiece& a, const SurfacePiece& b) const { return a.bound < b.bound; }
    };
    std::priority_queue<SurfacePiece, std::vector<SurfacePiece>, IsNearer> open;
};

// Measures the middle, and lowers the bound as far as it is worth while.
void Comparison::measurePiece(SurfacePiece& piece, Tally& tally, bool countsForMean) const {
    const double limit = searchThreshold(std::max(greatestBefore, tally.farthest.nearest.distance));
    piece.bound = boundOf(to, piece, piece.corners[0]);
    for (std::size_t i = 1; i < piece.corners.size() && piece.bound > limit; ++i)
        piece.bound = std::min(piece.bound, boundOf(to, piece, piece.corners.at(i)));
    if (!countsForMean && piece.bound <= limit) return;

    const MeasuredPosition middle = measurePosition(to, piece.middle(), piece.corners[0].nearest.index);
    tally.take(middle);
    if (piece.bound > limit) piece.bound = std::min(piece.bound, boundOf(to, piece, middle));
    if (!countsForMean) return;
    // Source: a rule for triangles that is exact for polynomials of degree 2.
    constexpr double kCornerWeight = 1.0 / 12.0;
    constexpr double kMiddleWeight = 3.0 / 4.0;
    double sum = 0.0;
    for (const MeasuredPosition& corner : piece.corners) sum += corner.nearest.distance;
    const double area =
        areaOf({piece.corners[0].position, piece.corners[1].position, piece.corners[2].position});
    tally.area += area;
    tally.weightedSum += area * (sum * kCornerWeight + middle.nearest.distance * kMiddleWeight);
}

void Comparison::measureTriangle(const Corners& triangle, Tally& tally, PositionCache& cache) const {
    const double wanted = areaOfPiece > 0.0 ? std::sqrt(areaOf(triangle) / areaOfPiece) : 1.0;
    const int count = std::max(1, static_cast<int>(std::ceil(wanted)));
    const Point<double, 3> edge1 = (triangle[1] - triangle[0]) / count;
    const Point<double, 3> edge2 = (triangle[2] - triangle[0]) / count;
    // Corners are exact, so that a surface is no farther from itself than nothing.
    const auto positionAt = [&](int i, int k) {
        if (i == count) return triangle[1];
        if (k == count) return triangle[2];
        return triangle[0] + edge1 * i + edge2 * k;
    };
    const auto measure = [&](int i, int k) {
        const MeasuredPosition& position = cache.measurePosition(positionAt(i, k));
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
    for (const Corners& triangle : from) area += areaOf(triangle);
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

// Keeps those pieces that may hold a distance greater than the greatest of all.
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

void Comparison::cutPiece(const SurfacePiece& piece, Tally& tally) const {
    std::array<SurfacePiece, 4> parts = cut(to, piece, accuracy / 4.0);
    for (const MeasuredPosition& corner : parts.back().corners) tally.take(corner);
    for (SurfacePiece& part : parts) {
        measurePiece(part, tally, false);
        part.bound = std::min(part.bound, piece.bound);
        tally.open.push_back(part);
    }
}

void Comparison::search() {
    std::uint64_t cutsLeft = kMaxBaseCuts + from.size() / kTrianglesPerExtraCut;
    std::vector<SurfacePiece> round;
    while (cutsLeft > 0 && !open.empty() &&
           open.top().bound > searchThreshold(total.farthest.nearest.distance)) {
        greatestBefore = total.farthest.nearest.distance;
        round.clear();
        while (round.size() < std::min<std::uint64_t>(kPiecesPerRound, cutsLeft) && !open.empty() &&
               open.top().bound > searchThreshold(greatestBefore)) {
            round.push_back(open.top());
            open.pop();
        }
        cutsLeft -= round.size();
        std::vector<Tally> tallies((round.size() + kPiecesPerTask - 1) / kPiecesPerTask);
        pool.parallelFor(tallies.size(), [&](std::size_t part) {
            const std::size_t end = std::min(round.size(), (part + 1) * kPiecesPerTask);
            for (std::size_t i = part * kPiecesPerTask; i < end; ++i) cutPiece(round[i], tallies[part]);
        });
        join(tallies);
    }
    if (!open.empty()) boundOfClosed = std::max(boundOfClosed, open.top().bound);
}

}  // namespace

SurfaceDistance surfaceDistance(const std::vector<Corners>& from, const TriangleTree& to, double accuracy,
                                ThreadPool& pool) {
    return Comparison(from, to, accuracy, pool).run();
}

}  // namespace quarn
